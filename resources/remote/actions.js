import { Awaited } from './awaited.js';
import { byId, iconButton } from './dom.js';
import * as records from './records.js';
import { isFlipchart } from './state.js';

/** The row of actions: undo, pages, snapshot and the like. */
export class Actions {
  #session;
  #status;
  #buttons = {};
  #snapshot;
  #recording;

  constructor({ session, status, timers, keyboard, more }) {
    this.#session = session;
    this.#status = status;
    const awaited = (text) =>
      new Awaited({
        timers,
        changed: () => this.refresh(),
        missed: () => status.say(text, 'bad'),
      });
    this.#snapshot = awaited('The snapshot was not confirmed');
    this.#recording = awaited('The recording was not confirmed');
    this.#addButtons(keyboard, more);
  }

  /** Presses the button with this name; nothing happens while it is disabled. */
  press(name) {
    this.#buttons[name].click();
  }

  snapshotTaken() {
    this.#snapshot.answer();
    this.#status.say('Snapshot saved', 'good');
  }

  recordingChanged({ running, error }) {
    this.#recording.answer();
    if (error !== 0) {
      this.#status.say(`Recording failed (error ${error})`, 'bad');
    } else {
      this.#status.say(running ? 'Recording' : 'Recording stopped', 'good');
    }
  }

  /** Answers of a connection that is gone do not come any more. */
  connectionLost() {
    this.#snapshot.cancel();
    this.#recording.cancel();
  }

  refresh() {
    const { state, hasPen, control } = this.#session;
    const draws = hasPen && !control;
    const enable = (name, on) => {
      this.#buttons[name].disabled = !on;
    };
    enable('undo', draws && state.history.undo > 0);
    enable('redo', draws && state.history.redo > 0);
    enable('eraseAll', draws);
    enable('flipchart', draws);
    enable('previous', draws && state.pages);
    enable('next', draws && state.pages);
    enable('snapshot', draws && !this.#snapshot.pending);
    enable('keyboard', hasPen);
    enable('recording', draws && !this.#recording.pending);
    this.#buttons.flipchart.setAttribute('aria-pressed', String(isFlipchart(state)));
    this.#buttons.recording.setAttribute('aria-pressed', String(state.recording));
    this.#busy('snapshot', this.#snapshot.pending);
    this.#busy('recording', this.#recording.pending);
  }

  #busy(name, on) {
    this.#buttons[name].setAttribute('aria-busy', String(on));
  }

  #addButtons(keyboard, more) {
    const plugin = () => this.#session.state.plugin;
    const send = (make) => () => this.#session.send(make(plugin()));
    const pressed = { 'aria-pressed': 'false' };
    this.#add('undo', 'undo', 'Undo', 'Control+Z', send(records.undo));
    this.#add('redo', 'redo', 'Redo', 'Control+Shift+Z', send(records.redo));
    this.#add('previous', 'previous', 'Previous page', 'PageUp', send(records.previousPage));
    this.#add('next', 'next', 'Next page', 'PageDown', send(records.nextPage));
    this.#add('keyboard', 'keyboard', 'Type text', 'K', keyboard);
    this.#add('eraseAll', 'erase-all', 'Erase all', 'Delete', send(records.eraseAll));
    this.#add('flipchart', 'flipchart', 'Flipchart', 'F', () => this.#toggleFlipchart(), pressed);
    this.#add('snapshot', 'camera', 'Snapshot', 'S', () => {
      this.#snapshot.ask();
      this.#session.send(records.snapshot(plugin()));
    });
    this.#add('recording', 'record', 'Recording', 'R', () => this.#toggleRecording(), pressed);
    this.#add('more', 'more', 'More', 'M', more, { 'aria-haspopup': 'dialog' });
  }

  #add(name, picture, label, keys, click, attributes = {}) {
    const options = {
      picture,
      label,
      keys,
      kind: 'action',
      attributes: { id: name, ...attributes },
    };
    this.#buttons[name] = iconButton(options, click);
    byId('actions').append(this.#buttons[name]);
  }

  #toggleFlipchart() {
    const { state } = this.#session;
    const shown = !isFlipchart(state);
    this.#session.send(records.switchMode(state.plugin, records.MODE.flipchart, shown));
  }

  #toggleRecording() {
    const { state } = this.#session;
    this.#recording.ask();
    this.#session.send(records.record(state.plugin, !state.recording));
  }
}
