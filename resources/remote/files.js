import { byId, element, iconButton } from './dom.js';
import { fileOf, sizeText } from './packages.js';

/** The files that came, each until it is dismissed. */
export class Files {
  #status;
  #list = byId('files');

  constructor(status) {
    this.#status = status;
  }

  take(bytes) {
    const file = fileOf(bytes, new Date());
    if (!file) {
      this.#status.say('A file came incomplete', 'bad');
      return;
    }
    this.#add(file);
    this.#status.announce(`Received ${file.name}`);
  }

  #add({ name, mime, content }) {
    const address = URL.createObjectURL(new Blob([content], { type: mime }));
    const size = sizeText(content.byteLength);
    const save = element('a', { class: 'primary', href: address, download: name }, 'Save');
    save.setAttribute('aria-label', `Save ${name}, ${size}`);
    const text = element('p', {}, element('strong', {}, name), element('span', {}, size));
    const item = element('li', { class: 'card file' }, text, save);
    const dismiss = { picture: 'close', label: `Dismiss ${name}`, kind: 'action' };
    item.append(
      iconButton(dismiss, () => {
        URL.revokeObjectURL(address);
        item.remove();
      }),
    );
    this.#list.append(item);
  }
}
