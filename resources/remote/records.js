// Records: the 64 bytes that the page and the annotation library exchange, little-endian, points and
// typed units big-endian.

export const RECORD_SIZE = 64;
/** The plug-in number of the host itself: its keyboard and mouse. */
export const HOST = 0;
/** What one message may carry. */
export const RECORDS_A_MESSAGE = 1024;

const EXT = 12;
const LARGEST_PACKED = 0xffff;

export const MODE = Object.freeze({
  annotation: 0,
  flipchart: 1,
  snapshot: 2,
  spotlight: 3,
  cover: 4,
  dialog: 5,
});

export const DRAW = Object.freeze({
  highlighter: 1,
  eraser: 2,
  rectangle: 3,
  circle: 4,
  text: 5,
  stamp: 6,
  line: 7,
  pen: 8,
  laser: 9,
});

export const MOUSE = Object.freeze({
  leftPress: 5,
  leftRelease: 6,
  rightPress: 8,
  rightRelease: 9,
  move: 10,
  wheelUp: 11,
  wheelDown: 12,
});

const NUMBER = Object.freeze({
  mode: 0,
  drawType: 1,
  autoClear: 2,
  page: 16,
  history: 17,
  snapshot: 18,
  eraseAll: 19,
  recording: 21,
  mouse: 0xeffd,
  keyboard: 0xeffe,
});

// What only the library sends.
const HEARD = Object.freeze({ keyboard: 1, cover: 8, spotlight: 9 });
const ANSWER = 0x8000;

function build(plugin, wparam, lparam, fill) {
  const bytes = new Uint8Array(RECORD_SIZE);
  const view = new DataView(bytes.buffer);
  view.setUint16(0, plugin, true);
  view.setUint16(2, 1, true);
  view.setUint32(4, wparam, true);
  view.setUint32(8, lparam, true);
  fill?.(view);
  return bytes;
}

export function switchMode(plugin, mode, shown) {
  return build(plugin, NUMBER.mode, mode, (view) => view.setUint8(EXT, shown ? 1 : 0));
}

/** `size` in pixels of the display, `color` as [red, green, blue]; ink is sent opaque. */
export function drawType(plugin, { type, sub = 0, dashed = false, size = 0, color = [0, 0, 0] }) {
  return build(plugin, NUMBER.drawType, type, (view) => {
    view.setUint16(EXT, sub, true);
    view.setUint16(EXT + 2, dashed ? 1 : 0, true);
    view.setUint16(EXT + 4, size, true);
    [255, ...color].forEach((part, index) => view.setUint8(EXT + 6 + index, part));
  });
}

export const autoClear = (plugin, on) => build(plugin, NUMBER.autoClear, on ? 1 : 0);
export const previousPage = (plugin) => build(plugin, NUMBER.page, 2);
export const nextPage = (plugin) => build(plugin, NUMBER.page, 3);
export const undo = (plugin) => build(plugin, NUMBER.history, 1);
export const redo = (plugin) => build(plugin, NUMBER.history, 2);
export const snapshot = (plugin) => build(plugin, NUMBER.snapshot, 1);
export const eraseAll = (plugin) => build(plugin, NUMBER.eraseAll, 1);
export const record = (plugin, on) => build(plugin, NUMBER.recording, on ? 1 : 0);

/** `x` and `y` in whole units of the record: pixels of the picture times the scale. */
export function mouse(plugin, event, x, y) {
  return build(plugin, NUMBER.mouse, event, (view) => {
    if (x > 0) {
      view.setUint32(EXT, x);
      view.setUint32(EXT + 4, y);
    } else if (y <= LARGEST_PACKED) {
      view.setUint32(EXT + 4, y * 0x10000);
    } else {
      // The packed form has no room for this y; one unit to the right is nearer than any other.
      view.setUint32(EXT, 1);
      view.setUint32(EXT + 4, y);
    }
  });
}

/** `code` is a Windows virtual key code. */
export function key(plugin, down, code) {
  return build(plugin, NUMBER.keyboard, down ? 1 : 2, (view) => view.setUint32(EXT, code));
}

/** One UTF-16 unit; 13 begins a new line, 8 takes the unit before it away. */
export function typed(plugin, unit) {
  return build(plugin, NUMBER.keyboard, 64, (view) => view.setUint32(EXT + 4, unit));
}

/** The records as messages, in order, none longer than the other side takes. */
export function messagesOf(records) {
  const messages = [];
  for (let first = 0; first < records.length; first += RECORDS_A_MESSAGE) {
    const part = records.slice(first, first + RECORDS_A_MESSAGE);
    const message = new Uint8Array(part.length * RECORD_SIZE);
    part.forEach((bytes, index) => message.set(bytes, index * RECORD_SIZE));
    messages.push(message);
  }
  return messages;
}

const MEANING = {
  [HEARD.keyboard]: (lparam) => ({ kind: 'keyboard', open: lparam !== 0 }),
  [HEARD.cover]: (lparam) => ({ kind: 'cover', on: lparam !== 0 }),
  [HEARD.spotlight]: (lparam) => ({ kind: 'spotlight', on: lparam !== 0 }),
  [NUMBER.page]: (lparam) => ({ kind: 'pages', on: lparam !== 0 }),
  [NUMBER.history]: (lparam, view) => ({
    kind: 'history',
    undo: view.getUint16(EXT, true),
    redo: view.getUint16(EXT + 2, true),
  }),
  [NUMBER.snapshot]: (lparam) => (lparam === 1 ? { kind: 'snapshot' } : null),
  [NUMBER.recording]: (lparam, view) => ({
    kind: 'recording',
    running: lparam === 1 || view.getUint16(EXT, true) === 1,
    error: view.getUint16(EXT + 2, true),
  }),
  [NUMBER.mouse]: (lparam) => ({ kind: 'mouseInput', taken: lparam !== 0 }),
  [NUMBER.keyboard]: (lparam) => ({ kind: 'keyboardInput', taken: lparam !== 0 }),
};

function modeMeaning(lparam, view) {
  if (view.getUint8(EXT + 3) === 1) {
    return {
      kind: 'mode',
      mode: lparam,
      shown: view.getUint8(EXT) !== 0,
      sub: view.getUint8(EXT + 1),
      toolbar: view.getUint8(EXT + 2) !== 0,
    };
  }
  return lparam === 1 ? { kind: 'help' } : null;
}

function meaningOf(view) {
  const wparam = view.getUint32(4, true);
  const lparam = view.getUint32(8, true);
  const number =
    wparam === ANSWER || wparam === ANSWER + NUMBER.recording ? wparam - ANSWER : wparam;
  if (number === NUMBER.mode) {
    return modeMeaning(lparam, view);
  }
  return MEANING[number]?.(lparam, view) ?? null;
}

/** What the library says in `bytes`, in order. Records that mean nothing here are left out, and so is
 *  a last one that is cut short. */
export function meaningsOf(bytes) {
  const meanings = [];
  for (let at = 0; at + RECORD_SIZE <= bytes.byteLength; at += RECORD_SIZE) {
    const meaning = meaningOf(new DataView(bytes.buffer, bytes.byteOffset + at, RECORD_SIZE));
    if (meaning) {
      meanings.push(meaning);
    }
  }
  return meanings;
}
