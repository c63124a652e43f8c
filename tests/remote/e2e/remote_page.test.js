import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { after, afterEach, before, beforeEach, test } from 'node:test';

import { launchBrowser, openPage, Pen } from './browser.js';
import { isNear, pointerPlace, readScreen } from './screen.js';
import { Home, Streamer } from './streamer.js';
import { until } from './until.js';

const PROGRAM = process.env.ORV_STREAMER;
// The page's red, in the ink of a pen.
const RED = [229, 57, 53];
// A blended picture and a JPEG of it come close to the colour of the ink, no more.
const NEAR = 30;

let browser;
let home;
let streamer;
let pages;

before(async () => {
  browser = await launchBrowser();
});
after(async () => {
  await browser.close();
});
beforeEach(async () => {
  home = new Home();
  pages = [];
  streamer = await Streamer.start(PROGRAM, home);
});
afterEach(async () => {
  for (const { context, complaints } of pages) {
    await context.close();
    assert.deepEqual(complaints, []);
  }
  if (streamer.process.exitCode === null) {
    assert.equal(await streamer.stop(), 0);
  }
  home.remove();
});

/** A page of a browser of its own that has been here before, under this name. */
async function open(name, url = streamer.url) {
  const opened = await openPage(browser, url, { name });
  pages.push(opened);
  return opened.page;
}

const has = (page, name, value) =>
  until(`${name} "${value}"`, () =>
    page.evaluate(([key]) => document.documentElement.dataset[key], [name]).then((found) => found === value),
  );

async function openAndDraw(name) {
  const page = await open(name);
  await has(page, 'connection', 'open');
  await has(page, 'pen', 'mine');
  await has(page, 'annotating', 'true');
  await usePen(page);
  return page;
}

/** Broad enough for its middle to be itself in a JPEG picture, too. */
async function usePen(page) {
  await page.locator('[data-tool=pen]').click();
  await page.locator('#sizes [data-step]').nth(3).click();
}

/** Where a point of the screen lies on the page, in CSS pixels. */
async function onPage(page, [x, y]) {
  const box = await page.locator('#picture').boundingBox();
  const size = await page.locator('#picture').evaluate((canvas) => [canvas.width, canvas.height]);
  return [box.x + (x * box.width) / size[0], box.y + (y * box.height) / size[1]];
}

async function draw(page, ...points) {
  const places = [];
  for (const point of points) {
    places.push(await onPage(page, point));
  }
  await (await Pen.over(page)).stroke(...places);
}

const screenShows = (colour, [x, y]) =>
  until(`${colour} at ${x}, ${y} of the screen`, () => isNear(readScreen().at(x, y), colour, NEAR));

const pictureShows = (page, colour, [x, y]) =>
  until(`${colour} at ${x}, ${y} of the page's picture`, async () => {
    const pixel = await page.locator('#picture').evaluate(
      (canvas, [left, top]) => [...canvas.getContext('2d').getImageData(left, top, 1, 1).data],
      [x, y],
    );
    return isNear(pixel.slice(0, 3), colour, NEAR);
  });

test('a stroke of a pen is on the screen and in the picture, where it was drawn', async () => {
  const page = await openAndDraw('Tablet');
  const untouched = readScreen().at(300, 600);

  await draw(page, [300, 400], [500, 420], [700, 400]);

  await screenShows(RED, [500, 420]);
  await pictureShows(page, RED, [500, 420]);
  assert.deepEqual(readScreen().at(300, 600), untouched);
});

test('undo takes the stroke away, redo brings it back', async () => {
  const page = await openAndDraw('Tablet');
  assert.equal(await page.locator('#undo').isDisabled(), true);
  const below = readScreen().at(500, 400);
  await draw(page, [300, 400], [700, 400]);
  await screenShows(RED, [500, 400]);

  await page.locator('#undo').click();
  await screenShows(below, [500, 400]);
  await page.locator('#redo').click();

  await screenShows(RED, [500, 400]);
  await until('no redo left', () => page.locator('#redo').isDisabled());
});

test('typed text with accents and in Chinese arrives as typed', async () => {
  const page = await openAndDraw('Tablet');
  await page.locator('[data-tool=text]').click();
  await draw(page, [400, 300], [401, 300]);
  await until('the keyboard', () => page.locator('#typing').isVisible());
  const before = readScreen();

  await page.locator('#typing-field').pressSequentially('é');
  const input = await page.context().newCDPSession(page);
  await input.send('Input.imeSetComposition', { selectionStart: 2, selectionEnd: 2, text: 'ni' });
  await input.send('Input.insertText', { text: '你' });

  // Both have left ink to the right of where the text began; what they are, the saved file tells.
  await until('ink', () => countOfInk(before, readScreen(), [400, 240], [620, 330]) > 200);
  await page.locator('[data-tool=pen]').click();
  assert.equal(await streamer.stop(), 0);
  const saved = home.files(/save.*\.dat$/).map((path) => readFileSync(path));
  const text = Buffer.from('é你', 'utf16le').swap16();
  assert.equal(
    saved.some((file) => file.includes(text)),
    true,
    'the saved text',
  );
  for (const { complaints } of pages) {
    complaints.length = 0;
  }
});

function countOfInk(older, newer, [left, top], [right, bottom]) {
  let count = 0;
  for (let y = top; y < bottom; y++) {
    for (let x = left; x < right; x++) {
      count += isNear(older.at(x, y), newer.at(x, y), 8) ? 0 : 1;
    }
  }
  return count;
}

test('a snapshot is acknowledged and lies in the folder of the device', async () => {
  const page = await openAndDraw("Anna's tablet");
  await draw(page, [300, 400], [700, 400]);
  await screenShows(RED, [500, 400]);

  await page.locator('#snapshot').click();

  await page.getByText('Snapshot saved').first().waitFor();
  const pictures = home.files(/Snapshot\/IMG .*\.jpg$/);
  assert.equal(pictures.length, 1);
  assert.match(pictures[0], /Anna's tablet/);
});

test('a second client looks on, sees the ink, and gets the pen when it is given', async () => {
  const first = await openAndDraw('Anna');
  const second = await open('Ben');
  await has(second, 'pen', 'other');
  await draw(first, [300, 400], [700, 400]);
  await pictureShows(second, RED, [500, 400]);
  const below = readScreen().at(500, 600);

  await draw(second, [300, 600], [700, 600]);
  await second.getByRole('button', { name: /ask/i }).first().click();
  await first.getByRole('button', { name: /give/i }).first().click();
  await has(second, 'pen', 'mine');
  await has(first, 'pen', 'other');

  assert.deepEqual(readScreen().at(500, 600), below, 'who looks on draws nothing');
  await usePen(second);
  await draw(second, [300, 700], [700, 700]);
  await screenShows(RED, [500, 700]);
});

test('without the right code nothing is served', async () => {
  const address = `http://127.0.0.1:${streamer.port}`;
  for (const path of ['/', '/main.js', '/?code=0000000000000000', '/link']) {
    const answer = await fetch(address + path, { redirect: 'manual' });
    assert.equal(answer.status, 403, path);
    assert.equal((await answer.text()).includes('<html'), false);
  }
});

test('after a new start of the streamer the page comes back by itself, and draws', async () => {
  const page = await openAndDraw('Tablet');
  const { port } = streamer;
  assert.equal(await streamer.stop(), 0);
  await until('the loss shown', () => page.locator('#banner').isVisible());

  streamer = await Streamer.start(PROGRAM, home, port);
  await has(page, 'connection', 'open');
  await has(page, 'pen', 'mine');
  // The streamer has closed annotation when it ended.
  await page.locator('#open-annotation').click();
  await has(page, 'annotating', 'true');
  await draw(page, [300, 500], [700, 500]);

  await screenShows(RED, [500, 500]);
  for (const { complaints } of pages) {
    complaints.length = 0;
  }
});

test('the keyboard and mouse mode reaches the desktop', async () => {
  const page = await openAndDraw('Tablet');
  await page.locator('#mode-control').click();
  await has(page, 'control', 'true');
  await has(page, 'annotating', 'false');

  const [x, y] = await onPage(page, [640, 480]);
  await page.mouse.move(x, y);
  await page.mouse.down();
  await page.mouse.up();

  await until('the pointer of the desktop', () => pointerPlace().every((v, i) => Math.abs(v - [640, 480][i]) <= 1));
  await page.locator('#mode-draw').click();
  await has(page, 'annotating', 'true');
});
