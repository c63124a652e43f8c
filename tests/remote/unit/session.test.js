import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { FakeStorage, FakeTimers, page } from './page.js';

const { Session } = await page('session.js');
const { Tools } = await page('tools.js');

const vectors = JSON.parse(
  readFileSync(new URL('../record-vectors.json', import.meta.url), 'utf8'),
);
const vector = (name) => vectors.find((one) => one.name === name).bytes;
const OPEN = vector('open annotation');
const CLOSE = vector('close annotation');
const PEN = vector('pen, red');

const ME = { id: 3, name: 'Me' };
const BEN = { id: 5, name: 'Ben' };

function desk() {
  const made = { timers: new FakeTimers(), records: [], texts: [], heard: [] };
  const connection = {
    send(bytes) {
      const digits = Buffer.from(bytes).toString('hex');
      made.records.push(...digits.match(/.{128}/g));
    },
    sendJson(message) {
      made.texts.push(message);
      return true;
    },
  };
  made.session = new Session({
    connection,
    tools: new Tools(new FakeStorage()),
    timers: made.timers,
    changed: () => {},
    heard: (kind) => made.heard.push(kind),
  });
  made.say = (message) => made.session.takeText(JSON.stringify(message));
  made.clients = (pen, ...list) => made.say({ type: 'clients', pen, list });
  made.fromLibrary = (name) =>
    made.session.takeRecords(new Uint8Array(Buffer.from(vector(name), 'hex')));
  made.welcome = (id = 3) =>
    made.say({ type: 'welcome', id, plugin: 17, width: 1920, height: 1080, scale: 8 });
  return made;
}

function drawing() {
  const given = desk();
  given.welcome();
  given.clients(3, ME);
  given.timers.advance(1000);
  given.fromLibrary('annotation is shown');
  given.records.length = 0;
  return given;
}

test('the one who has the pen opens annotation and hands over the tool', () => {
  const given = desk();
  given.welcome();
  const early = [...given.records];

  given.clients(3, ME);
  given.timers.advance(1000);

  assert.deepEqual(early, []);
  assert.deepEqual(given.records, [OPEN, PEN]);
});

test('annotation that is open already is not opened again', () => {
  const given = desk();
  given.welcome();
  given.clients(3, ME);

  given.fromLibrary('annotation is shown');
  given.records.length = 0;
  given.timers.advance(1000);

  assert.deepEqual(given.records, [PEN]);
});

test('the tool follows when annotation has opened', () => {
  const given = desk();
  given.welcome();
  given.clients(3, ME);
  given.timers.advance(1000);
  given.records.length = 0;

  given.fromLibrary('annotation is shown');
  given.fromLibrary('annotation is shown');

  assert.deepEqual(given.records, [PEN]);
});

test('a looker-on sends no records and asks nobody', () => {
  const given = desk();
  given.welcome();
  given.clients(5, ME, BEN);

  given.session.sendPoints([[5, 1, 1]]);
  given.session.sendTool();
  given.session.setControl(true);
  given.timers.advance(1000);

  assert.deepEqual(given.records, []);
  assert.deepEqual(given.texts, []);
  assert.equal(given.session.control, false);
});

test('a newcomer takes a pen that nobody has, but not one that was laid down here', () => {
  const given = desk();
  given.welcome();
  given.clients(0, ME);
  const first = [...given.texts];
  given.clients(3, ME);
  given.session.dropPen();
  given.clients(0, ME);
  given.texts.length = 0;

  given.session.connectionLost();
  given.welcome(4);
  given.clients(0, { id: 4, name: 'Me' });

  assert.deepEqual(first, [{ type: 'askPen' }]);
  assert.deepEqual(given.texts, []);
});

test('who had the pen asks for it after the connection was lost, and opens again what was open', () => {
  const given = drawing();
  given.session.connectionLost();
  given.session.connectionLost();
  const meanwhile = given.session.hasPen;
  given.welcome(9);
  given.clients(5, BEN, { id: 9, name: 'Me' });
  const asked = [...given.texts];

  given.clients(9, BEN, { id: 9, name: 'Me' });
  given.timers.advance(1000);

  assert.equal(meanwhile, false);
  assert.deepEqual(asked, [{ type: 'askPen' }]);
  assert.deepEqual(given.records, [OPEN, PEN]);
});

test('what was closed before the connection was lost stays closed', () => {
  const given = drawing();
  given.fromLibrary('annotation is closed, as an answer');
  given.session.connectionLost();
  given.welcome(9);

  given.clients(9, { id: 9, name: 'Me' });
  given.timers.advance(1000);

  assert.deepEqual(given.records, []);
});

test('annotation that was about to be opened when the connection was lost is opened later', () => {
  const given = desk();
  given.welcome();
  given.clients(3, ME);
  given.session.connectionLost();
  given.timers.advance(1000);
  given.welcome(9);

  given.clients(9, { id: 9, name: 'Me' });
  given.timers.advance(1000);

  assert.deepEqual(given.records, [OPEN, PEN]);
});

test('a connection that is lost while the pen is taken up again leaves closed what was closed', () => {
  const given = drawing();
  given.fromLibrary('annotation is closed, as an answer');
  given.session.connectionLost();
  given.welcome(8);
  given.clients(8, { id: 8, name: 'Me' });
  given.session.connectionLost();
  given.timers.advance(1000);
  given.welcome(9);

  given.clients(9, { id: 9, name: 'Me' });
  given.timers.advance(1000);

  assert.deepEqual(given.records, []);
});

test('the pen is asked for after a lost connection only if it was had, even if it is free', () => {
  const given = desk();
  given.welcome();
  given.clients(5, ME, BEN);
  given.session.connectionLost();

  given.welcome(9);
  given.clients(0, { id: 9, name: 'Me' });

  assert.deepEqual(given.texts, []);
});

test('keyboard and mouse mode closes annotation, speaks to the host, and opens it again', () => {
  const given = drawing();

  given.session.setControl(true);
  given.session.sendPoints([[10, 2400, 1600]]);
  given.session.sendHostKey(true, 0x41);
  given.session.sendTool();
  given.session.setControl(false);

  assert.deepEqual(given.records, [
    CLOSE,
    vector("move of the desktop's mouse"),
    vector('A down'),
    OPEN,
    PEN,
  ]);
});

test('whoever loses the pen leaves the keyboard and mouse mode without a word', () => {
  const given = drawing();
  given.session.setControl(true);
  given.records.length = 0;

  given.clients(5, ME, BEN);

  assert.equal(given.session.control, false);
  assert.deepEqual(given.records, []);
});

test('keyboard and mouse mode goes on after a lost connection if the pen comes back at once', () => {
  const given = drawing();
  given.session.setControl(true);
  given.records.length = 0;
  given.session.connectionLost();
  given.welcome(9);
  given.clients(0, { id: 9, name: 'Me' });

  given.clients(9, { id: 9, name: 'Me' });
  given.timers.advance(1000);

  assert.equal(given.session.control, true);
  assert.deepEqual(given.records, []);
});

test('keyboard and mouse mode is over if somebody else has the pen after a lost connection', () => {
  const given = drawing();
  given.session.setControl(true);
  given.fromLibrary('annotation is closed, as an answer');
  given.records.length = 0;
  given.session.connectionLost();
  given.welcome(9);
  given.clients(5, BEN, { id: 9, name: 'Me' });
  const control = given.session.control;

  given.clients(9, BEN, { id: 9, name: 'Me' });
  given.timers.advance(1000);

  assert.equal(control, false);
  assert.deepEqual(given.records, [OPEN, PEN]);
});

test('the pen that goes before annotation was opened opens nothing', () => {
  const given = desk();
  given.welcome();
  given.clients(3, ME, BEN);

  given.clients(5, ME, BEN);
  given.timers.advance(1000);

  assert.deepEqual(given.records, []);
});

test('points and units of the library carry its number', () => {
  const given = drawing();

  given.session.sendPoints([[5, 7680, 4320]]);
  given.session.sendUnits([0x61]);

  assert.deepEqual(given.records, [vector('press in the middle'), vector('typed letter')]);
});

test('the page draws only while the library takes the mouse', () => {
  const given = drawing();
  const before = given.session.draws;

  given.fromLibrary('mouse input is not taken');
  const meanwhile = given.session.draws;
  given.fromLibrary('mouse input is taken');

  assert.deepEqual([before, meanwhile, given.session.draws], [true, false, true]);
});

test('those who ask stand in line until they are answered or gone', () => {
  const given = drawing();
  given.clients(3, ME, BEN, { id: 6, name: 'Cem' }, { id: 7, name: 'Dana' });
  for (const [by, name] of [
    [5, 'Ben'],
    [6, 'Cem'],
    [7, 'Dana'],
    [5, 'Ben'],
  ]) {
    given.say({ type: 'penAsked', by, name });
  }
  const all = given.session.state.askers.map(({ id }) => id);

  given.session.refusePen(6);
  given.clients(3, ME, BEN);

  assert.deepEqual(all, [6, 7, 5]);
  assert.deepEqual(given.session.state.askers, [BEN]);
  assert.deepEqual(given.texts, [{ type: 'refusePen', to: 6 }]);
});

test('asking is over with a refusal, with the pen, or with its holder', () => {
  const given = desk();
  given.welcome();
  given.clients(5, ME, BEN);
  const asking = [];

  for (const end of [
    () => given.say({ type: 'penRefused' }),
    () => given.clients(0, ME),
    () => given.clients(3, ME, BEN),
  ]) {
    given.session.askPen();
    asking.push(given.session.asking);
    end();
    asking.push(given.session.asking);
  }

  assert.deepEqual(asking, [true, false, true, false, true, false]);
});

test('the counts of undo and redo and the recording are known', () => {
  const given = drawing();

  given.fromLibrary('counts of undo and redo');
  given.fromLibrary('recording runs, as an answer');
  given.fromLibrary('page buttons off');

  assert.deepEqual(given.session.state.history, { undo: 258, redo: 3 });
  assert.equal(given.session.state.recording, true);
  assert.equal(given.session.state.pages, false);
});

test('another size of the display is taken over', () => {
  const given = drawing();

  given.say({ type: 'display', width: 1280, height: 800, scale: 4 });

  assert.deepEqual(given.session.state.display, { width: 1280, height: 800 });
  assert.equal(given.session.state.scale, 4);
  assert.deepEqual(given.records, [OPEN, PEN], 'annotation opens for the new size');
});

test('texts that mean nothing change nothing', () => {
  const given = drawing();
  const before = structuredClone(given.session.state);
  given.heard.length = 0;

  for (const text of [
    'no JSON',
    'null',
    '[]',
    '{"type": "constructor"}',
    '{"type": 7}',
    '{"type": "welcome", "id": 4}',
    '{"type": "display", "width": 0, "height": 10, "scale": 8}',
    '{"type": "clients", "pen": 3, "list": [{"id": 3}]}',
    '{"type": "clients", "pen": "3", "list": []}',
    '{"type": "penAsked", "by": -1, "name": "x"}',
  ]) {
    given.session.takeText(text);
  }

  assert.deepEqual(given.session.state, before);
  assert.deepEqual(given.heard, []);
});
