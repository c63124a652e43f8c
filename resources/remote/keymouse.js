import { isMeta, isModifier, virtualKey, VK } from './keys.js';

// What a browser reports for a key that an on-screen keyboard or an input method deals with.
const HANDLED_ELSEWHERE = 229;

/** The keyboard of the keyboard and mouse mode: keys by their place, characters that no key makes by
 *  themselves.
 *
 *  `key(down, code)` and `unit(unit)` take what is to be sent. */
export class HostKeyboard {
  #key;
  #unit;
  #held = new Set();

  constructor({ key, unit }) {
    this.#key = key;
    this.#unit = unit;
  }

  /** Whether the key was sent, so that the browser must not use it as well. */
  down(event) {
    const code = this.#codeOf(event);
    if (code === null) {
      return this.#character(event);
    }
    this.#held.add(code);
    this.#key(true, code);
    return true;
  }

  up(event) {
    const code = virtualKey(event.code ?? '');
    if (code === null || !this.#held.delete(code)) {
      return false;
    }
    this.#key(false, code);
    if (isMeta(code)) {
      // macOS reports no release for keys that go up while Command is down.
      this.#lift((held) => !isModifier(held));
    }
    return true;
  }

  /** Lifts all keys, in the reverse of the order in which they went down. */
  end() {
    this.#lift(() => true);
  }

  /** Units from the typing field. The two that edit are keys for an application. */
  type(units) {
    for (const unit of units) {
      if (unit === VK.backspace || unit === VK.enter) {
        this.#key(true, unit);
        this.#key(false, unit);
      } else {
        this.#unit(unit);
      }
    }
  }

  #codeOf(event) {
    if (event.isComposing || event.keyCode === HANDLED_ELSEWHERE) {
      return null;
    }
    return virtualKey(event.code ?? '');
  }

  #character(event) {
    const oneCharacter = [...(event.key ?? '')].length === 1;
    if (event.isComposing || event.keyCode === HANDLED_ELSEWHERE || !oneCharacter) {
      return false;
    }
    for (let at = 0; at < event.key.length; ++at) {
      this.#unit(event.key.charCodeAt(at));
    }
    return true;
  }

  #lift(which) {
    for (const code of [...this.#held].reverse()) {
      if (which(code)) {
        this.#held.delete(code);
        this.#key(false, code);
      }
    }
  }
}
