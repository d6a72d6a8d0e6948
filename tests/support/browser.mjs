// SPDX-License-Identifier: MIT
// A headless browser, driven through its own protocol over two pipes, which needs nothing beside Node.js.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import path from 'node:path';
import { inflateSync } from 'node:zlib';

const answerLimit = 20_000;  // milliseconds for one answer of the browser, which now and then gives none on a busy machine

/** The program CHROMIUM with a profile in FOLDER. */
export class Browser {
  /** A browser that answers. */
  static async start(chromium, folder) {
    for (let attempt = 1; ; ++attempt) {
      const browser = new Browser(chromium, path.join(folder, `profile ${attempt}`));
      try {
        await browser.send('Browser.getVersion');
        return browser;
      } catch (error) {
        await browser.end();
        if (attempt === 3) throw error;
      }
    }
  }

  constructor(chromium, profile) {
    this.process = spawn(chromium, ['--headless', '--remote-debugging-pipe', '--no-sandbox', '--disable-gpu',
      '--disable-quic', '--no-first-run', '--disable-background-networking', '--disable-component-update',
      '--disable-sync', `--user-data-dir=${profile}`, '--window-size=1000,900', 'about:blank'],
    { stdio: ['ignore', 'ignore', 'ignore', 'pipe', 'pipe'] });
    this.ended = new Promise(resolve => this.process.on('exit', resolve));
    this.ended.then(() => { for (const { reject } of this.waiting.values()) reject(new Error('the browser has ended')); });
    this.process.stdio[3].on('error', () => {});  // said by the end of the process
    this.waiting = new Map();
    this.events = [];  // what the browser told without being asked
    this.count = 0;
    let rest = Buffer.alloc(0);
    this.process.stdio[4].on('data', data => {
      rest = Buffer.concat([rest, data]);
      for (let end = rest.indexOf(0); end >= 0; end = rest.indexOf(0)) {
        const message = JSON.parse(rest.subarray(0, end));
        rest = rest.subarray(end + 1);
        if (message.method) this.events.push(message);
        const { resolve, reject } = this.waiting.get(message.id) ?? {};
        if (message.error) reject?.(new Error(message.error.message));
        else resolve?.(message.result);
      }
    });
  }

  async send(method, params = {}, sessionId = undefined) {
    const id = ++this.count;
    this.process.stdio[3].write(JSON.stringify({ id, method, params, sessionId }) + '\0');
    let timer;
    try {
      return await new Promise((resolve, reject) => {
        this.waiting.set(id, { resolve, reject });
        timer = setTimeout(() => reject(new NoAnswer(method)), answerLimit);
      });
    } finally {
      clearTimeout(timer);
      this.waiting.delete(id);
    }
  }

  async open(url) {
    const { targetId } = await this.send('Target.createTarget', { url });
    const { sessionId } = await this.send('Target.attachToTarget', { targetId, flatten: true });
    return new Tab(this, sessionId);
  }

  end() {
    this.process.kill('SIGKILL');
    return this.ended;
  }
}

class NoAnswer extends Error {
  constructor(method) { super(`the browser did not answer ${method}`); }
}

class Tab {
  constructor(browser, session) {
    this.browser = browser;
    this.session = session;
  }

  async evaluate(expression) {
    const { result, exceptionDetails } = await this.browser.send('Runtime.evaluate',
      { expression, awaitPromise: true, returnByValue: true }, this.session);
    assert(!exceptionDetails, `${expression}: ${JSON.stringify(exceptionDetails)}`);
    return result.value;
  }

  /** The colour of one pixel as RRGGBB; undefined when the browser painted nothing in time. */
  async color(x, y) {
    try {
      const clip = { x, y, width: 1, height: 1, scale: 1 };
      const { data } = await this.browser.send('Page.captureScreenshot', { format: 'png', clip }, this.session);
      return pixelOf(Buffer.from(data, 'base64'));
    } catch (error) {
      if (error instanceof NoAnswer) return undefined;
      throw error;
    }
  }
}

/** The colour of a PNG picture of one pixel. Whatever its filter, with no neighbour its bytes stand as they are. */
function pixelOf(png) {
  const data = [];
  for (let at = 8; at < png.length; at += 12 + png.readUInt32BE(at)) {
    if (png.toString('latin1', at + 4, at + 8) === 'IDAT') data.push(png.subarray(at + 8, at + 8 + png.readUInt32BE(at)));
  }
  return inflateSync(Buffer.concat(data)).toString('hex', 1, 4);
}
