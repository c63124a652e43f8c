import assert from 'node:assert/strict';
import { test } from 'node:test';
import { page } from './page.js';

const { Typing, unitsBetween } = await page('typing.js');

const BACK = 8;
const ENTER = 13;
const units = (text) => [...Array(text.length).keys()].map((at) => text.charCodeAt(at));

class FakeField {
  value = '';
  #listeners = {};

  addEventListener(name, listener) {
    this.#listeners[name] = listener;
  }
  fire(name, event = {}) {
    this.#listeners[name]({ isComposing: false, ...event });
  }
  /** As a browser does it: the text after what the field holds, and the event. */
  type(text) {
    this.value += text;
    this.fire('input');
  }
  compose(...steps) {
    const before = this.value;
    this.fire('compositionstart');
    for (const step of steps) {
      this.value = before + step;
      this.fire('input', { isComposing: true });
    }
    this.fire('compositionend');
  }
}

function desk() {
  const field = new FakeField();
  const sent = [];
  const typing = new Typing(field, (part) => sent.push(...part));
  return { field, sent, typing };
}

test('the difference of two texts takes away from the end and adds there', () => {
  const pairs = [
    ['', 'ab', units('ab')],
    ['ab', 'abc', units('c')],
    ['abc', 'a', [BACK, BACK]],
    ['teh', 'the', [BACK, BACK, ...units('he')]],
    ['a', 'a\nb', [ENTER, ...units('b')]],
    ['same', 'same', []],
    ['xabc', 'abc', [BACK, BACK, BACK, BACK, ...units('abc')]],
  ];

  const found = pairs.map(([before, after]) => unitsBetween(before, after));

  assert.deepEqual(
    found,
    pairs.map(([, , expected]) => expected),
  );
});

test('a pair of surrogates is replaced whole', () => {
  const smile = '\u{1F600}';
  const grin = '\u{1F601}';

  const found = unitsBetween(`a${smile}`, `a${grin}`);

  assert.deepEqual(found, [BACK, BACK, 0xd83d, 0xde01]);
});

test('letters, Enter and an emoji are sent as they are typed', () => {
  const { field, sent } = desk();

  ['H', 'i', '\n', '\u{1F600}'].forEach((text) => field.type(text));

  assert.deepEqual(sent, [...units('Hi'), ENTER, 0xd83d, 0xde00]);
});

test('Windows line ends of a pasted text are one Enter', () => {
  const { field, sent } = desk();

  field.type('a\r\nb');

  assert.deepEqual(sent, [...units('a'), ENTER, ...units('b')]);
});

test('an accent made with a dead key is sent once it is whole', () => {
  const { field, sent } = desk();
  field.type('caf');

  field.compose('´', 'é');

  assert.deepEqual(sent, units('café'));
});

test('an input method composes unseen, and what it chose is sent', () => {
  const { field, sent } = desk();
  const steps = [];
  field.fire('compositionstart');
  for (const text of ['s', 'sh', 'shui', '水']) {
    field.value = `\n${text}`;
    field.fire('input', { isComposing: true });
    steps.push(sent.length);
  }

  field.fire('compositionend');
  field.fire('input');

  assert.deepEqual(steps, [0, 0, 0, 0]);
  assert.deepEqual(sent, units('水'));
});

test('a composition that is given up sends nothing', () => {
  const { field, sent } = desk();

  field.compose('n', 'ni', '');

  assert.deepEqual(sent, []);
});

test('an on-screen keyboard corrects a word that was sent', () => {
  const { field, sent } = desk();
  field.compose('t', 'te', 'teh');
  sent.length = 0;

  field.value = '\nthe ';
  field.fire('input', { inputType: 'insertReplacementText' });

  assert.deepEqual(sent, [BACK, BACK, ...units('he ')]);
});

test('Backspace goes on when nothing that was typed is left', () => {
  const { field, sent } = desk();
  field.type('a');

  for (let presses = 0; presses < 3; ++presses) {
    field.value = field.value.slice(0, -1);
    field.fire('input');
  }

  assert.deepEqual(sent, [...units('a'), BACK, BACK, BACK]);
});

test('a text that is selected and replaced takes away no more than itself', () => {
  const { field, sent } = desk();
  field.type('abc');
  sent.length = 0;

  field.value = 'x';
  field.fire('input');
  field.type('y');

  assert.deepEqual(sent, [BACK, BACK, BACK, ...units('xy')]);
});

test('a new text has nothing of the old one to take away', () => {
  const { field, sent, typing } = desk();
  field.type('old');
  sent.length = 0;

  typing.reset();
  field.type('new');

  assert.deepEqual(sent, units('new'));
});

test('a long text is cut in the field and not in what was sent', () => {
  const { field, sent } = desk();
  field.type('x'.repeat(2500));
  const length = field.value.length;
  sent.length = 0;

  field.type('y');

  assert.ok(length < 1100);
  assert.deepEqual(sent, units('y'));
});
