// SPDX-License-Identifier: MIT
// node browser_test.mjs QUILLBAR FOLDER CHROMIUM: the page of `quillbar watch` in a browser: the document appears, an edit
// shows, an error shows and goes, and page and zoom stay.
import assert from 'node:assert/strict';
import { Browser } from '../../support/browser.mjs';
import { WatchedScript, until } from './watched_script.mjs';

const [quillbar, folder, chromium] = process.argv.slice(2);

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
  browser = await Browser.start(chromium, folder);
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
