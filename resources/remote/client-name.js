const KEY = 'orvane.name';
// As the host takes it.
const LONGEST = 64;

function platformOf(agent) {
  const platforms = [
    ['iPad', /iPad/],
    ['iPhone', /iPhone/],
    ['Android', /Android/],
    ['Chromebook', /CrOS/],
    ['Windows', /Windows/],
    ['Mac', /Macintosh/],
    ['Linux', /Linux/],
  ];
  return platforms.find(([, pattern]) => pattern.test(agent))?.[0] ?? 'Browser';
}

/** A name to begin with, such as "Android tablet". An iPad says that it is a Mac, but a Mac has no
 *  touch screen. */
export function suggestedName({ userAgent, maxTouchPoints = 0 }) {
  const platform = platformOf(userAgent);
  if (platform === 'Mac' && maxTouchPoints > 1) {
    return 'iPad tablet';
  }
  if (platform === 'iPad') {
    return 'iPad tablet';
  }
  if (platform === 'iPhone' || (platform === 'Android' && /Mobile/.test(userAgent))) {
    return `${platform} phone`;
  }
  return platform === 'Android' ? 'Android tablet' : `${platform} computer`;
}

/** One line, without blanks at its ends, and short enough; empty when nothing is left. */
export function cleanName(text) {
  const line = text.replace(/[\p{Cc}\p{Zl}\p{Zp}]+/gu, ' ').trim();
  return [...line].slice(0, LONGEST).join('').trim();
}

export function storedName(storage) {
  try {
    return cleanName(storage.getItem(KEY) ?? '');
  } catch {
    return '';
  }
}

export function storeName(storage, name) {
  try {
    storage.setItem(KEY, name);
  } catch {
    // The name is asked for again next time.
  }
}
