import { byId, checkRadio, element, iconButton, radioGroup } from './dom.js';
import { COLORS, TOOLS } from './tools.js';

// Diameters of the dots that stand for the sizes, in CSS pixels.
const DOTS = [4, 8, 13, 19, 26];

function radio(options, click) {
  const attributes = { role: 'radio', ...options.attributes };
  return iconButton({ ...options, attributes }, click);
}

/** The tools and what the chosen one draws with. */
export class Palette {
  #tools;
  #deck = byId('draw-deck');
  #group = byId('tools');
  #colors = byId('colors');
  #sizes = byId('sizes');
  #kinds = byId('kinds');
  #dashes = byId('dashes');
  #dash;

  constructor(tools) {
    this.#tools = tools;
    this.#addTools();
    this.#addColors();
    this.#addSizes();
    this.#dash = iconButton(
      { picture: 'dashed', label: 'Dashed', keys: 'D', attributes: { 'aria-pressed': 'false' } },
      () => this.toggleDashed(),
    );
    this.#dash.append(element('span', {}, 'Dashed'));
    this.#dashes.append(this.#dash);
    [this.#group, this.#colors, this.#sizes, this.#kinds].forEach(radioGroup);
    this.refresh(false);
  }

  toggleDashed() {
    this.#tools.set({ dashed: !this.#tools.settings.dashed });
  }

  refresh(enabled) {
    const { tool, settings } = this.#tools;
    this.#deck.inert = !enabled;
    this.#deck.setAttribute('aria-disabled', String(!enabled));
    checkRadio(this.#group, (button) => button.dataset.tool === tool.id);
    this.#colors.hidden = settings.color === null;
    checkRadio(this.#colors, (button) => button.dataset.color === settings.color);
    this.#sizes.hidden = !tool.sizes;
    checkRadio(this.#sizes, (button) => tool.sizes?.[button.dataset.step] === settings.size);
    this.#nameSizes(tool);
    this.#showKinds(tool, settings);
    this.#dashes.hidden = !tool.dashes;
    this.#dash.setAttribute('aria-pressed', String(settings.dashed));
  }

  #addTools() {
    TOOLS.forEach((tool, index) => {
      const options = {
        picture: tool.id,
        label: tool.label,
        keys: String(index + 1),
        attributes: { 'data-tool': tool.id },
      };
      this.#group.append(radio(options, () => this.#tools.choose(tool.id)));
    });
  }

  #addColors() {
    for (const { id, label, rgb } of COLORS) {
      const options = { picture: 'tick', label, kind: 'swatch', attributes: { 'data-color': id } };
      const button = radio(options, () => this.#tools.set({ color: id }));
      button.style.setProperty('--ink', `rgb(${rgb.join(' ')})`);
      this.#colors.append(button);
    }
  }

  #addSizes() {
    DOTS.forEach((diameter, step) => {
      const options = { picture: 'dot', label: 'Size', attributes: { 'data-step': step } };
      const button = radio(options, () => this.#tools.set({ size: this.#tools.tool.sizes[step] }));
      const dot = element('span', { class: 'dot' });
      dot.style.setProperty('--diameter', `${diameter}px`);
      button.replaceChildren(dot);
      this.#sizes.append(button);
    });
  }

  #nameSizes(tool) {
    const names = ['Very small', 'Small', 'Medium', 'Large', 'Very large'];
    for (const button of this.#sizes.children) {
      const pixels = tool.sizes?.[button.dataset.step];
      const name = names[button.dataset.step];
      const label = tool.id === 'stamp' ? name : `${name}, ${pixels} pixels`;
      button.setAttribute('aria-label', label);
      button.title = label;
    }
  }

  #showKinds(tool, settings) {
    this.#kinds.hidden = !tool.kinds;
    if (this.#kinds.dataset.of !== tool.id) {
      this.#kinds.dataset.of = tool.id;
      this.#kinds.setAttribute('aria-label', `Kind of ${tool.label.toLowerCase()}`);
      const buttons = (tool.kinds ?? []).map(({ id, label }) => {
        const attributes = { 'data-kind': id };
        const picture = tool.id === 'stamp' ? `stamp-${id}` : id;
        return radio({ picture, label, attributes }, () => this.#tools.set({ kind: id }));
      });
      this.#kinds.replaceChildren(...buttons);
    }
    checkRadio(this.#kinds, (button) => button.dataset.kind === settings.kind);
  }
}
