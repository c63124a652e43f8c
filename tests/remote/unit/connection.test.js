import assert from 'node:assert/strict';
import { test } from 'node:test';
import { FakeTimers, page, settled } from './page.js';

const { Connection } = await page('connection.js');

class FakeSocket {
  sent = [];
  closed = false;
  send(data) {
    this.sent.push(data);
  }
  close() {
    this.closed = true;
  }
}

function desk({ status = 200 } = {}) {
  const made = {
    timers: new FakeTimers(),
    sockets: [],
    states: [],
    texts: [],
    binaries: [],
    probes: 0,
    status,
  };
  made.connection = new Connection({
    url: 'ws://here/link',
    open: () => {
      made.sockets.push(new FakeSocket());
      return made.sockets.at(-1);
    },
    probe: async () => {
      ++made.probes;
      if (made.status === 'unreachable') {
        throw new TypeError('unreachable');
      }
      return made.status;
    },
    timers: made.timers,
    hello: () => ({ type: 'hello', name: 'Me' }),
    changed: (state) => made.states.push(state),
    text: (text) => made.texts.push(text),
    binary: (bytes) => made.binaries.push(bytes),
  });
  made.last = () => made.sockets.at(-1);
  return made;
}

test('the first message is the hello', () => {
  const given = desk();
  given.connection.start();
  const early = given.connection.send('too early');

  given.last().onopen();

  assert.equal(early, false);
  assert.deepEqual(given.last().sent, ['{"type":"hello","name":"Me"}']);
  assert.deepEqual(given.states, ['connecting', 'open']);
});

test('messages are handed on by their kind', () => {
  const given = desk();
  given.connection.start();
  given.last().onopen();

  given.last().onmessage({ data: 'text' });
  given.last().onmessage({ data: new Uint8Array([1, 2]).buffer });

  assert.deepEqual(given.texts, ['text']);
  assert.deepEqual(given.binaries, [new Uint8Array([1, 2])]);
});

test('a lost connection is tried again after waits that double up to four seconds', async () => {
  const given = desk({ status: 'unreachable' });
  given.connection.start();
  given.last().onopen();
  given.last().onclose();
  const waits = [];

  for (let attempt = 0; attempt < 6; ++attempt) {
    waits.push(given.timers.waits[0]);
    given.timers.advance(given.timers.waits[0]);
    given.last().onclose();
    await settled();
  }

  assert.deepEqual(waits, [250, 500, 1000, 2000, 4000, 4000]);
  assert.equal(given.sockets.length, 7);
  assert.equal(given.connection.state, 'lost');
});

test('a connection that brought a message begins with the short wait again', async () => {
  const given = desk();
  given.connection.start();
  given.last().onclose();
  await settled();
  given.timers.advance(250);
  given.last().onopen();
  given.last().onmessage({ data: '{}' });

  given.last().onclose();

  assert.deepEqual(given.timers.waits, [250]);
});

test('a host that closes each connection at once is not pestered', () => {
  const given = desk();
  given.connection.start();
  given.last().onopen();
  given.last().onclose();
  given.timers.advance(250);
  given.last().onopen();

  given.last().onclose();

  assert.deepEqual(given.timers.waits, [500]);
});

test('a browser that is not paired any more stops trying', async () => {
  const given = desk({ status: 403 });
  given.connection.start();

  given.last().onclose();
  await settled();

  assert.equal(given.connection.state, 'refused');
  assert.deepEqual(given.timers.waits, []);
});

test('waking tries at once, and again after a refusal, but opens no second socket', async () => {
  const given = desk({ status: 403 });
  given.connection.start();
  given.connection.wake();
  const whileConnecting = given.sockets.length;
  given.last().onclose();
  await settled();

  given.connection.wake();
  given.last().onopen();
  given.connection.wake();

  assert.equal(whileConnecting, 1);
  assert.equal(given.sockets.length, 2);
  assert.equal(given.connection.state, 'open');
});

test('waking while the wait runs leaves no second attempt behind', () => {
  const given = desk();
  given.connection.start();
  given.last().onopen();
  given.last().onclose();

  given.connection.wake();
  given.last().onopen();
  given.timers.advance(60_000);

  assert.equal(given.sockets.length, 2);
});

test('waking while the page is asked for its status leaves no second attempt behind', async () => {
  const given = desk();
  given.connection.start();
  given.last().onclose();

  given.connection.wake();
  await settled();
  given.last().onopen();
  given.timers.advance(60_000);

  assert.equal(given.sockets.length, 2);
  assert.equal(given.connection.state, 'open');
});

test('a socket that never opens is given up', async () => {
  const given = desk();
  given.connection.start();
  const first = given.last();

  given.timers.advance(8000);
  await settled();
  given.timers.advance(250);
  first.onclose();
  first.onopen();

  assert.equal(first.closed, true);
  assert.equal(given.probes, 1);
  assert.equal(given.sockets.length, 2);
  assert.equal(given.connection.state, 'lost');
});

test('messages of a socket that was given up are not taken', () => {
  const given = desk();
  given.connection.start();
  const first = given.last();
  given.connection.stop();
  given.connection.start();

  first.onmessage({ data: 'late' });

  assert.deepEqual(given.texts, []);
});

test('stopping closes the socket and tries no more', () => {
  const given = desk();
  given.connection.start();
  given.last().onopen();

  given.connection.stop();
  given.last().onclose();
  given.connection.wake();
  given.timers.advance(60_000);

  assert.equal(given.last().closed, true);
  assert.equal(given.sockets.length, 1);
  assert.equal(given.connection.state, 'idle');
});
