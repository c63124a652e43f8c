import { Actions } from './actions.js';
import { cleanName, storedName, storeName, suggestedName } from './client-name.js';
import { Connection } from './connection.js';
import { byId, checkRadio, radioGroup } from './dom.js';
import { Files } from './files.js';
import { Keyboard } from './keyboard.js';
import { More } from './more.js';
import { Palette } from './palette.js';
import { PenView } from './pen.js';
import { Picture } from './picture.js';
import { Session } from './session.js';
import { Stage } from './stage.js';
import { isAnnotating, penHolder } from './state.js';
import { Status } from './status.js';
import { Tools } from './tools.js';

const page = document.documentElement;
const timers = {
  set: (action, ms) => setTimeout(action, ms),
  clear: (handle) => clearTimeout(handle),
};
const store = {
  getItem: (name) => localStorage.getItem(name),
  setItem: (name, value) => localStorage.setItem(name, value),
};

let name = storedName(store);
const status = new Status(timers);
const files = new Files(status);

const connection = new Connection({
  url: `${location.protocol === 'https:' ? 'wss' : 'ws'}://${location.host}/link`,
  open: (url) => new WebSocket(url),
  probe: async () => (await fetch('/', { cache: 'no-store' })).status,
  timers,
  hello: () => ({ type: 'hello', name }),
  changed: connectionChanged,
  text: (text) => session.takeText(text),
  binary: takeBinary,
});
const tools = new Tools(store, toolChanged);
const session = new Session({ connection, tools, timers, changed: refresh, heard });
const picture = new Picture({ canvas: byId('picture'), resized: () => stage.layOut() });
const stage = new Stage({ session, timers, rightClickUsed: showRightClick });
const palette = new Palette(tools);
const more = new More({ session, name: () => name, rename });
const actions = new Actions({
  session,
  status,
  timers,
  keyboard: () => keyboard.toggle(),
  more: () => more.open(),
});
const pen = new PenView(session, () => more.openPeople());
const keyboard = new Keyboard(session, perform);

function takeBinary(bytes) {
  const answer = (frame) => connection.sendJson({ type: 'shown', frame });
  const take = {
    1: () => session.takeRecords(bytes.subarray(1)),
    2: () => files.take(bytes.subarray(1)),
    3: () => drawFrame(bytes, answer),
  };
  take[bytes[0]]?.();
}

let epoch = 0;

async function drawFrame(bytes, answer) {
  const mine = epoch;
  // Frames are counted anew on each connection.
  await picture.take(bytes, (frame) => mine === epoch && answer(frame));
  page.dataset.frames = picture.drawn;
}

function heard(kind, what) {
  const take = {
    welcome: () => picture.resize(what.display.width, what.display.height),
    display: () => picture.resize(what.display.width, what.display.height),
    penAsked: () => status.announce(`${what.askers.at(-1).name} asks for the pen`),
    penRefused: () => status.say('The pen was kept'),
    snapshot: () => actions.snapshotTaken(),
    recording: () => actions.recordingChanged(what),
    help: () => status.say('Help is wanted at the screen'),
    keyboard: () => (what.open && session.hasPen ? keyboard.open() : keyboard.close()),
  };
  take[kind]?.();
}

const BANNERS = {
  idle: '',
  connecting: 'Connecting…',
  open: '',
  lost: 'Reconnecting…',
  refused: 'This device is not paired any more: open the new address',
};

function connectionChanged(state) {
  page.dataset.connection = state;
  status.banner(BANNERS[state], state === 'refused' ? 'bad' : 'busy');
  if (state === 'open') {
    ++epoch;
    return;
  }
  stage.end();
  keyboard.end();
  keyboard.close();
  actions.connectionLost();
  session.connectionLost();
}

function toolChanged() {
  palette.refresh(session.hasPen && !session.control);
  session.sendTool();
}

let hadPen = false;

function tellPen(hasPen) {
  if (hadPen !== hasPen && session.state.id !== 0) {
    status.announce(hasPen ? 'You have the pen' : 'You do not have the pen any more');
  }
  if (hadPen && !hasPen) {
    stage.end();
    keyboard.close();
  }
  hadPen = hasPen;
}

function refresh() {
  const { hasPen, control, state } = session;
  const open = isAnnotating(state);
  const draws = hasPen && !control;
  page.dataset.pen = penHolder(state);
  page.dataset.annotating = String(open);
  page.dataset.control = String(control);
  tellPen(hasPen);
  palette.refresh(draws);
  actions.refresh();
  pen.refresh();
  more.refresh();
  checkRadio(byId('modes'), (button) => (button.id === 'mode-control') === control);
  byId('mode-draw').disabled = !hasPen;
  byId('mode-control').disabled = !hasPen;
  byId('control-keys').hidden = !control;
  byId('closed').hidden = !draws || open;
  byId('not-taken').hidden = !draws || !open || state.mouseTaken;
}

function setControl(on) {
  stage.end();
  keyboard.end();
  session.setControl(on);
  if (session.control) {
    stage.focus();
  }
}

function perform(shortcut) {
  const steps = {
    smaller: () => tools.step(-1),
    larger: () => tools.step(1),
    dashed: () => palette.toggleDashed(),
    control: () => setControl(!session.control),
  };
  if (shortcut.startsWith('tool:')) {
    tools.choose(shortcut.slice('tool:'.length));
  } else if (steps[shortcut]) {
    steps[shortcut]();
  } else {
    actions.press(shortcut);
  }
}

function showRightClick() {
  byId('right-click').setAttribute('aria-pressed', String(stage.touch.nextIsRight));
}

function rename(chosen) {
  name = chosen;
  storeName(store, name);
  // The host learns a name when a connection begins.
  connection.stop();
  connection.start();
}

function listen() {
  radioGroup(byId('modes'));
  byId('mode-draw').addEventListener('click', () => setControl(false));
  byId('mode-control').addEventListener('click', () => setControl(true));
  byId('open-annotation').addEventListener('click', () => session.openAnnotation());
  byId('right-click').addEventListener('click', () => {
    stage.touch.nextIsRight = !stage.touch.nextIsRight;
    showRightClick();
  });
  addEventListener('online', () => connection.wake());
  addEventListener('pageshow', () => connection.wake());
  document.addEventListener('visibilitychange', () => {
    if (document.visibilityState === 'visible') {
      connection.wake();
    } else {
      stage.end();
      keyboard.end();
    }
  });
}

function askName() {
  const dialog = byId('name-sheet');
  const field = byId('first-name');
  field.value = suggestedName(navigator);
  const accept = () => {
    name = cleanName(field.value) || suggestedName(navigator);
    storeName(store, name);
    dialog.close();
    connection.start();
  };
  byId('accept-name').addEventListener('click', accept);
  field.addEventListener('keydown', (event) => event.key === 'Enter' && accept());
  dialog.addEventListener('cancel', (event) => event.preventDefault());
  dialog.showModal();
  field.select();
}

listen();
refresh();
page.dataset.frames = 0;
if (name) {
  connection.start();
} else {
  askName();
}
