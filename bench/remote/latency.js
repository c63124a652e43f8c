// How long an event of the pen takes to the screen and back into the page's picture, and what the
// streamer costs, as multiples of a bare WebSocket round trip in the same browser.
//
//   tests/support/with-x-server.sh desktop node bench/remote/latency.js BUILD_FOLDER
//
// The folder is that of a release build with the benchmarks.
import { spawn } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { createInterface } from 'node:readline';
import { join } from 'node:path';

import { launchBrowser, openPage, Pen } from '../../tests/remote/e2e/browser.js';
import { Home, Streamer } from '../../tests/remote/e2e/streamer.js';
import { until } from '../../tests/remote/e2e/until.js';

const ROUND_TRIPS = 500;
const STROKES = 20;
const EVENTS_OF_A_STROKE = 20;
const IDLE_SECONDS = 5;
const DRAWN_SECONDS = 5;
const EVENTS_A_SECOND = 240;
// Of the kernel's clock that /proc counts processor time in.
const TICKS_A_SECOND = 100;

const build = process.argv[2];
const program = (...path) => join(build, ...path);

function quantile(values, part) {
  const sorted = [...values].sort((a, b) => a - b);
  return sorted[Math.min(sorted.length - 1, Math.floor(sorted.length * part))];
}

/** A program's lines, one for each call. */
class Lines {
  constructor(child) {
    this.waiting = [];
    this.lines = [];
    createInterface({ input: child.stdout }).on('line', (line) => {
      const taker = this.waiting.shift();
      taker ? taker(line) : this.lines.push(line);
    });
  }
  next() {
    const line = this.lines.shift();
    return line === undefined ? new Promise((take) => this.waiting.push(take)) : Promise.resolve(line);
  }
}

async function bareRoundTrips(browser) {
  const server = spawn(program('bench', 'remote', 'echo_server'), { stdio: ['ignore', 'pipe', 'inherit'] });
  const port = Number(await new Lines(server).next());
  const page = await browser.newPage();
  const times = await page.evaluate(
    ([where, count]) =>
      new Promise((resolve, reject) => {
        const socket = new WebSocket(`ws://127.0.0.1:${where}`);
        const record = new Uint8Array(64);
        const found = [];
        let begin = 0;
        const send = () => {
          begin = performance.now();
          socket.send(record);
        };
        socket.onerror = reject;
        socket.onopen = send;
        socket.onmessage = () => {
          found.push(performance.now() - begin);
          found.length < count ? setTimeout(send, 2) : resolve(found);
        };
      }),
    [port, ROUND_TRIPS],
  );
  await page.close();
  server.kill();
  return times;
}

/** Notes in the page when each pen event came, and when the picture showed a point anew. */
async function watchPage(page) {
  await page.evaluate(() => {
    const now = () => performance.timeOrigin + performance.now();
    const canvas = document.querySelector('#picture');
    const context = canvas.getContext('2d');
    const at = ([x, y]) => context.getImageData(x, y, 1, 1).data.join();
    globalThis.watched = { came: 0, shown: 0 };
    document.addEventListener('pointermove', () => { watched.came = now(); }, true);
    globalThis.watchPoint = (point) => { watched = { came: 0, shown: 0, point, before: at(point) }; };
    new MutationObserver(() => {
      if (watched.point && !watched.shown && at(watched.point) !== watched.before) {
        watched.shown = now();
      }
    }).observe(document.documentElement, { attributeFilter: ['data-frames'] });
  });
}

async function strokeTimes(page) {
  const watch = spawn(program('bench', 'remote', 'pixel_watch'), { stdio: ['pipe', 'pipe', 'inherit'] });
  const lines = new Lines(watch);
  const box = await page.locator('#picture').boundingBox();
  const [width, height] = await page.locator('#picture').evaluate((c) => [c.width, c.height]);
  const place = ([x, y]) => [box.x + (x * box.width) / width, box.y + (y * box.height) / height];
  const pen = await Pen.over(page);
  const screen = [];
  const picture = [];
  await watchPage(page);
  for (let stroke = 0; stroke < STROKES; stroke++) {
    const y = 120 + stroke * 40;
    await pen.event('mouseMoved', place([100, y]), 0);
    await pen.event('mousePressed', place([100, y]), 1);
    for (let event = 1; event <= EVENTS_OF_A_STROKE; event++) {
      const point = [100 + event * 60, y];
      watch.stdin.write(`${point[0]} ${point[1]}\n`);
      await lines.next();
      await page.evaluate((at) => watchPoint(at), point);
      await pen.event('mouseMoved', place(point), 1);
      const changed = Number(await lines.next());
      const seen = await until('the picture', () => page.evaluate(() => watched.shown && watched));
      screen.push(changed - seen.came);
      picture.push(seen.shown - seen.came);
    }
    await pen.event('mouseReleased', place([100 + EVENTS_OF_A_STROKE * 60, y]), 0);
  }
  watch.kill();
  return { screen, picture };
}

function processorSeconds(pid) {
  const fields = readFileSync(`/proc/${pid}/stat`, 'utf8').split(') ')[1].split(' ');
  return (Number(fields[11]) + Number(fields[12])) / TICKS_A_SECOND;
}

async function share(pid, work, seconds) {
  const before = processorSeconds(pid);
  await work(seconds);
  return (processorSeconds(pid) - before) / seconds;
}

const sleep = (seconds) => new Promise((resume) => setTimeout(resume, seconds * 1000));

/** Draws from within the page, so that no more than the records costs anything on the way. */
function drawSteadily(page, seconds) {
  return page.evaluate(
    ([duration, rate]) =>
      new Promise((resolve) => {
        const stage = document.querySelector('#picture');
        const box = stage.getBoundingClientRect();
        const at = (type, step, buttons) =>
          stage.dispatchEvent(
            new PointerEvent(type, {
              bubbles: true, cancelable: true, pointerId: 7, pointerType: 'pen', isPrimary: true, buttons,
              button: type === 'pointermove' ? -1 : 0, pressure: 0.5,
              clientX: box.x + box.width * (0.5 + 0.4 * Math.cos(step / 60)),
              clientY: box.y + box.height * (0.5 + 0.4 * Math.sin(step / 41)),
            }),
          );
        const begin = performance.now();
        let sent = 0;
        at('pointerdown', 0, 1);
        const timer = setInterval(() => {
          const due = Math.floor(((performance.now() - begin) / 1000) * rate);
          for (; sent < due; sent++) {
            at('pointermove', sent, 1);
          }
          if (sent >= duration * rate) {
            clearInterval(timer);
            at('pointerup', sent, 0);
            resolve(sent);
          }
        }, 4);
      }),
    [seconds, EVENTS_A_SECOND],
  );
}

function row(name, times, bare) {
  const of = (part) => quantile(times, part);
  const ratio = (part) => (of(part) / quantile(bare, part)).toFixed(1);
  console.log(
    `${name.padEnd(34)} ${of(0.5).toFixed(2).padStart(7)} ms ${of(0.95).toFixed(2).padStart(7)} ms` +
      `   ${ratio(0.5).padStart(6)} x ${ratio(0.95).padStart(6)} x`,
  );
}

const home = new Home();
const streamer = await Streamer.start(program('apps', 'orvane-streamer', 'orvane-streamer'), home);
const browser = await launchBrowser();
try {
  const bare = await bareRoundTrips(browser);
  const { page } = await openPage(browser, streamer.url, { name: 'bench' });
  await until('annotation', () => page.evaluate(() => document.documentElement.dataset.annotating === 'true'));
  await page.locator('[data-tool=pen]').click();
  const { screen, picture } = await strokeTimes(page);
  await sleep(2);
  const { pid } = streamer.process;
  const idle = await share(pid, sleep, IDLE_SECONDS);
  const drawn = await share(pid, (seconds) => drawSteadily(page, seconds), DRAWN_SECONDS);

  console.log(`${' '.repeat(34)} ${'median'.padStart(10)} ${'95 %'.padStart(10)}   in bare round trips`);
  row('bare round trip of 64 bytes', bare, bare);
  row('pen event to changed pixel', screen, bare);
  row('pen event to changed picture', picture, bare);
  console.log(`streamer, idle: ${(idle * 1000).toFixed(1)} ms of processor time a second`);
  console.log(`streamer, a stroke at ${EVENTS_A_SECOND} events a second: ${(drawn * 1000).toFixed(0)} ms a second`);
} finally {
  await browser.close();
  await streamer.stop();
  home.remove();
}
