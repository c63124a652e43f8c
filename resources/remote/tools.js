import { DRAW, drawType } from './records.js';

export const COLORS = Object.freeze([
  { id: 'red', label: 'Red', rgb: [229, 57, 53] },
  { id: 'orange', label: 'Orange', rgb: [251, 140, 0] },
  { id: 'yellow', label: 'Yellow', rgb: [255, 221, 51] },
  { id: 'green', label: 'Green', rgb: [56, 161, 74] },
  { id: 'blue', label: 'Blue', rgb: [41, 98, 255] },
  { id: 'violet', label: 'Violet', rgb: [156, 72, 204] },
  { id: 'black', label: 'Black', rgb: [20, 20, 22] },
  { id: 'white', label: 'White', rgb: [255, 255, 255] },
]);

const INK = { sizes: [2, 4, 8, 16, 32], size: 4, color: 'red' };

// In the order in which they are shown. Sizes are widths in pixels of the display, those of a stamp
// what it grows by, those of text the height of a line.
export const TOOLS = Object.freeze([
  { id: 'pen', label: 'Pen', type: DRAW.pen, ...INK, dashes: true },
  {
    id: 'highlighter',
    label: 'Highlighter',
    type: DRAW.highlighter,
    sizes: [15, 25, 40, 60, 80],
    size: 25,
    color: 'yellow',
  },
  { id: 'eraser', label: 'Eraser', type: DRAW.eraser, sizes: [20, 40, 80, 130, 200], size: 40 },
  {
    id: 'line',
    label: 'Line',
    type: DRAW.line,
    ...INK,
    dashes: true,
    kinds: [
      { id: 'line', label: 'Plain line', sub: 1 },
      { id: 'arrow', label: 'Arrow', sub: 2 },
    ],
  },
  { id: 'rectangle', label: 'Rectangle', type: DRAW.rectangle, ...INK, dashes: true },
  { id: 'circle', label: 'Circle', type: DRAW.circle, ...INK, dashes: true },
  {
    id: 'text',
    label: 'Text',
    type: DRAW.text,
    sizes: [24, 36, 48, 72, 120],
    size: 48,
    color: 'red',
  },
  {
    id: 'stamp',
    label: 'Stamp',
    type: DRAW.stamp,
    sizes: [0, 40, 80, 120, 180],
    size: 40,
    kinds: [
      { id: 'check', label: 'Check mark', sub: 1 },
      { id: 'heart', label: 'Heart', sub: 2 },
      { id: 'pointer', label: 'Pointer', sub: 3 },
      { id: 'smile', label: 'Smile', sub: 4 },
      { id: 'star', label: 'Star', sub: 5 },
      { id: 'x', label: 'Cross', sub: 6 },
    ],
  },
  { id: 'laser', label: 'Laser pointer', type: DRAW.laser },
]);

const KEY = 'orvane.tools';

function defaults(tool) {
  return {
    size: tool.size ?? 0,
    color: tool.color ?? null,
    dashed: false,
    kind: tool.kinds?.[0].id ?? null,
  };
}

// What was stored may be of another version of the page, or somebody's own.
function merged(tool, stored) {
  const own = defaults(tool);
  const has = (list, id) => list?.some((item) => item.id === id);
  return {
    size: tool.sizes?.includes(stored?.size) ? stored.size : own.size,
    color: own.color && has(COLORS, stored?.color) ? stored.color : own.color,
    dashed: Boolean(tool.dashes && stored?.dashed === true),
    kind: has(tool.kinds, stored?.kind) ? stored.kind : own.kind,
  };
}

function read(storage) {
  try {
    return JSON.parse(storage.getItem(KEY)) ?? {};
  } catch {
    return {};
  }
}

/** The chosen tool and how each tool draws, remembered in `storage` (like `localStorage`). */
export class Tools {
  #storage;
  #changed;
  #id;
  #settings = {};

  constructor(storage, changed = () => {}) {
    this.#storage = storage;
    this.#changed = changed;
    const stored = read(storage);
    for (const tool of TOOLS) {
      this.#settings[tool.id] = merged(tool, stored.settings?.[tool.id]);
    }
    this.#id = TOOLS.some((tool) => tool.id === stored.tool) ? stored.tool : TOOLS[0].id;
  }

  get tool() {
    return TOOLS.find((tool) => tool.id === this.#id);
  }

  /** `size`, `color`, `dashed` and `kind` of the chosen tool; null for what it does not have. */
  get settings() {
    return { ...this.#settings[this.#id] };
  }

  choose(id) {
    if (TOOLS.some((tool) => tool.id === id)) {
      this.#id = id;
      this.#store();
    }
  }

  /** Changes settings of the chosen tool; values that it does not have are left out. */
  set(change) {
    this.#settings[this.#id] = merged(this.tool, { ...this.#settings[this.#id], ...change });
    this.#store();
  }

  /** To the next larger size for 1, the next smaller one for -1. */
  step(direction) {
    const { sizes } = this.tool;
    const size = sizes?.[sizes.indexOf(this.settings.size) + direction];
    if (size !== undefined) {
      this.set({ size });
    }
  }

  /** The record that gives the library this tool. */
  record(plugin) {
    const { tool, settings } = this;
    return drawType(plugin, {
      type: tool.type,
      sub: tool.kinds?.find((kind) => kind.id === settings.kind).sub,
      dashed: settings.dashed,
      size: settings.size,
      color: COLORS.find((color) => color.id === settings.color)?.rgb,
    });
  }

  #store() {
    try {
      this.#storage.setItem(KEY, JSON.stringify({ tool: this.#id, settings: this.#settings }));
    } catch {
      // A browser that keeps nothing draws all the same.
    }
    this.#changed();
  }
}
