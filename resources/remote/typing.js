const BACKSPACE = 8;
const NEW_LINE = 13;
// Stands first in the field, so that Backspace has something to take away when nothing else is left:
// on-screen keyboards tell of a removal only. A line end leaves capitals and corrections alone.
const STOP = '\n';
// What is longer is cut; nobody goes back that far.
const LONGEST_FIELD = 2000;
const KEPT = 1000;

/** The UTF-16 units that turn `before` into `after` for somebody who can only add at the end and take
 *  away from it. A pair of surrogates is kept whole or replaced. */
export function unitsBetween(before, after) {
  let same = 0;
  while (same < before.length && same < after.length && before[same] === after[same]) {
    ++same;
  }
  const last = same > 0 ? before.charCodeAt(same - 1) : 0;
  if (last >= 0xd800 && last <= 0xdbff) {
    --same;
  }
  const units = Array(before.length - same).fill(BACKSPACE);
  for (let at = same; at < after.length; ++at) {
    units.push(after[at] === '\n' ? NEW_LINE : after.charCodeAt(at));
  }
  return units;
}

/** Reads what is typed into a text field as UTF-16 units.
 *
 *  It looks at what stands in the field after each change rather than at keys, for on-screen keyboards,
 *  corrections and input methods name none. While an input method composes, nothing is sent.
 *  `send(units)` takes them. */
export class Typing {
  #field;
  #send;
  #known = STOP;
  #composing = false;

  constructor(field, send) {
    this.#field = field;
    this.#send = send;
    field.addEventListener('compositionstart', () => {
      this.#composing = true;
    });
    field.addEventListener('compositionend', () => {
      this.#composing = false;
      this.#read();
    });
    field.addEventListener('input', (event) => {
      if (!this.#composing && !event.isComposing) {
        this.#read();
      }
    });
    this.reset();
  }

  /** Begins anew, with nothing that could be taken away. */
  reset() {
    this.#composing = false;
    this.#write(STOP);
  }

  #read() {
    const value = this.#field.value.replaceAll('\r\n', '\n');
    const units = this.#unitsTo(value);
    this.#known = value;
    if (!value.startsWith(STOP)) {
      this.#write(STOP + value);
    } else if (value.length > LONGEST_FIELD) {
      this.#write(STOP + value.slice(-KEPT).replace(/^[\udc00-\udfff]/, ''));
    }
    if (units.length > 0) {
      this.#send(units);
    }
  }

  #unitsTo(value) {
    if (value.startsWith(STOP)) {
      return unitsBetween(this.#known, value);
    }
    // Everything was selected and replaced, or there was nothing but the stop to take away.
    const nothingLeft = this.#known === STOP && value === '';
    return nothingLeft ? [BACKSPACE] : unitsBetween(this.#known.slice(STOP.length), value);
  }

  #write(value) {
    this.#known = value;
    this.#field.value = value;
    this.#field.setSelectionRange?.(value.length, value.length);
  }
}
