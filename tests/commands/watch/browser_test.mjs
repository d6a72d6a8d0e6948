// SPDX-License-Identifier: MIT
// node browser_test.mjs QUILLBAR FOLDER CHROMIUM: the page of `quillbar watch` in a browser: the document appears, an edit
// shows, an error shows and goes, and page and zoom stay.
//
// The browser is driven through its own protocol over two pipes, which needs nothing beside Node.js.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import path from 'node:path';
import { inflateSync } from 'node:zlib';
import { WatchedScript, until } from './watched_script.mjs';

const [quillbar, folder, chromium] = process.argv.slice(2);

const answerLimit = 20_000;  // milliseconds for one answer of the browser, which now and then gives none on a busy machine

class Browser {
  /** A browser that answers. */
  static async start() {
    for (let attempt = 1; ; ++attempt) {
      const browser = new Browser(`profile ${attempt}`);
      try {
        await browser.send('Browser.getVersion');
        return browser;
      } catch (error) {
        await browser.end();
        if (attempt === 3) throw error;
      }
    }
  }

  constructor(profile) {
    this.process = spawn(chromium, ['--headless', '--remote-debugging-pipe', '--no-sandbox', '--disable-gpu',
      '--disable-quic', '--no-first-run', '--disable-background-networking', '--disable-component-update',
      '--disable-sync', `--user-data-dir=${path.join(folder, profile)}`, '--window-size=1000,900', 'about:blank'],
    { stdio: ['ignore', 'ignore', 'ignore', 'pipe', 'pipe'] });
    this.ended = new Promise(resolve => this.process.on('exit', resolve));
    this.ended.then(() => { for (const { reject } of this.waiting.values()) reject(new Error('the browser has ended')); });
    this.process.stdio[3].on('error', () => {});  // said by the end of the process
    this.waiting = new Map();
    this.count = 0;
    let rest = Buffer.alloc(0);
    this.process.stdio[4].on('data', data => {
      rest = Buffer.concat([rest, data]);
      for (let end = rest.indexOf(0); end >= 0; end = rest.indexOf(0)) {
        const message = JSON.parse(rest.subarray(0, end));
        rest = rest.subarray(end + 1);
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

// Each page has a colour all over; the same ones in another order after an edit.
const script = colors => `Dim d As New PDFDocument
Dim colors() As Color = Array(${colors.join(', ')})
For Each c As Color In colors
  Dim p As Page = d.AddPage
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
  p.FillColor = c
  p.Rectangle(0, 0, p.Width, p.Height)
  p.Fill
Next
Print "pages: " + Str(colors.Count)
d.Save(New FolderItem("out.pdf"))
`;
const red = '&cFF0000', green = '&c00FF00', blue = '&c0000FF';

const watched = await WatchedScript.start(quillbar, folder, { 'script.xojo_script': script([red, green, green]) });
let browser;
try {
  browser = await Browser.start();
  const page = await browser.open(watched.address);
  const text = id => page.evaluate(
    `(element => element === null || element.hidden ? '' : element.textContent)(document.getElementById('${id}'))`);
  const shows = color => until(`the color ${color}`, async () => await page.color(500, 450) === color);

  await until('the first run', async () => (await text('state')).startsWith('ran in '));
  assert.equal(await text('script'), 'script.xojo_script');
  assert.equal(await text('output'), 'pages: 3\n');
  assert.equal(await text('errors'), '');
  await shows('ff0000');

  watched.write('script.xojo_script', script([blue, green, red]));
  await shows('0000ff');

  // The page and the zoom that were chosen stay when the document changes.
  await page.evaluate(`for (const [id, value] of [['page', '3'], ['zoom', '50']]) {
    document.getElementById(id).value = value;
    document.getElementById(id).dispatchEvent(new Event('change'));
  }`);
  await shows('ff0000');
  watched.write('script.xojo_script', script([blue, red, green, green]));
  await shows('00ff00');
  assert.match(await page.evaluate(`document.getElementById('viewer').src`), /#page=3&zoom=50&/);
  assert.equal(await text('output'), 'pages: 4\n');

  watched.write('script.xojo_script', script([blue]) + 'Print nonsense\n');
  await until('the error', async () => /script\.xojo_script:12:7: error: "nonsense" is not known/.test(await text('errors')));
  assert.match(await text('state'), /^ended with status 1 in .*earlier run$/);
  await shows('00ff00');
  watched.write('script.xojo_script', script([red, red, blue]));
  await until('the end of the error', async () => await text('errors') === '');
  await shows('0000ff');

  assert.equal(await watched.stop(), 0);
  await until('the notice of the end', async () => await text('state') === 'quillbar watch has ended');
  console.log('done');
} finally {
  watched.process.kill('SIGKILL');
  await browser?.end();
}
