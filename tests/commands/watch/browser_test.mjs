// SPDX-License-Identifier: MIT
// node browser_test.mjs QUILLBAR FOLDER CHROMIUM: the page of `quillbar watch` in a browser: the document appears, an edit
// shows, an error shows and goes, and page and zoom stay.
//
// The browser is driven through its own protocol over two pipes, which needs nothing beside Node.js.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import path from 'node:path';
import { WatchedScript, until } from './watched_script.mjs';

const [quillbar, folder, chromium] = process.argv.slice(2);

class Browser {
  constructor() {
    this.process = spawn(chromium, ['--headless', '--remote-debugging-pipe', '--no-sandbox', '--disable-gpu',
      '--disable-quic', '--no-first-run', '--disable-background-networking', '--disable-component-update',
      '--disable-sync', `--user-data-dir=${path.join(folder, 'profile')}`, '--window-size=1000,900', 'about:blank'],
    { stdio: ['ignore', 'ignore', 'ignore', 'pipe', 'pipe'] });
    this.ended = new Promise(resolve => this.process.on('exit', resolve));
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

  send(method, params = {}, sessionId = undefined) {
    const id = ++this.count;
    this.process.stdio[3].write(JSON.stringify({ id, method, params, sessionId }) + '\0');
    return new Promise((resolve, reject) => this.waiting.set(id, { resolve, reject }));
  }

  async open(url) {
    const { targetId } = await this.send('Target.createTarget', { url });
    const { sessionId } = await this.send('Target.attachToTarget', { targetId, flatten: true });
    return new Tab(this, sessionId);
  }
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

  async screenshot() {
    return (await this.browser.send('Page.captureScreenshot', { format: 'png' }, this.session)).data;
  }
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
const browser = new Browser();
try {
  // In this order: a tab behind another one isn't painted.
  const canvas = await browser.open('about:blank');
  const page = await browser.open(watched.address);
  const text = id => page.evaluate(
    `(element => element === null || element.hidden ? '' : element.textContent)(document.getElementById('${id}'))`);

  /** The colour that most of the viewer's middle has, as RRGGBB. */
  const shownColor = async () => canvas.evaluate(`(async () => {
    const image = new Image();
    image.src = 'data:image/png;base64,${await page.screenshot()}';
    await image.decode();
    const canvas = document.createElement('canvas');
    canvas.width = image.width; canvas.height = image.height;
    const context = canvas.getContext('2d');
    context.drawImage(image, 0, 0);
    const [r, g, b] = context.getImageData(image.width / 2, image.height / 2, 1, 1).data;
    return [r, g, b].map(one => one.toString(16).padStart(2, '0')).join('');
  })()`);
  const shows = color => until(`the color ${color}`, async () => await shownColor() === color);

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
  browser.process.kill('SIGKILL');
  await browser.ended;
}
