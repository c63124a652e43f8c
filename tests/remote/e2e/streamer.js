// The streamer as a process with a home of its own.
import { spawn } from 'node:child_process';
import { mkdirSync, mkdtempSync, readdirSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

const ADDRESS = /http:\/\/127\.0\.0\.1:(\d+)\/\?code=(\w+)/;

export class Home {
  constructor() {
    this.folder = mkdtempSync(join(tmpdir(), 'orv-remote-'));
    mkdirSync(join(this.folder, 'runtime'), { mode: 0o700 });
  }

  /** Paths of all files below, that match. */
  files(pattern) {
    return readdirSync(this.folder, { recursive: true, withFileTypes: true })
      .filter((entry) => entry.isFile())
      .map((entry) => join(entry.parentPath ?? entry.path, entry.name))
      .filter((path) => pattern.test(path));
  }

  remove() {
    rmSync(this.folder, { recursive: true, force: true });
  }
}

export class Streamer {
  /** Resolves when the streamer has printed its address. */
  static async start(program, home, port = 0) {
    const streamer = new Streamer(program, home, port);
    await streamer.address;
    return streamer;
  }

  constructor(program, home, port) {
    const kept = Object.entries(process.env).filter(([name]) => !name.startsWith('XDG_'));
    const env = {
      ...Object.fromEntries(kept),
      HOME: home.folder,
      XDG_RUNTIME_DIR: join(home.folder, 'runtime'),
    };
    this.output = '';
    this.process = spawn(program, ['--port', String(port)], { env, stdio: ['ignore', 'pipe', 'pipe'] });
    this.ended = new Promise((resolve) => this.process.once('exit', (code) => resolve(code)));
    this.address = new Promise((resolve, reject) => {
      const take = (chunk) => {
        this.output += chunk;
        const found = ADDRESS.exec(this.output);
        if (found) {
          [this.url, this.port, this.code] = [found[0], Number(found[1]), found[2]];
          resolve(found[0]);
        }
      };
      this.process.stdout.on('data', take);
      this.process.stderr.on('data', take);
      this.ended.then((code) => reject(new Error(`ended with ${code}:\n${this.output}`)));
    });
  }

  /** Ends it as Ctrl-C does, and answers its exit status. */
  async stop() {
    this.process.kill('SIGINT');
    return this.ended;
  }
}
