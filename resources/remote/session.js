import { HOST, key, messagesOf, meaningsOf, MODE, mouse, switchMode, typed } from './records.js';
import {
  answerAsker,
  freshState,
  isAnnotating,
  penHolder,
  takeMeaning,
  takeText,
} from './state.js';

// The records that tell whether annotation is open follow the list of clients at once.
const SETTLE_MS = 150;

/** The conversation with the host: who has the pen, and what is open for it.
 *
 *  `connection` has `send` and `sendJson`, `tools` is a `Tools`, `timers` has `set(action, ms)` and
 *  `clear(handle)`. `changed()` is called after every change, `heard(kind, what)` for what has
 *  happened: each kind of text message, and each kind of record of the library. */
export class Session {
  #connection;
  #tools;
  #timers;
  #changed;
  #heard;
  #settling = null;
  #begins = false;
  #metAnyone = false;
  #before = { hadPen: false, open: true };

  state = freshState();
  /** The keyboard and mouse mode. */
  control = false;
  /** Whether the pen was asked for and nobody has answered yet. */
  asking = false;

  constructor({ connection, tools, timers, changed, heard }) {
    this.#connection = connection;
    this.#tools = tools;
    this.#timers = timers;
    this.#changed = changed;
    this.#heard = heard;
  }

  get hasPen() {
    return this.state.id !== 0 && penHolder(this.state) === 'mine';
  }

  /** Whether strokes of this page are drawn at present. */
  get draws() {
    return this.hasPen && !this.control && isAnnotating(this.state) && this.state.mouseTaken;
  }

  connectionLost() {
    if (this.state.id !== 0) {
      this.#before.hadPen = this.hasPen;
      // What is about to be opened counts as before.
      if (this.#settling === null) {
        this.#before.open = isAnnotating(this.state) || this.control;
      }
    }
    this.#stopSettling();
    this.state = { ...this.state, id: 0, pen: 0, clients: [], askers: [] };
    this.asking = false;
    this.#changed();
  }

  takeText(text) {
    const hadPen = this.hasPen;
    const kind = takeText(this.state, text);
    if (kind === null) {
      return;
    }
    if (kind === 'welcome') {
      this.#begins = true;
    } else if (kind === 'clients') {
      this.#clientsChanged(hadPen);
    } else if (kind === 'penRefused') {
      this.asking = false;
    } else if (kind === 'display' && this.hasPen && isAnnotating(this.state)) {
      // The library reads the size of the picture when annotation opens.
      this.openAnnotation();
    }
    this.#heard(kind, this.state);
    this.#changed();
  }

  takeRecords(bytes) {
    for (const meaning of meaningsOf(bytes)) {
      const wasOpen = isAnnotating(this.state);
      takeMeaning(this.state, meaning);
      if (!wasOpen && isAnnotating(this.state)) {
        // The library has chosen a tool of its own while it opened.
        this.sendTool();
      }
      this.#heard(meaning.kind, meaning);
    }
    this.#changed();
  }

  /** Hands records to the host; nothing happens without the pen. */
  send(...records) {
    if (this.hasPen) {
      messagesOf(records).forEach((message) => this.#connection.send(message));
    }
  }

  /** Points as [mouse event, x, y]; to the library, or to the desktop in keyboard and mouse mode. */
  sendPoints(points) {
    this.send(...points.map(([event, x, y]) => mouse(this.#receiver, event, x, y)));
  }

  sendUnits(units) {
    this.send(...units.map((unit) => typed(this.#receiver, unit)));
  }

  sendHostKey(down, code) {
    this.send(key(HOST, down, code));
  }

  sendTool() {
    if (!this.control) {
      this.send(this.#tools.record(this.state.plugin));
    }
  }

  openAnnotation() {
    const { plugin } = this.state;
    this.send(switchMode(plugin, MODE.annotation, true), this.#tools.record(plugin));
  }

  closeAnnotation() {
    this.send(switchMode(this.state.plugin, MODE.annotation, false));
  }

  /** The keyboard and mouse mode works on what lies under the ink, so annotation closes for it. */
  setControl(on) {
    if (on === this.control || !this.hasPen) {
      return;
    }
    if (on) {
      this.closeAnnotation();
    }
    this.control = on;
    if (!on) {
      this.openAnnotation();
    }
    this.#changed();
  }

  askPen() {
    this.asking = this.#connection.sendJson({ type: 'askPen' });
    this.#changed();
  }

  givePen(to) {
    this.#connection.sendJson({ type: 'givePen', to });
  }

  refusePen(to) {
    this.#connection.sendJson({ type: 'refusePen', to });
    answerAsker(this.state, to);
    this.#changed();
  }

  dropPen() {
    this.#connection.sendJson({ type: 'dropPen' });
  }

  get #receiver() {
    return this.control ? HOST : this.state.plugin;
  }

  #clientsChanged(hadPen) {
    const first = this.#begins;
    this.#begins = false;
    if (this.hasPen && !hadPen) {
      this.asking = false;
      this.#settle();
    } else if (!this.hasPen) {
      this.#penGone(hadPen);
    }
    if (first && !this.hasPen && this.#wantsPen()) {
      this.askPen();
    }
    this.#metAnyone = true;
  }

  #wantsPen() {
    // Later a free pen is left to the one who had it before the connection was lost.
    const free = this.state.pen === 0 && !this.#metAnyone;
    return free || this.#before.hadPen;
  }

  #penGone(hadPen) {
    // A pen that is free after a lost connection comes back at once, and the mode goes on.
    if (hadPen || this.state.pen !== 0) {
      this.control = false;
    }
    if (!this.state.clients.some((client) => client.id === this.state.pen)) {
      this.asking = false;
    }
  }

  #settle() {
    this.#stopSettling();
    this.#settling = this.#timers.set(() => {
      this.#settling = null;
      this.#takeUpPen();
    }, SETTLE_MS);
  }

  #takeUpPen() {
    if (this.control) {
      return;
    }
    if (isAnnotating(this.state)) {
      this.sendTool();
    } else if (this.#before.open) {
      this.openAnnotation();
    }
    this.#before.open = true;
  }

  #stopSettling() {
    this.#timers.clear(this.#settling);
    this.#settling = null;
  }
}
