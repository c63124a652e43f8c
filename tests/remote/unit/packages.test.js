import assert from 'node:assert/strict';
import { test } from 'node:test';
import { page } from './page.js';

const { fileOf, sizeText } = await page('packages.js');

const DATE = new Date(2026, 10, 3, 9, 5, 7);

function packaged(type, content, { size = content.length, version = '1.0' } = {}) {
  const bytes = Buffer.alloc(64 + content.length);
  bytes.write(version, 0, 'latin1');
  bytes.writeUInt32LE(type, 8);
  bytes.writeUInt32LE(size, 16);
  bytes.set(content, 64);
  return new Uint8Array(bytes);
}

const latin = (text) => Buffer.from(text, 'latin1');

test('a file is named after its kind, its time and its first bytes', () => {
  const contents = [
    [1, latin('\xff\xd8\xff\xe0'), 'File 2026-11-03 09.05.07.jpg', 'image/jpeg'],
    [1, latin('\x89PNG\r\n\x1a\n'), 'File 2026-11-03 09.05.07.png', 'image/png'],
    [1, latin('%PDF-1.7'), 'File 2026-11-03 09.05.07.pdf', 'application/pdf'],
    [1, latin('PK\x03\x04'), 'File 2026-11-03 09.05.07.zip', 'application/zip'],
    [4, latin('\0\0\0\x14ftypqt  '), 'Recording 2026-11-03 09.05.07.mov', 'video/quicktime'],
    [4, latin('\0\0\0\x20ftypisom'), 'Recording 2026-11-03 09.05.07.mp4', 'video/mp4'],
    [4, latin('\0\0\0\x08moov'), 'Recording 2026-11-03 09.05.07.mov', 'video/quicktime'],
    [1, latin('hello'), 'File 2026-11-03 09.05.07.bin', 'application/octet-stream'],
    [1, latin(''), 'File 2026-11-03 09.05.07.bin', 'application/octet-stream'],
  ];

  const files = contents.map(([type, content]) => fileOf(packaged(type, content), DATE));

  assert.deepEqual(
    files.map(({ name, mime }) => [name, mime]),
    contents.map(([, , name, mime]) => [name, mime]),
  );
});

test('the content is the file without its header', () => {
  const content = latin('%PDF-1.7 and more');

  const file = fileOf(packaged(1, content), DATE);

  assert.deepEqual(Buffer.from(file.content), content);
});

test('a package that is not whole is no file', () => {
  const broken = [
    new Uint8Array(0),
    packaged(1, latin('abc')).subarray(0, 63),
    packaged(1, latin('abc'), { size: 4 }),
    packaged(1, latin('abc'), { size: 2 }),
    packaged(1, latin('abc'), { version: '2.0' }),
  ];

  const files = broken.map((bytes) => fileOf(bytes, DATE));

  assert.deepEqual(
    files,
    broken.map(() => null),
  );
});

test('sizes are short', () => {
  const sizes = [0, 1023, 1024, 524_288, 1_572_864];

  const texts = sizes.map(sizeText);

  assert.deepEqual(texts, ['0 bytes', '1023 bytes', '1 KB', '512 KB', '1.5 MB']);
});
