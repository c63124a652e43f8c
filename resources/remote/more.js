import { byId, element } from './dom.js';
import { cleanName } from './client-name.js';
import { autoClear } from './records.js';
import { isAnnotating } from './state.js';

/** The sheet behind "More": people, switches, the name of this device. */
export class More {
  #session;
  #currentName;
  #rename;
  #sheet = byId('more-sheet');
  #name = byId('own-name');
  #people = byId('people');
  #annotation = byId('switch-annotation');
  #autoClear = byId('switch-auto-clear');
  #drop = byId('drop-pen');
  #shown = '';

  /** `name()` answers the present name, `rename(name)` takes another one. */
  constructor({ session, name, rename }) {
    this.#session = session;
    this.#currentName = name;
    this.#rename = rename;
    byId('close-more').addEventListener('click', () => this.#sheet.close());
    this.#sheet.addEventListener('click', (event) => {
      if (event.target === this.#sheet) {
        this.#sheet.close();
      }
    });
    this.#name.addEventListener('change', () => this.#takeName());
    this.#name.addEventListener('keydown', (event) => event.key === 'Enter' && this.#name.blur());
    this.#annotation.addEventListener('click', () => this.#toggleAnnotation());
    this.#autoClear.addEventListener('click', () => this.#toggleAutoClear());
    this.#drop.addEventListener('click', () => session.dropPen());
  }

  open() {
    this.#name.value = this.#currentName();
    this.refresh();
    this.#sheet.showModal();
  }

  /** Straight to the list in which the pen is passed on. */
  openPeople() {
    this.open();
    this.#people.querySelector('button')?.focus();
  }

  refresh() {
    const { state, hasPen, control } = this.#session;
    this.#annotation.setAttribute('aria-checked', String(isAnnotating(state)));
    this.#annotation.disabled = !hasPen || control;
    this.#autoClear.disabled = !hasPen || control;
    this.#drop.hidden = !hasPen;
    const shown = JSON.stringify([state.id, state.pen, state.clients]);
    if (shown !== this.#shown) {
      this.#shown = shown;
      this.#people.replaceChildren(...state.clients.map((client) => this.#person(client)));
    }
  }

  #person(client) {
    const { state, hasPen } = this.#session;
    const item = element('li', {}, element('bdi', {}, client.name));
    const own = client.id === state.id;
    const notes = [own ? 'this device' : '', client.id === state.pen ? 'has the pen' : ''];
    item.append(element('span', { class: 'note' }, notes.filter(Boolean).join(', ')));
    if (hasPen && !own) {
      const give = element('button', { type: 'button', class: 'primary' }, 'Give the pen');
      give.setAttribute('aria-label', `Give the pen to ${client.name}`);
      give.addEventListener('click', () => this.#session.givePen(client.id));
      item.append(give);
    }
    return item;
  }

  #takeName() {
    const clean = cleanName(this.#name.value);
    this.#name.value = clean || this.#currentName();
    if (clean && clean !== this.#currentName()) {
      this.#rename(clean);
    }
  }

  #toggleAnnotation() {
    if (isAnnotating(this.#session.state)) {
      this.#session.closeAnnotation();
    } else {
      this.#session.openAnnotation();
    }
  }

  #toggleAutoClear() {
    const on = this.#autoClear.getAttribute('aria-checked') !== 'true';
    this.#autoClear.setAttribute('aria-checked', String(on));
    this.#session.send(autoClear(this.#session.state.plugin, on));
  }
}
