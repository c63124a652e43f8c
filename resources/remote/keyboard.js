import { byId } from './dom.js';
import { HostKeyboard } from './keymouse.js';
import { isTextEntry, shortcutOf, togglesControl } from './shortcuts.js';
import { Typing } from './typing.js';

const REPEATING = ['undo', 'redo', 'smaller', 'larger'];

/** The keyboard in all its uses: the typing field, shortcuts while drawing, and the keys of the desktop
 *  in keyboard and mouse mode. */
export class Keyboard {
  #session;
  #perform;
  #bar = byId('typing');
  #field = byId('typing-field');
  #typing;
  #host;

  /** `perform(name)` does what a shortcut names. */
  constructor(session, perform) {
    this.#session = session;
    this.#perform = perform;
    this.#host = new HostKeyboard({
      key: (down, code) => session.sendHostKey(down, code),
      unit: (unit) => session.sendUnits([unit]),
    });
    this.#typing = new Typing(this.#field, (units) => this.#type(units));
    byId('typing-done').addEventListener('click', () => this.close());
    document.addEventListener('keydown', (event) => this.#down(event));
    document.addEventListener('keyup', (event) => session.control && this.#host.up(event));
    addEventListener('blur', () => this.end());
  }

  /** Shows the typing field. A touch device opens its keyboard only if this is the answer to a tap;
   *  otherwise the reader taps into the field. */
  open() {
    this.#bar.hidden = false;
    this.#typing.reset();
    this.#field.focus({ preventScroll: true });
  }

  close() {
    this.#bar.hidden = true;
    this.#field.blur();
  }

  toggle() {
    if (this.#bar.hidden) {
      this.open();
    } else {
      this.close();
    }
  }

  /** Lifts the keys that are down. */
  end() {
    this.#host.end();
  }

  #type(units) {
    if (this.#session.control) {
      this.#host.type(units);
    } else {
      this.#session.sendUnits(units);
    }
  }

  #down(event) {
    if (document.querySelector('dialog[open]')) {
      return;
    }
    if (togglesControl(event)) {
      event.preventDefault();
      this.#perform('control');
    } else if (this.#session.control) {
      this.#downForHost(event);
    } else if (event.key === 'Escape' && event.target === this.#field) {
      this.close();
    } else if (!isTextEntry(event.target)) {
      this.#shortcut(event);
    }
  }

  #downForHost(event) {
    const onStage = event.target === byId('stage') || event.target === this.#field;
    if (onStage && this.#host.down(event)) {
      event.preventDefault();
    }
  }

  #shortcut(event) {
    const name = shortcutOf(event);
    if (name) {
      event.preventDefault();
      if (!event.repeat || REPEATING.includes(name)) {
        this.#perform(name);
      }
    }
  }
}
