// Debian's Chromium without a window, and pen events as a tablet's driver would send them.
import { chromium } from 'playwright-core';

const FLAGS = [
  '--disable-gpu',
  '--disable-quic',
  '--no-first-run',
  '--disable-background-networking',
  '--disable-component-update',
  '--disable-sync',
];

export function launchBrowser() {
  const asRoot = process.getuid() === 0 ? ['--no-sandbox'] : [];
  return chromium.launch({ executablePath: '/usr/bin/chromium', args: [...FLAGS, ...asRoot] });
}

/** A browser profile of its own, with one page; collects what the page complains about. With a
 *  name, it is as if that had been given at an earlier visit. */
export async function openPage(browser, url, { name, viewport = { width: 1280, height: 800 } } = {}) {
  const context = await browser.newContext({ viewport });
  if (name !== undefined) {
    await context.addInitScript((own) => localStorage.setItem('orvane.name', own), name);
  }
  const page = await context.newPage();
  const complaints = [];
  page.on('pageerror', (error) => complaints.push(String(error)));
  page.on('console', (message) => {
    if (message.type() === 'error') {
      complaints.push(message.text());
    }
  });
  const answer = await page.goto(url);
  return { context, page, complaints, status: answer.status() };
}

/** A pen over the page, in CSS pixels from its top left corner. */
export class Pen {
  static async over(page) {
    return new Pen(await page.context().newCDPSession(page));
  }

  constructor(session) {
    this.session = session;
  }

  async event(type, [x, y], buttons) {
    await this.session.send('Input.dispatchMouseEvent', {
      type,
      x,
      y,
      pointerType: 'pen',
      button: type === 'mouseMoved' ? 'none' : 'left',
      buttons,
      clickCount: 1,
      force: buttons ? 0.5 : 0,
    });
  }

  async stroke(...points) {
    await this.event('mouseMoved', points[0], 0);
    await this.event('mousePressed', points[0], 1);
    for (const point of points.slice(1)) {
      await this.event('mouseMoved', point, 1);
    }
    await this.event('mouseReleased', points.at(-1), 0);
  }
}
