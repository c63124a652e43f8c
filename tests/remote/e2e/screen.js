// What the X server shows now, as pixels.
import { execFileSync } from 'node:child_process';

const MOST_BYTES = 64 * 1024 * 1024;

/** Reads the whole screen through `xwd`; `at(x, y)` answers [red, green, blue]. */
export function readScreen() {
  const dump = execFileSync('xwd', ['-root', '-silent'], { maxBuffer: MOST_BYTES });
  const field = (index) => dump.readUInt32BE(index * 4);
  const [headerSize, width, height] = [field(0), field(4), field(5)];
  const [bitsPerPixel, bytesPerLine, colours] = [field(11), field(12), field(19)];
  if (bitsPerPixel !== 32 || field(7) !== 0) {
    throw new Error(`the screen has ${bitsPerPixel} bits a pixel, or its bytes the other way round`);
  }
  const pixels = headerSize + colours * 12;
  return {
    width,
    height,
    at(x, y) {
      const place = pixels + y * bytesPerLine + x * 4;
      return [dump[place + 2], dump[place + 1], dump[place]];
    },
  };
}

/** True when no channel differs by more than `most`. */
export function isNear(found, wanted, most = 0) {
  return found.every((value, channel) => Math.abs(value - wanted[channel]) <= most);
}

/** Where the pointer of the screen is. */
export function pointerPlace() {
  const answer = execFileSync('xdotool', ['getmouselocation'], { encoding: 'utf8' });
  const [, x, y] = /x:(\d+) y:(\d+)/.exec(answer);
  return [Number(x), Number(y)];
}
