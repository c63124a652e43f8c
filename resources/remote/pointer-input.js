import { MOUSE } from './records.js';

// A hand that rests on the glass goes on touching it for a moment after the pen was lifted.
const PEN_KEEPS_TOUCH_OUT_MS = 500;
// CSS pixels; a finger's contact stays well below this.
const PALM_CONTACT = 80;

const BUTTONS = {
  0: { press: MOUSE.leftPress, release: MOUSE.leftRelease, bit: 1 },
  2: { press: MOUSE.rightPress, release: MOUSE.rightRelease, bit: 2 },
};

/** Turns pointer events into strokes: a press, moves and a release, by one pointer at a time, and a pen
 *  before a finger.
 *
 *  `locate` gives the point of the picture for an event's client coordinates; `emit` takes what one
 *  event has to say, a list of [mouse event, x, y]. */
export class PointerInput {
  #locate;
  #emit;
  #now;
  #takesTouch;
  #stroke = null;
  #penSeen = -Infinity;

  constructor({ locate, emit, now = () => performance.now(), takesTouch = true }) {
    this.#locate = locate;
    this.#emit = emit;
    this.#now = now;
    this.#takesTouch = takesTouch;
  }

  /** Whether the event began a stroke. */
  down(event) {
    this.#notePen(event);
    const button = BUTTONS[event.button];
    if (!button || !this.#mayBegin(event)) {
      return false;
    }
    const point = this.#locate(event.clientX, event.clientY);
    if (!point.inside) {
      return false;
    }
    this.end();
    this.#stroke = { id: event.pointerId, type: event.pointerType, button, point };
    this.#emit([[button.press, point.x, point.y]]);
    return true;
  }

  move(event) {
    this.#notePen(event);
    if (!this.#stroke) {
      this.#hover(event);
      return;
    }
    if (event.pointerId !== this.#stroke.id) {
      return;
    }
    this.#emit(this.#moves(event));
    // A button that goes up while another one is held reports a move only.
    if (event.pointerType !== 'touch' && !(event.buttons & this.#stroke.button.bit)) {
      this.end();
    }
  }

  up(event) {
    this.#notePen(event);
    if (event.pointerId !== this.#stroke?.id) {
      return;
    }
    this.#stroke.point = this.#locate(event.clientX, event.clientY);
    this.end();
  }

  /** The browser has taken the pointer away; its coordinates mean nothing any more. */
  cancel(event) {
    if (event.pointerId === this.#stroke?.id) {
      this.end();
    }
  }

  /** Lifts what is down, where it was last. */
  end() {
    if (this.#stroke) {
      const { button, point } = this.#stroke;
      this.#stroke = null;
      this.#emit([[button.release, point.x, point.y]]);
    }
  }

  #notePen(event) {
    if (event.pointerType === 'pen') {
      this.#penSeen = this.#now();
    }
  }

  #mayBegin(event) {
    if (event.pointerType === 'touch') {
      const palm = Math.max(event.width ?? 0, event.height ?? 0) > PALM_CONTACT;
      const penNear = this.#now() - this.#penSeen < PEN_KEEPS_TOUCH_OUT_MS;
      return this.#takesTouch && !this.#stroke && !palm && !penNear;
    }
    return !this.#stroke || (event.pointerType === 'pen' && this.#stroke.type === 'touch');
  }

  #moves(event) {
    const coalesced = event.getCoalescedEvents?.() ?? [];
    const moves = [];
    for (const part of coalesced.length > 0 ? coalesced : [event]) {
      const point = this.#locate(part.clientX, part.clientY);
      if (point.x !== this.#stroke.point.x || point.y !== this.#stroke.point.y) {
        this.#stroke.point = point;
        moves.push([MOUSE.move, point.x, point.y]);
      }
    }
    return moves;
  }

  #hover(event) {
    const point = this.#locate(event.clientX, event.clientY);
    if (event.pointerType !== 'touch' && point.inside) {
      this.#emit([[MOUSE.move, point.x, point.y]]);
    }
  }
}
