import assert from 'node:assert/strict';
import { test } from 'node:test';
import { FakeTimers, page } from './page.js';

const { TouchMouse, wheelNotches, wheelWay } = await page('touch-mouse.js');

const [PRESS, RELEASE, RIGHT_PRESS, RIGHT_RELEASE, MOVE, UP, DOWN] = [5, 6, 8, 9, 10, 11, 12];

function desk() {
  const timers = new FakeTimers();
  const sent = [];
  const touch = new TouchMouse({
    locate: (x, y) => ({ x, y, inside: x >= 0 }),
    emit: (points) => sent.push(...points),
    timers,
  });
  return { touch, timers, sent };
}

const finger = (pointerId, clientX, clientY) => ({ pointerId, clientX, clientY });

test('a tap clicks where the finger came down', () => {
  const { touch, sent, timers } = desk();

  touch.down(finger(1, 10, 20));
  touch.move(finger(1, 14, 20));
  touch.up(finger(1, 14, 20));
  timers.advance(5000);

  assert.deepEqual(sent, [
    [MOVE, 10, 20],
    [PRESS, 10, 20],
    [RELEASE, 10, 20],
  ]);
});

test('a long press clicks right, once, and lifting adds nothing', () => {
  const { touch, sent, timers } = desk();

  touch.down(finger(1, 10, 20));
  timers.advance(549);
  const before = sent.length;
  timers.advance(1);
  touch.move(finger(1, 90, 20));
  touch.up(finger(1, 90, 20));

  assert.equal(before, 1);
  assert.deepEqual(sent.slice(1), [
    [RIGHT_PRESS, 10, 20],
    [RIGHT_RELEASE, 10, 20],
  ]);
});

test('a finger that wanders drags from where it began', () => {
  const { touch, sent, timers } = desk();

  touch.down(finger(1, 10, 20));
  touch.move(finger(1, 10, 40));
  timers.advance(5000);
  touch.up(finger(1, 10, 40));

  assert.deepEqual(sent.slice(1), [
    [PRESS, 10, 20],
    [MOVE, 10, 40],
    [RELEASE, 10, 40],
  ]);
});

test('two fingers scroll a notch for each way of a notch, and click nothing', () => {
  const { touch, sent } = desk();

  touch.down(finger(1, 10, 100));
  touch.down(finger(2, 50, 100));
  touch.move(finger(1, 10, 76));
  touch.move(finger(2, 50, 76));
  touch.move(finger(1, 10, 124));
  touch.move(finger(2, 50, 124));
  touch.up(finger(1, 10, 124));
  touch.up(finger(2, 50, 124));

  assert.deepEqual(
    sent.map(([event]) => event),
    [MOVE, DOWN, UP, UP],
  );
});

test('the button makes the next tap a right click, and no other', () => {
  const { touch, sent } = desk();
  touch.nextIsRight = true;

  for (const id of [1, 2]) {
    touch.down(finger(id, 10, 20));
    touch.up(finger(id, 10, 20));
  }

  assert.deepEqual(
    sent.map(([event]) => event),
    [MOVE, RIGHT_PRESS, RIGHT_RELEASE, MOVE, PRESS, RELEASE],
  );
});

test('a cancelled tap clicks nothing, a cancelled drag is lifted', () => {
  const { touch, sent, timers } = desk();

  touch.down(finger(1, 10, 20));
  touch.cancel(finger(1, 0, 0));
  touch.down(finger(2, 10, 20));
  touch.move(finger(2, 60, 20));
  touch.cancel(finger(2, 0, 0));
  timers.advance(5000);

  assert.deepEqual(
    sent.map(([event]) => event),
    [MOVE, MOVE, PRESS, MOVE, RELEASE],
  );
});

test('ending lifts a drag and forgets a waiting tap', () => {
  const { touch, sent, timers } = desk();
  touch.down(finger(1, 10, 20));
  touch.move(finger(1, 60, 20));

  touch.end();
  touch.down(finger(2, 10, 20));
  touch.end();
  timers.advance(5000);

  assert.deepEqual(
    sent.map(([event]) => event),
    [MOVE, PRESS, MOVE, RELEASE, MOVE],
  );
});

test('a touch outside the picture does nothing', () => {
  const { touch, sent } = desk();

  touch.down(finger(1, -1, 20));
  touch.up(finger(1, -1, 20));

  assert.deepEqual(sent, []);
});

test('a wheel counts pixels, lines and pages as notches, and keeps what is left over', () => {
  const notches = wheelNotches();
  const turns = [
    { deltaY: 60, deltaMode: 0 },
    { deltaY: 60, deltaMode: 0 },
    { deltaY: -3, deltaMode: 1 },
    { deltaY: 2, deltaMode: 2 },
    { deltaY: 1e9, deltaMode: 2 },
  ];

  const events = turns.map((turn) => notches.take(wheelWay(turn)));

  assert.deepEqual(events.slice(0, 4), [[], [DOWN], [], [DOWN]]);
  assert.equal(events[4].length, 10);
});
