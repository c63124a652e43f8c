import assert from 'node:assert/strict';
import { test } from 'node:test';
import { page } from './page.js';

const { shortcutOf, togglesControl } = await page('shortcuts.js');

test('keys have their meanings while drawing', () => {
  const keys = [
    [{ key: '1' }, 'tool:pen'],
    [{ key: '9' }, 'tool:laser'],
    [{ key: '0' }, null],
    [{ key: 'z', ctrlKey: true }, 'undo'],
    [{ key: 'Z', ctrlKey: true, shiftKey: true }, 'redo'],
    [{ key: 'z', metaKey: true }, 'undo'],
    [{ key: 'y', ctrlKey: true }, 'redo'],
    [{ key: 'z' }, null],
    [{ key: 'z', ctrlKey: true, altKey: true }, null],
    [{ key: 's', ctrlKey: true }, null],
    [{ key: 's', altKey: true }, null],
    [{ key: 'S' }, 'snapshot'],
    [{ key: ']' }, 'larger'],
    [{ key: 'PageDown' }, 'next'],
    [{ key: 'constructor' }, null],
    [{ key: 'Tab' }, null],
  ];

  const names = keys.map(([event]) => shortcutOf(event));

  assert.deepEqual(
    names,
    keys.map(([, name]) => name),
  );
});

test('one chord changes between drawing and control, whatever the layout makes of its letter', () => {
  const chord = { ctrlKey: true, altKey: true, code: 'KeyK', key: 'ĸ' };

  const answers = [chord, { ...chord, altKey: false }, { ...chord, code: 'KeyL' }].map(
    togglesControl,
  );

  assert.deepEqual(answers, [true, false, false]);
});
