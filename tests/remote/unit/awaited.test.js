import assert from 'node:assert/strict';
import { test } from 'node:test';
import { FakeTimers, page } from './page.js';

const { Awaited } = await page('awaited.js');

function desk() {
  const made = { timers: new FakeTimers(), changes: [], missed: 0 };
  made.awaited = new Awaited({
    timers: made.timers,
    changed: () => made.changes.push(made.awaited.pending),
    missed: () => ++made.missed,
  });
  return made;
}

test('an answer ends the waiting', () => {
  const given = desk();
  given.awaited.ask();

  const waited = given.awaited.answer();
  given.timers.advance(60_000);

  assert.equal(waited, true);
  assert.deepEqual(given.changes, [true, false]);
  assert.equal(given.missed, 0);
});

test('no answer within five seconds is missed, and waiting is over', () => {
  const given = desk();
  given.awaited.ask();

  given.timers.advance(4999);
  const early = given.missed;
  given.timers.advance(1);

  assert.equal(early, 0);
  assert.equal(given.missed, 1);
  assert.equal(given.awaited.pending, false);
});

test('an answer that nobody waited for is told so', () => {
  const given = desk();

  const waited = given.awaited.answer();

  assert.equal(waited, false);
  assert.deepEqual(given.changes, []);
});
