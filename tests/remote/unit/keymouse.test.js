import assert from 'node:assert/strict';
import { test } from 'node:test';
import { page } from './page.js';

const { HostKeyboard } = await page('keymouse.js');
const { virtualKey } = await page('keys.js');

function desk() {
  const sent = [];
  const keyboard = new HostKeyboard({
    key: (down, code) => sent.push(`${down ? '+' : '-'}${code.toString(16)}`),
    unit: (unit) => sent.push(unit),
  });
  return { keyboard, sent };
}

const press = (code, key, more = {}) => ({ code, key, keyCode: 0, isComposing: false, ...more });

test('places of keys have their Windows codes', () => {
  const codes = {
    KeyA: 0x41,
    KeyZ: 0x5a,
    Digit0: 0x30,
    Digit9: 0x39,
    Numpad0: 0x60,
    Numpad9: 0x69,
    NumpadEnter: 0x0d,
    NumpadDivide: 0x6f,
    F1: 0x70,
    F12: 0x7b,
    F24: 0x87,
    Backspace: 0x08,
    Escape: 0x1b,
    Space: 0x20,
    ArrowUp: 0x26,
    Delete: 0x2e,
    ShiftRight: 0xa1,
    ControlLeft: 0xa2,
    AltRight: 0xa5,
    MetaLeft: 0x5b,
    Semicolon: 0xba,
    Quote: 0xde,
    IntlBackslash: 0xe2,
  };

  const found = Object.keys(codes).map((code) => [code, virtualKey(code)]);

  assert.deepEqual(Object.fromEntries(found), codes);
});

test('places that are none have no code', () => {
  const none = ['', 'F25', 'F0', 'KeyÄ', 'Fn', 'constructor', 'toString', 'Unidentified'];

  const found = none.map(virtualKey);

  assert.deepEqual(
    found,
    none.map(() => null),
  );
});

test('keys go down and up by their place, modifiers too, and repeat', () => {
  const { keyboard, sent } = desk();

  keyboard.down(press('ControlLeft', 'Control'));
  keyboard.down(press('KeyY', 'z'));
  keyboard.down(press('KeyY', 'z', { repeat: true }));
  keyboard.up(press('KeyY', 'z'));
  keyboard.up(press('ControlLeft', 'Control'));

  assert.deepEqual(sent, ['+a2', '+59', '+59', '-59', '-a2']);
});

test('a key that went down elsewhere is not lifted', () => {
  const { keyboard, sent } = desk();

  const used = keyboard.up(press('KeyA', 'a'));

  assert.equal(used, false);
  assert.deepEqual(sent, []);
});

test('a character without a key is typed', () => {
  const { keyboard, sent } = desk();

  const used = [
    keyboard.down(press('', 'ß')),
    keyboard.down(press('Unidentified', '\u{1F600}')),
    keyboard.down(press('', 'Unidentified')),
  ];

  assert.deepEqual(used, [true, true, false]);
  assert.deepEqual(sent, [0xdf, 0xd83d, 0xde00]);
});

test('what an input method deals with is left to it', () => {
  const { keyboard, sent } = desk();

  const used = [
    keyboard.down(press('KeyA', 'Process', { keyCode: 229 })),
    keyboard.down(press('KeyA', 'a', { isComposing: true })),
    keyboard.down(press('', 'Unidentified', { keyCode: 229 })),
  ];

  assert.deepEqual(used, [false, false, false]);
  assert.deepEqual(sent, []);
});

test('ending lifts what is held, last first, and once', () => {
  const { keyboard, sent } = desk();
  keyboard.down(press('ShiftLeft', 'Shift'));
  keyboard.down(press('KeyA', 'A'));
  sent.length = 0;

  keyboard.end();
  keyboard.end();

  assert.deepEqual(sent, ['-41', '-a0']);
});

test('keys that went down with Command go up with it', () => {
  const { keyboard, sent } = desk();
  keyboard.down(press('ShiftLeft', 'Shift'));
  keyboard.down(press('MetaLeft', 'Meta'));
  keyboard.down(press('KeyC', 'c'));
  sent.length = 0;

  keyboard.up(press('MetaLeft', 'Meta'));
  keyboard.up(press('ShiftLeft', 'Shift'));

  assert.deepEqual(sent, ['-5b', '-43', '-a0']);
});

test('of the typing field, Enter and Backspace are keys and the rest is typed', () => {
  const { keyboard, sent } = desk();

  keyboard.type([8, 13, 0x61, 0xe9]);

  assert.deepEqual(sent, ['+8', '-8', '+d', '-d', 0x61, 0xe9]);
});
