import { byId, element } from './dom.js';

const TOAST_MS = 3500;

/** What the page says: a line that fades by itself, and the banner that stays while a state lasts. Both
 *  are read out. */
export class Status {
  #timers;
  #toasts = byId('toasts');
  #banner = byId('banner');
  #live = byId('live');

  constructor(timers) {
    this.#timers = timers;
  }

  /** `tone` is "good", "bad" or "plain". */
  say(text, tone = 'plain') {
    const toast = element('div', { class: 'toast', 'data-tone': tone }, text);
    this.#toasts.replaceChildren(toast);
    this.announce(text);
    this.#timers.set(() => toast.remove(), TOAST_MS);
  }

  /** For those who listen only. */
  announce(text) {
    this.#live.textContent = '';
    this.#timers.set(() => {
      this.#live.textContent = text;
    }, 50);
  }

  banner(text, tone = 'busy') {
    const hidden = text === '';
    if (this.#banner.textContent !== text || this.#banner.hidden !== hidden) {
      this.#banner.textContent = text;
      this.#banner.dataset.tone = tone;
      this.#banner.hidden = hidden;
      if (!hidden) {
        this.announce(text);
      }
    }
  }
}
