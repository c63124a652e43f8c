const SVG = 'http://www.w3.org/2000/svg';

export const byId = (id) => document.getElementById(id);

/** A picture of the sprite; it says nothing, its button does. */
export function icon(name) {
  const svg = document.createElementNS(SVG, 'svg');
  svg.setAttribute('class', 'icon');
  svg.setAttribute('aria-hidden', 'true');
  const use = document.createElementNS(SVG, 'use');
  use.setAttribute('href', `icons.svg#${name}`);
  svg.append(use);
  return svg;
}

/** An element with attributes and children; an attribute that is null is left out. */
export function element(tag, attributes = {}, ...children) {
  const made = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value !== null) {
      made.setAttribute(name, value);
    }
  }
  made.append(...children);
  return made;
}

/** A button with a picture; `keys` as for aria-keyshortcuts, shown in its title too. */
export function iconButton({ picture, label, keys = null, kind = 'tool', attributes = {} }, click) {
  const button = element(
    'button',
    {
      type: 'button',
      class: kind,
      'aria-label': label,
      'aria-keyshortcuts': keys,
      title: keys ? `${label} (${keys.split(' ')[0].replaceAll('Control', 'Ctrl')})` : label,
      ...attributes,
    },
    icon(picture),
  );
  button.addEventListener('click', click);
  return button;
}

/** Makes buttons with role="radio" a group: one stop for Tab, arrows move the choice. */
export function radioGroup(group) {
  group.addEventListener('keydown', (event) => {
    const step = { ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1 }[event.key];
    const radios = [...group.querySelectorAll('[role=radio]')];
    const at = radios.indexOf(document.activeElement);
    if (step && at >= 0) {
      event.preventDefault();
      const next = radios[(at + step + radios.length) % radios.length];
      next.focus();
      next.click();
    }
  });
}

export function checkRadio(group, isChosen) {
  for (const radio of group.querySelectorAll('[role=radio]')) {
    const chosen = isChosen(radio);
    radio.setAttribute('aria-checked', String(chosen));
    radio.tabIndex = chosen ? 0 : -1;
  }
}
