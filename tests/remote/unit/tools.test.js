import assert from 'node:assert/strict';
import { test } from 'node:test';
import { FakeStorage, page } from './page.js';

const { COLORS, TOOLS, Tools } = await page('tools.js');

const ext = (tools) => [...tools.record(17)].slice(12, 22);

test('a fresh page draws with a thin red pen', () => {
  const tools = new Tools(new FakeStorage());

  const record = tools.record(17);

  assert.equal(record[8], 8);
  assert.deepEqual(ext(tools), [0, 0, 0, 0, 4, 0, 255, 229, 57, 53]);
});

test('each tool keeps what it draws with', () => {
  const tools = new Tools(new FakeStorage());
  tools.set({ color: 'blue', size: 16, dashed: true });
  tools.choose('highlighter');
  const highlighter = tools.settings;

  tools.choose('pen');

  assert.deepEqual(highlighter, { size: 25, color: 'yellow', dashed: false, kind: null });
  assert.deepEqual(ext(tools), [0, 0, 1, 0, 16, 0, 255, 41, 98, 255]);
});

test('stamps and lines have kinds, and a tool takes none of another one', () => {
  const tools = new Tools(new FakeStorage());
  tools.choose('stamp');
  tools.set({ kind: 'star', color: 'blue', dashed: true });
  const stamp = ext(tools);
  tools.choose('line');
  tools.set({ kind: 'star' });

  tools.set({ kind: 'arrow' });

  assert.deepEqual(stamp, [5, 0, 0, 0, 40, 0, 255, 0, 0, 0]);
  assert.deepEqual(ext(tools).slice(0, 2), [2, 0]);
});

test('the laser pointer has no settings', () => {
  const tools = new Tools(new FakeStorage());
  tools.choose('laser');

  tools.set({ size: 4, color: 'red', dashed: true });
  tools.step(1);

  assert.deepEqual(tools.settings, { size: 0, color: null, dashed: false, kind: null });
  assert.equal(tools.record(17)[8], 9);
});

test('the size goes up and down its steps and stops at their ends', () => {
  const tools = new Tools(new FakeStorage());
  const sizes = [];

  for (const direction of [1, 1, 1, 1, -1, -1, -1, -1, -1]) {
    tools.step(direction);
    sizes.push(tools.settings.size);
  }

  assert.deepEqual(sizes, [8, 16, 32, 32, 16, 8, 4, 2, 2]);
});

test('the next visit finds everything as it was', () => {
  const storage = new FakeStorage();
  const before = new Tools(storage);
  before.set({ color: 'green', size: 32 });
  before.choose('stamp');
  before.set({ kind: 'heart' });

  const after = new Tools(storage);

  assert.equal(after.tool.id, 'stamp');
  assert.equal(after.settings.kind, 'heart');
  after.choose('pen');
  assert.deepEqual(after.settings, { size: 32, color: 'green', dashed: false, kind: null });
});

test('nonsense in the memory is not taken', () => {
  const memories = [
    'no JSON',
    'null',
    '7',
    '{"tool": "axe", "settings": null}',
    '{"tool": 7, "settings": {"pen": {"size": 7, "color": "mud", "dashed": 1, "kind": "star"}}}',
  ];

  const records = memories.map((memory) => {
    const storage = new FakeStorage();
    storage.setItem('orvane.tools', memory);
    return ext(new Tools(storage));
  });

  assert.deepEqual(
    records,
    memories.map(() => [0, 0, 0, 0, 4, 0, 255, 229, 57, 53]),
  );
});

test('a browser that keeps nothing draws all the same', () => {
  const refuse = () => {
    throw new Error('denied');
  };
  const changes = [];
  const tools = new Tools({ getItem: refuse, setItem: refuse }, () => changes.push(tools.tool.id));

  tools.choose('eraser');

  assert.deepEqual(changes, ['eraser']);
});

test('a tool that is none is not chosen', () => {
  const tools = new Tools(new FakeStorage());

  tools.choose('axe');

  assert.equal(tools.tool.id, 'pen');
});

test('the table is whole: first settings exist, sizes fit their field', () => {
  const colors = COLORS.map(({ id }) => id);

  const faults = TOOLS.filter(
    ({ color, size, sizes }) =>
      (color && !colors.includes(color)) ||
      (sizes && (sizes.length !== 5 || !sizes.includes(size) || Math.max(...sizes) > 0xffff)),
  );

  assert.equal(TOOLS.length, 9);
  assert.deepEqual(faults, []);
});
