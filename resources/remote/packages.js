const HEADER = 64;
const SIZE_AT = 16;
const VIDEO = 4;

const MAGIC = [
  { ends: 'jpg', mime: 'image/jpeg', at: 0, bytes: [0xff, 0xd8, 0xff] },
  {
    ends: 'png',
    mime: 'image/png',
    at: 0,
    bytes: [0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a],
  },
  { ends: 'pdf', mime: 'application/pdf', at: 0, bytes: [0x25, 0x50, 0x44, 0x46, 0x2d] },
  { ends: 'mov', mime: 'video/quicktime', at: 4, bytes: [0x66, 0x74, 0x79, 0x70, 0x71, 0x74] },
  { ends: 'mp4', mime: 'video/mp4', at: 4, bytes: [0x66, 0x74, 0x79, 0x70] },
  { ends: 'mov', mime: 'video/quicktime', at: 4, bytes: [0x6d, 0x6f, 0x6f, 0x76] },
  { ends: 'zip', mime: 'application/zip', at: 0, bytes: [0x50, 0x4b, 0x03, 0x04] },
];
const UNKNOWN = { ends: 'bin', mime: 'application/octet-stream' };

function kindOf(content) {
  const found = MAGIC.find(({ at, bytes }) => bytes.every((byte, n) => content[at + n] === byte));
  return found ?? UNKNOWN;
}

const two = (number) => String(number).padStart(2, '0');

function stamp(date) {
  const day = `${date.getFullYear()}-${two(date.getMonth() + 1)}-${two(date.getDate())}`;
  return `${day} ${two(date.getHours())}.${two(date.getMinutes())}.${two(date.getSeconds())}`;
}

/** The file in a data package (without the message's first byte): `name`, `mime` and `content`. The
 *  library sends no name, so it is made from the kind and the time. Null when bytes are missing. */
export function fileOf(bytes, date) {
  if (bytes.byteLength < HEADER) {
    return null;
  }
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  const size = view.getUint32(SIZE_AT, true);
  const version = String.fromCharCode(...bytes.subarray(0, 3));
  if (version !== '1.0' || size !== bytes.byteLength - HEADER) {
    return null;
  }
  const content = bytes.subarray(HEADER);
  const { ends, mime } = kindOf(content);
  const what = view.getUint32(8, true) === VIDEO ? 'Recording' : 'File';
  return { name: `${what} ${stamp(date)}.${ends}`, mime, content };
}

export function sizeText(bytes) {
  if (bytes < 1024) {
    return `${bytes} bytes`;
  }
  const kilo = bytes / 1024;
  return kilo < 1024 ? `${Math.round(kilo)} KB` : `${(kilo / 1024).toFixed(1)} MB`;
}
