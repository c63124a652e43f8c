import assert from 'node:assert/strict';
import { test } from 'node:test';
import { page } from './page.js';

const { PointerInput } = await page('pointer-input.js');

const PRESS = 5;
const RELEASE = 6;
const RIGHT_PRESS = 8;
const RIGHT_RELEASE = 9;
const MOVE = 10;

function desk(options = {}) {
  const made = { time: 10_000, messages: [] };
  made.input = new PointerInput({
    locate: (x, y) => ({ x, y, inside: x >= 0 && x < 1000 }),
    emit: (points) => made.messages.push(points),
    now: () => made.time,
    ...options,
  });
  return made;
}

function pointer(pointerType, pointerId, clientX, clientY, more = {}) {
  return { pointerType, pointerId, clientX, clientY, button: 0, buttons: 1, ...more };
}
const finger = (id, x, y, more) => pointer('touch', id, x, y, { width: 30, height: 30, ...more });
const pen = (id, x, y, more) => pointer('pen', id, x, y, more);
const mouse = (x, y, more) => pointer('mouse', 1, x, y, more);

test('a stroke is a press, moves and a release', () => {
  const { input, messages } = desk();

  input.down(finger(1, 10, 10));
  input.move(finger(1, 20, 15));
  input.up(finger(1, 30, 20, { buttons: 0 }));

  assert.deepEqual(messages, [[[PRESS, 10, 10]], [[MOVE, 20, 15]], [[RELEASE, 30, 20]]]);
});

test('every coalesced event of a move goes out in one message, without repetitions', () => {
  const { input, messages } = desk();
  const parts = [finger(1, 11, 10), finger(1, 11, 10), finger(1, 12, 11), finger(1, 14, 13)];
  input.down(finger(1, 10, 10));

  input.move(finger(1, 14, 13, { getCoalescedEvents: () => parts }));

  assert.deepEqual(messages[1], [
    [MOVE, 11, 10],
    [MOVE, 12, 11],
    [MOVE, 14, 13],
  ]);
});

test('a move counts itself when the browser coalesces nothing', () => {
  const { input, messages } = desk();
  input.down(finger(1, 10, 10));

  input.move(finger(1, 12, 12, { getCoalescedEvents: () => [] }));

  assert.deepEqual(messages[1], [[MOVE, 12, 12]]);
});

test('a second finger neither draws nor ends the stroke', () => {
  const { input, messages } = desk();
  input.down(finger(1, 10, 10));

  input.down(finger(2, 500, 500));
  input.move(finger(2, 510, 510));
  input.up(finger(2, 510, 510));
  input.move(finger(1, 11, 11));

  assert.deepEqual(messages, [[[PRESS, 10, 10]], [[MOVE, 11, 11]]]);
});

test('a pen that comes down ends the stroke of a finger and draws itself', () => {
  const { input, messages } = desk();
  input.down(finger(1, 10, 10));
  input.move(finger(1, 12, 12));

  input.down(pen(2, 300, 300));
  input.move(finger(1, 20, 20));
  input.up(finger(1, 20, 20));
  input.move(pen(2, 301, 300));

  assert.deepEqual(messages.slice(2), [
    [[RELEASE, 12, 12]],
    [[PRESS, 300, 300]],
    [[MOVE, 301, 300]],
  ]);
});

test('touches are a resting hand while a pen is near, and for half a second after', () => {
  const given = desk();
  given.input.move(pen(2, 300, 300, { buttons: 0 }));
  given.messages.length = 0;

  given.time += 499;
  const soon = given.input.down(finger(1, 10, 10));
  given.time += 1;
  const later = given.input.down(finger(3, 10, 10));

  assert.equal(soon, false);
  assert.equal(later, true);
  assert.deepEqual(given.messages, [[[PRESS, 10, 10]]]);
});

test('a pen that is lifted keeps touches out as well', () => {
  const given = desk();
  given.input.down(pen(2, 300, 300));
  given.time += 5000;
  given.input.up(pen(2, 300, 300, { buttons: 0 }));
  given.time += 100;

  const drawn = given.input.down(finger(1, 10, 10));

  assert.equal(drawn, false);
});

test('a palm does not draw, a thumb does', () => {
  const { input } = desk();

  const palm = input.down(finger(1, 10, 10, { width: 40, height: 120 }));
  const thumb = input.down(finger(2, 10, 10, { width: 60, height: 70 }));

  assert.equal(palm, false);
  assert.equal(thumb, true);
});

test('a cancelled pointer is lifted where it was last', () => {
  const { input, messages } = desk();
  input.down(finger(1, 10, 10));
  input.move(finger(1, 50, 60));

  input.cancel(finger(1, 0, 0));
  input.cancel(finger(1, 0, 0));
  input.up(finger(1, 9, 9));

  assert.deepEqual(messages.slice(2), [[[RELEASE, 50, 60]]]);
});

test('right mouse button and barrel of the pen press right', () => {
  const { input, messages } = desk();

  input.down(mouse(10, 10, { button: 2, buttons: 2 }));
  input.up(mouse(11, 11, { button: 2, buttons: 0 }));
  input.down(pen(4, 20, 20, { button: 2, buttons: 2 }));
  input.up(pen(4, 21, 21, { button: 2, buttons: 0 }));

  assert.deepEqual(messages, [
    [[RIGHT_PRESS, 10, 10]],
    [[RIGHT_RELEASE, 11, 11]],
    [[RIGHT_PRESS, 20, 20]],
    [[RIGHT_RELEASE, 21, 21]],
  ]);
});

test('other buttons press nothing', () => {
  const { input, messages } = desk();

  const middle = input.down(mouse(10, 10, { button: 1, buttons: 4 }));

  assert.equal(middle, false);
  assert.deepEqual(messages, []);
});

test('a button that goes up while another is held ends its stroke', () => {
  const { input, messages } = desk();
  input.down(mouse(10, 10));
  input.move(mouse(12, 10, { button: 2, buttons: 3 }));

  input.move(mouse(14, 10, { button: 0, buttons: 2 }));

  assert.deepEqual(messages.slice(2), [[[MOVE, 14, 10]], [[RELEASE, 14, 10]]]);
});

test('a stroke begins inside the picture and may leave it', () => {
  const { input, messages } = desk();

  const outside = input.down(mouse(-5, 10));
  input.down(mouse(5, 10));
  input.move(mouse(-1, 10));

  assert.equal(outside, false);
  assert.deepEqual(messages, [[[PRESS, 5, 10]], [[MOVE, -1, 10]]]);
});

test('mouse and pen move without a button, inside the picture only; a finger does not', () => {
  const { input, messages } = desk();

  input.move(mouse(5, 6, { buttons: 0 }));
  input.move(pen(2, 7, 8, { buttons: 0 }));
  input.move(mouse(-5, 6, { buttons: 0 }));
  input.move(finger(3, 9, 9));

  assert.deepEqual(messages, [[[MOVE, 5, 6]], [[MOVE, 7, 8]]]);
});

test('ending lifts once and lets the next stroke begin', () => {
  const { input, messages } = desk();
  input.down(finger(1, 10, 10));

  input.end();
  input.end();
  const next = input.down(finger(2, 20, 20));

  assert.equal(next, true);
  assert.deepEqual(messages.slice(1), [[[RELEASE, 10, 10]], [[PRESS, 20, 20]]]);
});
