import { byId, element, icon } from './dom.js';
import { holderName, penHolder } from './state.js';

function nameOf(name) {
  return element('bdi', {}, name);
}

function cardButton(label, kind, click) {
  const button = element('button', { type: 'button', class: kind }, label);
  button.addEventListener('click', click);
  return button;
}

/** Who has the pen: the chip at the top, the card of a looker-on, and what the holder is asked. */
export class PenView {
  #session;
  #showPeople;
  #chip = byId('pen-chip');
  #cards = byId('pen-cards');
  #shown = '';

  /** `showPeople()` opens the list in which the holder passes the pen on. */
  constructor(session, showPeople) {
    this.#session = session;
    this.#showPeople = showPeople;
    this.#chip.append(icon('pen-held'), element('span', { class: 'chip-text' }));
    this.#chip.addEventListener('click', () => this.#press());
  }

  refresh() {
    const { state, asking } = this.#session;
    const present = state.id !== 0 && state.clients.length > 0;
    const holder = penHolder(state);
    this.#chip.hidden = !present;
    this.#chip.dataset.pen = holder;
    this.#chip.querySelector('.chip-text').textContent = this.#chipText(holder);
    this.#chip.setAttribute('aria-label', this.#chipLabel(holder));
    this.#chip.title = this.#chipLabel(holder);
    const shown = JSON.stringify([present, holder, holderName(state), state.askers, asking]);
    if (shown !== this.#shown) {
      this.#shown = shown;
      this.#cards.replaceChildren(...(present ? this.#cardsFor(holder) : []));
    }
  }

  #chipText(holder) {
    const texts = { mine: 'Your pen', nobody: 'Free pen' };
    return texts[holder] ?? holderName(this.#session.state);
  }

  #chipLabel(holder) {
    if (holder === 'mine') {
      return 'You have the pen: pass it on';
    }
    return holder === 'nobody'
      ? 'Nobody has the pen: take it'
      : `${holderName(this.#session.state)} has the pen: ask for it`;
  }

  #press() {
    if (this.#session.hasPen) {
      this.#showPeople();
    } else if (!this.#session.asking) {
      this.#session.askPen();
    }
  }

  #cardsFor(holder) {
    if (holder === 'mine') {
      return this.#session.state.askers.map((asker) => this.#askerCard(asker));
    }
    return [this.#lookerCard(holder)];
  }

  #lookerCard(holder) {
    const { state, asking } = this.#session;
    const free = holder === 'nobody';
    const text = element('p', {});
    text.append(...(free ? ['Nobody has the pen'] : [nameOf(holderName(state)), ' has the pen']));
    const label = free ? 'Take it' : 'Ask for it';
    const button = cardButton(asking ? 'Asked…' : label, 'primary', () => this.#session.askPen());
    button.disabled = asking;
    return element('div', { class: 'card' }, text, button);
  }

  #askerCard(asker) {
    const text = element('p', {});
    text.append(nameOf(asker.name), ' asks for the pen');
    const give = cardButton('Give', 'primary', () => this.#session.givePen(asker.id));
    const keep = cardButton('Keep', 'plain', () => this.#session.refusePen(asker.id));
    const group = { class: 'card', role: 'group', 'aria-label': `${asker.name} asks for the pen` };
    return element('div', group, text, give, keep);
  }
}
