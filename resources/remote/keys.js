// The keys of a keyboard by their place, as Windows virtual key codes.

const NAMED = {
  Backspace: 0x08,
  Tab: 0x09,
  Enter: 0x0d,
  NumpadEnter: 0x0d,
  Pause: 0x13,
  CapsLock: 0x14,
  Escape: 0x1b,
  Space: 0x20,
  PageUp: 0x21,
  PageDown: 0x22,
  End: 0x23,
  Home: 0x24,
  ArrowLeft: 0x25,
  ArrowUp: 0x26,
  ArrowRight: 0x27,
  ArrowDown: 0x28,
  PrintScreen: 0x2c,
  Insert: 0x2d,
  Delete: 0x2e,
  MetaLeft: 0x5b,
  MetaRight: 0x5c,
  ContextMenu: 0x5d,
  NumpadMultiply: 0x6a,
  NumpadAdd: 0x6b,
  NumpadSubtract: 0x6d,
  NumpadDecimal: 0x6e,
  NumpadDivide: 0x6f,
  NumLock: 0x90,
  ScrollLock: 0x91,
  ShiftLeft: 0xa0,
  ShiftRight: 0xa1,
  ControlLeft: 0xa2,
  ControlRight: 0xa3,
  AltLeft: 0xa4,
  AltRight: 0xa5,
  Semicolon: 0xba,
  Equal: 0xbb,
  Comma: 0xbc,
  Minus: 0xbd,
  Period: 0xbe,
  Slash: 0xbf,
  Backquote: 0xc0,
  BracketLeft: 0xdb,
  Backslash: 0xdc,
  BracketRight: 0xdd,
  Quote: 0xde,
  IntlBackslash: 0xe2,
};

export const VK = Object.freeze({ backspace: NAMED.Backspace, enter: NAMED.Enter });

/** The virtual key for a `KeyboardEvent.code`; null when the place has none. */
export function virtualKey(code) {
  if (/^Key[A-Z]$/.test(code) || /^Digit[0-9]$/.test(code)) {
    return code.charCodeAt(code.length - 1);
  }
  if (/^Numpad[0-9]$/.test(code)) {
    return 0x60 + Number(code[6]);
  }
  const functionKey = /^F([1-9]|1[0-9]|2[0-4])$/.exec(code);
  if (functionKey) {
    return 0x6f + Number(functionKey[1]);
  }
  return Object.hasOwn(NAMED, code) ? NAMED[code] : null;
}

export const isModifier = (code) => code >= NAMED.ShiftLeft && code <= NAMED.AltRight;
export const isMeta = (code) => code === NAMED.MetaLeft || code === NAMED.MetaRight;
