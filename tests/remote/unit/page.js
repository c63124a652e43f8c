import { register } from 'node:module';

register('./module-format.js', import.meta.url);

/** A module of the page. */
export const page = (name) =>
  import(new URL(`../../../resources/remote/${name}`, import.meta.url).href);

/** Timers that run when the test says so. */
export class FakeTimers {
  #tasks = new Map();
  #next = 1;
  now = 0;

  set(action, ms) {
    this.#tasks.set(this.#next, { at: this.now + ms, action });
    return this.#next++;
  }

  clear(handle) {
    this.#tasks.delete(handle);
  }

  get waits() {
    return [...this.#tasks.values()].map((task) => task.at - this.now).sort((a, b) => a - b);
  }

  advance(ms) {
    const end = this.now + ms;
    for (;;) {
      const due = [...this.#tasks].filter(([, task]) => task.at <= end);
      if (due.length === 0) {
        break;
      }
      const [handle, task] = due.reduce((a, b) => (b[1].at < a[1].at ? b : a));
      this.#tasks.delete(handle);
      this.now = task.at;
      task.action();
    }
    this.now = end;
  }
}

export class FakeStorage {
  items = {};
  getItem(name) {
    return this.items[name] ?? null;
  }
  setItem(name, value) {
    this.items[name] = value;
  }
}

/** What an awaited promise hands on has happened after this. */
export const settled = () => new Promise((resolve) => setImmediate(resolve));
