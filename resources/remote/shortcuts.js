import { TOOLS } from './tools.js';

/** The name of what a key press does while drawing, or null; `event` is like a `KeyboardEvent`. A tool
 *  is "tool:ID". */
export function shortcutOf(event) {
  const name = event.key.length === 1 ? event.key.toLowerCase() : event.key;
  if (event.ctrlKey || event.metaKey) {
    return event.altKey ? null : withControl(name, event.shiftKey);
  }
  if (event.altKey) {
    return null;
  }
  if (/^[1-9]$/.test(name)) {
    const tool = TOOLS[Number(name) - 1];
    return tool ? `tool:${tool.id}` : null;
  }
  return Object.hasOwn(PLAIN, name) ? PLAIN[name] : null;
}

const PLAIN = {
  '[': 'smaller',
  ']': 'larger',
  d: 'dashed',
  f: 'flipchart',
  k: 'keyboard',
  m: 'more',
  r: 'recording',
  s: 'snapshot',
  Delete: 'eraseAll',
  PageUp: 'previous',
  PageDown: 'next',
};

function withControl(name, shift) {
  if (name === 'z') {
    return shift ? 'redo' : 'undo';
  }
  return name === 'y' && !shift ? 'redo' : null;
}

/** Ctrl+Alt+K enters and leaves the keyboard and mouse mode; all other keys belong to the desktop
 *  there. */
export const togglesControl = (event) => event.ctrlKey && event.altKey && event.code === 'KeyK';

/** Whether keys go into a text there. */
export function isTextEntry(target) {
  return Boolean(target?.closest?.('input, textarea'));
}
