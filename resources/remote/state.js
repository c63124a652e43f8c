import { MODE } from './records.js';

/** What the page knows of the host and the library; changed by the three functions below only. */
export function freshState() {
  return {
    id: 0,
    plugin: 0,
    scale: 1,
    display: { width: 0, height: 0 },
    clients: [],
    pen: 0,
    askers: [],
    modes: {},
    history: { undo: 0, redo: 0 },
    recording: false,
    pages: true,
    mouseTaken: true,
    keyboardTaken: true,
  };
}

/** "mine", "other" or "nobody". */
export function penHolder(state) {
  if (state.pen === 0) {
    return 'nobody';
  }
  return state.pen === state.id ? 'mine' : 'other';
}

export function holderName(state) {
  return state.clients.find((client) => client.id === state.pen)?.name ?? 'Somebody else';
}

export const isAnnotating = (state) => state.modes[MODE.annotation] === true;
export const isFlipchart = (state) => state.modes[MODE.flipchart] === true;

const isNumber = (value) => Number.isInteger(value) && value >= 0;
const isClient = (client) => isNumber(client?.id) && typeof client?.name === 'string';

const TEXT = {
  welcome(state, message) {
    if (![message.id, message.plugin].every(isNumber) || !hasDisplay(message)) {
      return false;
    }
    Object.assign(state, freshState(), { id: message.id, plugin: message.plugin });
    return takeDisplay(state, message);
  },
  display: takeDisplay,
  clients(state, message) {
    if (!isNumber(message.pen) || !Array.isArray(message.list) || !message.list.every(isClient)) {
      return false;
    }
    state.pen = message.pen;
    state.clients = message.list.map(({ id, name }) => ({ id, name }));
    const present = (asker) => message.list.some((client) => client.id === asker.id);
    state.askers = penHolder(state) === 'mine' ? state.askers.filter(present) : [];
    return true;
  },
  penAsked(state, message) {
    if (!isNumber(message.by) || typeof message.name !== 'string') {
      return false;
    }
    const others = state.askers.filter((asker) => asker.id !== message.by);
    state.askers = [...others, { id: message.by, name: message.name }];
    return true;
  },
  penRefused: () => true,
};

function hasDisplay(message) {
  return [message.width, message.height, message.scale].every(
    (value) => isNumber(value) && value > 0,
  );
}

function takeDisplay(state, message) {
  if (!hasDisplay(message)) {
    return false;
  }
  state.display = { width: message.width, height: message.height };
  state.scale = message.scale;
  return true;
}

/** The kind of the message, after `state` has taken it in; null for one that means nothing. */
export function takeText(state, text) {
  let message = null;
  try {
    message = JSON.parse(text);
  } catch {
    return null;
  }
  const kind = message?.type;
  const known = typeof kind === 'string' && Object.hasOwn(TEXT, kind);
  return known && TEXT[kind](state, message) ? kind : null;
}

const MEANING = {
  mode(state, { mode, shown }) {
    state.modes[mode] = shown;
  },
  history(state, { undo, redo }) {
    state.history = { undo, redo };
  },
  recording(state, { running }) {
    state.recording = running;
  },
  pages(state, { on }) {
    state.pages = on;
  },
  mouseInput(state, { taken }) {
    state.mouseTaken = taken;
  },
  keyboardInput(state, { taken }) {
    state.keyboardTaken = taken;
  },
};

/** Takes in what a record of the library means. */
export function takeMeaning(state, meaning) {
  MEANING[meaning.kind]?.(state, meaning);
}

export function answerAsker(state, id) {
  state.askers = state.askers.filter((asker) => asker.id !== id);
}
