import { byId } from './dom.js';
import { fitted, pictureUnits } from './letterbox.js';
import { PointerInput } from './pointer-input.js';
import { isTextEntry } from './shortcuts.js';
import { TouchMouse, wheelNotches, wheelWay } from './touch-mouse.js';

/** The stage with the picture: lays the picture out and hands its pointers to whoever draws or points.
 *
 *  `session` takes the points, `rightClickUsed()` is told that a tap may have used the right click up. */
export class Stage {
  #stage = byId('stage');
  #canvas = byId('picture');
  #session;
  #box = fitted({}, {});
  #drawing;
  #pointing;
  #touch;
  #notches = wheelNotches();

  constructor({ session, timers, rightClickUsed }) {
    this.#session = session;
    const locate = (x, y) => this.#locate(x, y);
    const emit = (points) => session.sendPoints(points);
    this.#drawing = new PointerInput({ locate, emit });
    this.#pointing = new PointerInput({ locate, emit, takesTouch: false });
    this.#touch = new TouchMouse({ locate, emit, timers });
    new ResizeObserver(() => this.layOut()).observe(this.#stage);
    this.#listen(rightClickUsed);
  }

  get touch() {
    return this.#touch;
  }

  layOut() {
    const { clientWidth: width, clientHeight: height } = this.#stage;
    this.#box = fitted({ width, height }, this.#canvas);
    const { style } = this.#canvas;
    style.left = `${this.#box.x}px`;
    style.top = `${this.#box.y}px`;
    style.width = `${this.#box.width}px`;
    style.height = `${this.#box.height}px`;
  }

  /** Lifts whatever is down; for when the pointers begin to mean something else. */
  end() {
    this.#drawing.end();
    this.#pointing.end();
    this.#touch.end();
  }

  focus() {
    this.#stage.focus({ preventScroll: true });
  }

  #locate(clientX, clientY) {
    const { left, top } = this.#stage.getBoundingClientRect();
    const { state } = this.#session;
    return pictureUnits(this.#box, state.display, state.scale, clientX - left, clientY - top);
  }

  #takes() {
    return this.#session.draws || this.#session.control;
  }

  #handlerFor(event) {
    if (this.#session.control) {
      return event.pointerType === 'touch' ? this.#touch : this.#pointing;
    }
    return this.#drawing;
  }

  #listen(rightClickUsed) {
    const on = (name, take) => this.#canvas.addEventListener(name, take);
    on('pointerdown', (event) => {
      // Whoever types goes on typing; a phone would close its keyboard.
      if (!isTextEntry(document.activeElement)) {
        this.focus();
      }
      if (this.#takes()) {
        this.#capture(event);
        this.#handlerFor(event).down(event);
      }
    });
    on('mousedown', (event) => event.preventDefault());
    on('pointermove', (event) => {
      if (this.#takes() || event.buttons !== 0) {
        this.#handlerFor(event).move(event);
      }
    });
    on('pointerup', (event) => {
      this.#handlerFor(event).up(event);
      rightClickUsed();
    });
    for (const name of ['pointercancel', 'lostpointercapture']) {
      on(name, (event) => this.#handlerFor(event).cancel(event));
    }
    on('wheel', (event) => this.#wheel(event));
    on('contextmenu', (event) => event.preventDefault());
    // iOS selects and magnifies on a long touch unless the touch itself is refused.
    this.#canvas.addEventListener('touchstart', (event) => event.preventDefault(), {
      passive: false,
    });
  }

  #capture(event) {
    try {
      this.#canvas.setPointerCapture(event.pointerId);
    } catch {
      // The pointer is gone already; its end comes as an event of its own.
    }
  }

  #wheel(event) {
    if (!this.#session.control) {
      return;
    }
    event.preventDefault();
    const point = this.#locate(event.clientX, event.clientY);
    const events = this.#notches.take(wheelWay(event));
    if (point.inside && events.length > 0) {
      this.#session.sendPoints(events.map((notch) => [notch, point.x, point.y]));
    }
  }
}
