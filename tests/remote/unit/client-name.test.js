import assert from 'node:assert/strict';
import { test } from 'node:test';
import { FakeStorage, page } from './page.js';

const { cleanName, storedName, storeName, suggestedName } = await page('client-name.js');

test('a name is suggested after the device', () => {
  const devices = [
    ['Mozilla/5.0 (Linux; Android 14; Pixel 8) Chrome/130 Mobile Safari', 5, 'Android phone'],
    ['Mozilla/5.0 (Linux; Android 13; SM-X700) Chrome/130 Safari', 5, 'Android tablet'],
    ['Mozilla/5.0 (iPhone; CPU iPhone OS 17_0) Mobile Safari', 5, 'iPhone phone'],
    ['Mozilla/5.0 (iPad; CPU OS 12_0) Mobile Safari', 5, 'iPad tablet'],
    ['Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) Safari', 5, 'iPad tablet'],
    ['Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) Safari', 0, 'Mac computer'],
    ['Mozilla/5.0 (Windows NT 10.0; Win64; x64) Chrome', 10, 'Windows computer'],
    ['Mozilla/5.0 (X11; Linux x86_64) Firefox', 0, 'Linux computer'],
    ['something else', 0, 'Browser computer'],
  ];

  const names = devices.map(([userAgent, maxTouchPoints]) =>
    suggestedName({ userAgent, maxTouchPoints }),
  );

  assert.deepEqual(
    names,
    devices.map(([, , name]) => name),
  );
});

test('a name is one line of 64 characters at most', () => {
  const texts = ["  Anna's\n\ttablet ", '\u0000', 'x'.repeat(80), '\u{1F600}'.repeat(70)];

  const names = texts.map(cleanName);

  assert.deepEqual(names, ["Anna's tablet", '', 'x'.repeat(64), '\u{1F600}'.repeat(64)]);
});

test('a name is remembered, and a browser that keeps nothing has none', () => {
  const storage = new FakeStorage();
  const refuse = () => {
    throw new Error('denied');
  };

  storeName(storage, 'Ben');
  storeName({ setItem: refuse }, 'Ben');

  assert.equal(storedName(storage), 'Ben');
  assert.equal(storedName({ getItem: refuse }), '');
});
