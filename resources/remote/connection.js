const FIRST_WAIT_MS = 250;
const LONGEST_WAIT_MS = 4000;
// A socket that neither opens nor fails belongs to a network that is gone.
const OPENING_LIMIT_MS = 8000;
const NOT_PAIRED = 403;

/** The WebSocket to the host, opened again whenever it is lost.
 *
 *  States: "connecting", "open", "lost" (and trying again), "refused" (this browser is not paired any
 *  more; only `wake` tries again).
 *
 *  `open(url)` makes a socket, `probe()` answers the status of the page's own address, `timers` has
 *  `set(action, ms)` and `clear(handle)`. `hello()` gives the first message of each connection. */
export class Connection {
  #options;
  #socket = null;
  #state = 'idle';
  #wait = FIRST_WAIT_MS;
  #retry = null;

  constructor(options) {
    this.#options = options;
  }

  get state() {
    return this.#state;
  }

  start() {
    this.#connect('connecting');
  }

  /** Tries at once instead of waiting; for when the network or the reader has come back. */
  wake() {
    if (this.#socket === null && this.#state !== 'idle') {
      this.#wait = FIRST_WAIT_MS;
      this.#connect('lost');
    }
  }

  stop() {
    this.#cancelRetry();
    this.#socket?.close();
    this.#socket = null;
    this.#become('idle');
  }

  /** Whether the message went out; false while there is no connection. */
  send(data) {
    if (this.#state !== 'open') {
      return false;
    }
    this.#socket.send(data);
    return true;
  }

  sendJson(message) {
    return this.send(JSON.stringify(message));
  }

  #connect(state) {
    this.#cancelRetry();
    this.#become(state);
    const socket = this.#options.open(this.#options.url);
    socket.binaryType = 'arraybuffer';
    this.#socket = socket;
    let opened = false;
    const mine = () => this.#socket === socket;
    const limit = this.#options.timers.set(() => mine() && this.#failed(), OPENING_LIMIT_MS);
    socket.onopen = () => {
      this.#options.timers.clear(limit);
      if (mine()) {
        opened = true;
        this.#become('open');
        this.sendJson(this.#options.hello());
      }
    };
    socket.onmessage = ({ data }) => mine() && this.#received(data);
    socket.onclose = () => {
      this.#options.timers.clear(limit);
      if (!mine()) {
        return;
      }
      if (opened) {
        this.#socket = null;
        this.#tryLater();
      } else {
        this.#failed();
      }
    };
  }

  #received(data) {
    // Opening alone is no success: a host that puts the page out at once must not be pestered.
    this.#wait = FIRST_WAIT_MS;
    if (typeof data === 'string') {
      this.#options.text(data);
    } else {
      this.#options.binary(new Uint8Array(data));
    }
  }

  // A browser does not say why a socket did not open, but the page's own address tells.
  async #failed() {
    const socket = this.#socket;
    this.#socket = null;
    socket.close();
    this.#become('lost');
    const attempt = {};
    this.#retry = attempt;
    const status = await this.#options.probe().catch(() => 0);
    if (this.#retry !== attempt) {
      return;
    }
    if (status === NOT_PAIRED) {
      this.#retry = null;
      this.#become('refused');
    } else {
      this.#tryLater();
    }
  }

  #tryLater() {
    this.#become('lost');
    const wait = this.#wait;
    this.#wait = Math.min(wait * 2, LONGEST_WAIT_MS);
    this.#retry = { timer: this.#options.timers.set(() => this.#connect('lost'), wait) };
  }

  #cancelRetry() {
    if (this.#retry?.timer !== undefined) {
      this.#options.timers.clear(this.#retry.timer);
    }
    this.#retry = null;
  }

  #become(state) {
    if (this.#state !== state) {
      this.#state = state;
      this.#options.changed(state);
    }
  }
}
