import assert from 'node:assert/strict';
import { test } from 'node:test';
import { page } from './page.js';

const { fitted, pictureUnits } = await page('letterbox.js');

const screen = { width: 1920, height: 1080 };

test('a picture is fitted into stages of all shapes', () => {
  const stages = [
    [
      { width: 960, height: 540 },
      { x: 0, y: 0, width: 960, height: 540 },
    ],
    [
      { width: 1160, height: 540 },
      { x: 100, y: 0, width: 960, height: 540 },
    ],
    [
      { width: 960, height: 740 },
      { x: 0, y: 100, width: 960, height: 540 },
    ],
    [
      { width: 3840, height: 2160 },
      { x: 0, y: 0, width: 3840, height: 2160 },
    ],
  ];

  const boxes = stages.map(([stage]) => fitted(stage, screen));

  assert.deepEqual(
    boxes,
    stages.map(([, box]) => box),
  );
});

test('an upright picture leaves bars at its sides', () => {
  const upright = { width: 1080, height: 1920 };

  const box = fitted({ width: 1000, height: 960 }, upright);

  assert.deepEqual(box, { x: 230, y: 0, width: 540, height: 960 });
});

test('without a size there is no box and no point', () => {
  const empty = { x: 0, y: 0, width: 0, height: 0 };

  const boxes = [fitted({ width: 0, height: 9 }, screen), fitted(screen, {}), fitted({}, {})];
  const point = pictureUnits(empty, screen, 8, 10, 10);

  assert.deepEqual(boxes, [empty, empty, empty]);
  assert.deepEqual(point, { x: 0, y: 0, inside: false });
});

test('a pointer is found in the picture, in fractions of a pixel', () => {
  const box = { x: 100, y: 50, width: 960, height: 540 };

  const points = [
    [100, 50],
    [580, 320],
    [100.25, 50.1],
  ].map(([x, y]) => pictureUnits(box, screen, 8, x, y));

  assert.deepEqual(points, [
    { x: 0, y: 0, inside: true },
    { x: 7680, y: 4320, inside: true },
    { x: 4, y: 2, inside: true },
  ]);
});

test('points outside go to the edge and say so', () => {
  const box = { x: 100, y: 50, width: 960, height: 540 };

  const points = [
    [99, 320],
    [1060, 320],
    [580, 49],
    [580, 590],
    [-5000, 99999],
  ].map(([x, y]) => pictureUnits(box, screen, 8, x, y));

  assert.deepEqual(points, [
    { x: 0, y: 4320, inside: false },
    { x: 15359, y: 4320, inside: false },
    { x: 7680, y: 0, inside: false },
    { x: 7680, y: 8639, inside: false },
    { x: 0, y: 8639, inside: false },
  ]);
});
