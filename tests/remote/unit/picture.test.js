import assert from 'node:assert/strict';
import { test } from 'node:test';
import { page, settled } from './page.js';

const { parseFrame, Picture } = await page('picture.js');

function frame(number, [x, y, width, height], [pictureWidth, pictureHeight], more = {}) {
  const bytes = Buffer.alloc(24);
  bytes[0] = more.first ?? 3;
  bytes[1] = more.coding ?? 1;
  bytes.writeUInt32LE(number, 4);
  [x, y, width, height, pictureWidth, pictureHeight].forEach((value, index) =>
    bytes.writeUInt16LE(value, 8 + 2 * index),
  );
  return new Uint8Array(bytes);
}

function desk() {
  const made = { drawn: [], shown: [], sizes: [], pending: [] };
  const canvas = {
    width: 16,
    height: 9,
    getContext: () => ({ drawImage: (image, ...box) => made.drawn.push([image.name, ...box]) }),
  };
  made.picture = new Picture({
    canvas,
    resized: (size) => made.sizes.push(size),
    decode: () => new Promise((resolve, reject) => made.pending.push({ resolve, reject })),
  });
  made.take = (bytes) => made.picture.take(bytes, (number) => made.shown.push(number));
  return made;
}

test('a frame has a number, a box and the size of the picture', () => {
  const bytes = frame(70_000, [1, 2, 300, 400], [1920, 1080]);

  const parsed = parseFrame(bytes);

  assert.deepEqual(
    { ...parsed, pixels: parsed.pixels.length },
    {
      number: 70_000,
      x: 1,
      y: 2,
      width: 300,
      height: 400,
      pictureWidth: 1920,
      pictureHeight: 1080,
      pixels: 4,
    },
  );
});

test('what is no frame is none', () => {
  const good = [
    [0, 0, 10, 10],
    [10, 10],
  ];
  const broken = [
    new Uint8Array(0),
    frame(1, ...good).subarray(0, 20),
    frame(1, ...good, { first: 2 }),
    frame(1, ...good, { coding: 9 }),
    frame(1, [0, 0, 0, 10], [10, 10]),
    frame(1, [1, 0, 10, 10], [10, 10]),
    frame(1, [0, 1, 10, 10], [10, 10]),
  ];

  const parsed = broken.map(parseFrame);

  assert.deepEqual(
    parsed,
    broken.map(() => null),
  );
});

test('frames are drawn in the order in which they came, each shown after it is drawn', async () => {
  const given = desk();
  given.take(frame(1, [0, 0, 20, 10], [20, 10]));
  const last = given.take(frame(2, [5, 5, 2, 3], [20, 10]));

  given.pending[1].resolve({ name: 'second' });
  await settled();
  const early = [...given.shown];
  given.pending[0].resolve({ name: 'first' });
  await last;

  assert.deepEqual(early, []);
  assert.deepEqual(given.drawn, [
    ['first', 0, 0, 20, 10],
    ['second', 5, 5, 2, 3],
  ]);
  assert.deepEqual(given.shown, [1, 2]);
  assert.deepEqual(given.sizes, [{ width: 20, height: 10 }]);
  assert.equal(given.picture.drawn, 2);
});

test('pixels that cannot be read hold up nothing and are not counted', async () => {
  const given = desk();
  given.take(frame(1, [0, 0, 20, 10], [20, 10]));
  const last = given.take(frame(2, [0, 0, 20, 10], [20, 10]));

  given.pending[0].reject(new Error('no picture'));
  given.pending[1].resolve({ name: 'second' });
  await last;

  assert.deepEqual(given.shown, [1, 2]);
  assert.equal(given.picture.drawn, 1);
});

test('a message that is no frame is neither drawn nor shown', async () => {
  const given = desk();

  await given.take(frame(1, [0, 0, 0, 0], [20, 10]));

  assert.deepEqual(given.pending, []);
  assert.deepEqual(given.shown, []);
});
