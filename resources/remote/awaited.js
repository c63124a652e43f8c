const LONGEST_WAIT_MS = 5000;

/** Something that was asked for and whose answer is still to come.
 *
 *  `changed` is called when `pending` changes, `missed` when no answer came in time. */
export class Awaited {
  #timers;
  #changed;
  #missed;
  #timer = null;

  constructor({ timers, changed, missed }) {
    this.#timers = timers;
    this.#changed = changed;
    this.#missed = missed;
  }

  get pending() {
    return this.#timer !== null;
  }

  ask() {
    this.cancel();
    this.#timer = this.#timers.set(() => {
      this.#timer = null;
      this.#changed();
      this.#missed();
    }, LONGEST_WAIT_MS);
    this.#changed();
  }

  /** Whether the answer was waited for. */
  answer() {
    const waited = this.pending;
    this.cancel();
    return waited;
  }

  cancel() {
    if (this.pending) {
      this.#timers.clear(this.#timer);
      this.#timer = null;
      this.#changed();
    }
  }
}
