import { MOUSE } from './records.js';

// CSS pixels that a finger may wander and still be taken as resting.
const SLACK = 10;
const LONG_PRESS_MS = 550;
// CSS pixels that two fingers, or a wheel, go for one notch.
const NOTCH = { touch: 24, wheel: 100 };
const LINES_A_NOTCH = 3;

/** Counts a way in CSS pixels, down positive, as wheel notches. */
export class Notches {
  #length;
  #rest = 0;

  constructor(length) {
    this.#length = length;
  }

  /** The mouse events for a further part of the way. */
  take(way) {
    this.#rest += way;
    const count = Math.trunc(this.#rest / this.#length);
    this.#rest -= count * this.#length;
    return Array(Math.abs(count)).fill(count > 0 ? MOUSE.wheelDown : MOUSE.wheelUp);
  }
}

/** The way of a `wheel` event in pixels, whatever unit the browser counts in. */
export function wheelWay(event) {
  const pixels = [1, NOTCH.wheel / LINES_A_NOTCH, NOTCH.wheel];
  // A page of a thousand notches would hold up everything behind it.
  const way = event.deltaY * (pixels[event.deltaMode] ?? 1);
  return Math.max(Math.min(way, 10 * NOTCH.wheel), -10 * NOTCH.wheel);
}

export const wheelNotches = () => new Notches(NOTCH.wheel);

/** Makes a mouse of fingers: a tap clicks, a long press clicks right, a finger that moves drags, two
 *  fingers scroll.
 *
 *  `locate` and `emit` as for `PointerInput`; `timers` has `set(action, ms)` and `clear(handle)`. */
export class TouchMouse {
  #locate;
  #emit;
  #timers;
  #fingers = new Map();
  #state = 'idle';
  #start = null;
  #last = null;
  #timer = null;
  #notches = null;
  #nextIsRight = false;

  constructor({ locate, emit, timers }) {
    this.#locate = locate;
    this.#emit = emit;
    this.#timers = timers;
  }

  /** The next tap is a click of the right button. */
  set nextIsRight(on) {
    this.#nextIsRight = on;
  }

  get nextIsRight() {
    return this.#nextIsRight;
  }

  down(event) {
    if (this.#fingers.size === 0) {
      const point = this.#locate(event.clientX, event.clientY);
      if (!point.inside) {
        return;
      }
      this.#start = { x: event.clientX, y: event.clientY, point };
      this.#last = point;
      this.#state = 'waiting';
      this.#timer = this.#timers.set(() => this.#longPress(), LONG_PRESS_MS);
      this.#emit([[MOUSE.move, point.x, point.y]]);
    } else if (this.#state === 'waiting') {
      this.#stopWaiting('scrolling');
      this.#notches = new Notches(NOTCH.touch);
    }
    this.#fingers.set(event.pointerId, event.clientY);
  }

  move(event) {
    const before = this.#fingers.get(event.pointerId);
    if (before === undefined) {
      return;
    }
    this.#fingers.set(event.pointerId, event.clientY);
    if (this.#state === 'scrolling') {
      this.#scroll((before - event.clientY) / this.#fingers.size);
      return;
    }
    if (this.#state === 'waiting' && this.#wandered(event)) {
      this.#stopWaiting('dragging');
      this.#emit([[MOUSE.leftPress, this.#last.x, this.#last.y]]);
    }
    if (this.#state === 'dragging') {
      this.#last = this.#locate(event.clientX, event.clientY);
      this.#emit([[MOUSE.move, this.#last.x, this.#last.y]]);
    }
  }

  up(event) {
    if (!this.#fingers.delete(event.pointerId)) {
      return;
    }
    if (this.#state === 'waiting') {
      this.#stopWaiting('idle');
      this.#click(this.#nextIsRight);
      this.#nextIsRight = false;
    } else if (this.#state === 'dragging') {
      this.#release();
    }
    if (this.#fingers.size === 0) {
      this.#state = 'idle';
    }
  }

  cancel(event) {
    if (this.#state === 'waiting' && this.#fingers.has(event.pointerId)) {
      this.#stopWaiting('idle');
    }
    this.up(event);
  }

  /** Lifts what is down and forgets the fingers. */
  end() {
    if (this.#state === 'dragging') {
      this.#release();
    }
    this.#stopWaiting('idle');
    this.#fingers.clear();
  }

  #wandered(event) {
    return Math.hypot(event.clientX - this.#start.x, event.clientY - this.#start.y) > SLACK;
  }

  #stopWaiting(state) {
    this.#timers.clear(this.#timer);
    this.#timer = null;
    this.#state = state;
  }

  #longPress() {
    this.#stopWaiting('done');
    this.#click(true);
  }

  #click(right) {
    const { x, y } = this.#last;
    this.#emit([
      [right ? MOUSE.rightPress : MOUSE.leftPress, x, y],
      [right ? MOUSE.rightRelease : MOUSE.leftRelease, x, y],
    ]);
  }

  #release() {
    this.#emit([[MOUSE.leftRelease, this.#last.x, this.#last.y]]);
    this.#state = 'done';
  }

  #scroll(way) {
    const { x, y } = this.#last;
    const events = this.#notches.take(way);
    if (events.length > 0) {
      this.#emit(events.map((event) => [event, x, y]));
    }
  }
}
