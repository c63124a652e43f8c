import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { page } from './page.js';

const records = await page('records.js');
const { pictureUnits } = await page('letterbox.js');

const vectors = JSON.parse(
  readFileSync(new URL('../record-vectors.json', import.meta.url), 'utf8'),
);

const BUILD = {
  mode: (w) => records.switchMode(w.plugin, records.MODE[w.mode], w.shown),
  tool: (w) => records.drawType(w.plugin, { ...w, type: records.DRAW[w.type] }),
  autoClear: (w) => records.autoClear(w.plugin, w.on),
  previousPage: (w) => records.previousPage(w.plugin),
  nextPage: (w) => records.nextPage(w.plugin),
  undo: (w) => records.undo(w.plugin),
  redo: (w) => records.redo(w.plugin),
  snapshot: (w) => records.snapshot(w.plugin),
  eraseAll: (w) => records.eraseAll(w.plugin),
  recording: (w) => records.record(w.plugin, w.on),
  mouse: (w) => records.mouse(w.plugin, records.MOUSE[w.event], ...w.units),
  key: (w) => records.key(w.plugin, w.down, w.code),
  typed: (w) => records.typed(w.plugin, w.unit),
};

const hex = (bytes) => Buffer.from(bytes).toString('hex');
const bytesOf = (digits) => new Uint8Array(Buffer.from(digits, 'hex'));

test('every record that the page sends has the bytes of its vector', async (t) => {
  for (const vector of vectors.filter(({ direction }) => direction !== 'from library')) {
    await t.test(vector.name, () => {
      const { what } = vector;

      const bytes = BUILD[what.record](what);

      assert.equal(hex(bytes), vector.bytes);
    });
  }
});

test('every record of the library means what its vector says', async (t) => {
  for (const vector of vectors.filter(({ direction }) => direction === 'from library')) {
    await t.test(vector.name, () => {
      const bytes = bytesOf(vector.bytes);

      const meanings = records.meaningsOf(bytes);

      assert.deepEqual(meanings, vector.what === null ? [] : [vector.what]);
    });
  }
});

test('the points of the vectors come from the pixels that they name', () => {
  const mice = vectors.filter(({ what }) => what?.record === 'mouse');
  const picture = { width: 65536, height: 65536 };
  const box = { x: 0, y: 0, ...picture };

  const units = mice.map(({ what }) => pictureUnits(box, picture, what.scale, ...what.at));

  assert.ok(mice.length > 10);
  assert.deepEqual(
    units.map(({ x, y }) => [x, y]),
    mice.map(({ what }) => what.units),
  );
});

test('several records are read in order, out of the middle of a buffer, and a cut one is left', () => {
  const undoes = bytesOf(vectors.find(({ what }) => what?.kind === 'history').bytes);
  const saved = bytesOf(vectors.find(({ what }) => what?.kind === 'snapshot').bytes);
  const message = new Uint8Array([1, ...undoes, ...saved, ...undoes.subarray(0, 63)]);

  const meanings = records.meaningsOf(message.subarray(1));

  assert.deepEqual(
    meanings.map(({ kind }) => kind),
    ['history', 'snapshot'],
  );
});

test('records of one event go in one message', () => {
  const three = [1, 2, 3].map((unit) => records.typed(17, unit));

  const messages = records.messagesOf(three);

  assert.equal(messages.length, 1);
  assert.equal(hex(messages[0]), three.map(hex).join(''));
});

test('no message carries more records than the host takes', () => {
  const many = Array.from({ length: 1025 }, (_, unit) => records.typed(17, unit));

  const messages = records.messagesOf(many);

  assert.deepEqual(
    messages.map((message) => message.byteLength / 64),
    [1024, 1],
  );
  assert.equal(hex(messages[1]), hex(many[1024]));
});
