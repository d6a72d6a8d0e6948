// SPDX-License-Identifier: MIT
// node site_test.mjs SITE DESCRIPTION CHROMIUM FOLDER: the documentation's site, opened from the disk in a browser. Links
// and pictures lead somewhere, the search finds each member that DESCRIPTION names (what `quillbar describe --json` prints)
// and each that a page of the script language declares, no page reports an error, and none scrolls sideways on a screen of
// 320 pixels, in the light or in the dark.
import assert from 'node:assert/strict';
import { existsSync, readFileSync, readdirSync } from 'node:fs';
import path from 'node:path';
import { setTimeout as sleep } from 'node:timers/promises';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { Browser } from '../support/browser.mjs';

const [site, description, chromium, folder] = process.argv.slice(2);
const failures = [];
const pages = readdirSync(site, { recursive: true }).filter(name => name.endsWith('.html')).sort();
assert(pages.length > 10, 'the site has hardly any pages');

/** The names of all members that scripts can use: those of the plugins, and what the language's pages declare. */
function memberNames() {
  const { modules, classes } = JSON.parse(readFileSync(description, 'utf8'));
  const names = new Set();
  for (const { name, properties, methods, events, enumerations } of [...modules.flatMap(module => module.classes), ...classes]) {
    names.add(name);
    for (const member of [...properties, ...methods, ...events]) names.add(member.name);
    for (const enumeration of enumerations) {
      names.add(enumeration.name);
      for (const member of enumeration.members) names.add(member.name);
    }
  }
  const language = fileURLToPath(new URL('../../docs/language/', import.meta.url));
  for (const page of readdirSync(language)) {
    const blocks = readFileSync(path.join(language, page), 'utf8').matchAll(/^```declaration\n([^]*?)^```/gm);
    for (const [, lines] of blocks) {
      for (const line of lines.trim().split('\n')) names.add(line.match(/^(?:New |Enum )?([\w.]+)/)[1].split('.').pop());
    }
  }
  return [...names];
}

const browser = await Browser.start(chromium, folder);
try {
  const tab = await browser.open('about:blank');
  for (const domain of ['Page', 'Runtime', 'Log']) await browser.send(`${domain}.enable`, {}, tab.session);
  const show = async name => {
    const url = pathToFileURL(path.join(path.resolve(site), name)).href;
    await browser.send('Page.navigate', { url }, tab.session);
    for (let wait = 0; wait < 400; ++wait) {
      if (await tab.evaluate(`location.href === ${JSON.stringify(url)} && document.readyState === 'complete'`)) return;
      await sleep(25);
    }
    throw new Error(`${name} wasn't loaded`);
  };

  const anchors = new Map();  // the anchors of each page, and the links that want them
  const links = [];
  for (const scheme of ['light', 'dark']) {
    await browser.send('Emulation.setEmulatedMedia', { features: [{ name: 'prefers-color-scheme', value: scheme }] }, tab.session);
    await browser.send('Emulation.setDeviceMetricsOverride',
      { width: 320, height: 640, deviceScaleFactor: 1, mobile: true }, tab.session);
    for (const name of scheme === 'light' ? pages : ['index.html']) {
      await show(name);
      const page = await tab.evaluate(`({
        width: Math.max(document.documentElement.scrollWidth, document.body.scrollWidth),
        pictures: [...document.images].filter(image => !image.complete || image.naturalWidth === 0).map(image => image.src),
        links: [...document.links].map(link => link.href),
        anchors: [...document.querySelectorAll('[id]')].map(element => element.id),
        background: getComputedStyle(document.body).backgroundColor,
      })`);
      if (page.width > 320) failures.push(`${name} is ${page.width} pixels wide`);
      for (const picture of page.pictures) failures.push(`${name} shows no ${picture}`);
      const brightness = page.background.match(/\d+/g).slice(0, 3).reduce((sum, part) => sum + Number(part), 0);
      if ((brightness > 384) !== (scheme === 'light')) failures.push(`${name} has the background ${page.background} in the ${scheme}`);
      anchors.set(name, new Set(page.anchors));
      for (const link of page.links) links.push([name, link]);
    }
  }
  for (const [name, link] of links) {
    if (!link.startsWith('file:')) continue;
    const { pathname, hash } = new URL(link);
    const file = fileURLToPath(`file://${pathname}`);
    const target = path.relative(path.resolve(site), file);
    if (!existsSync(file)) failures.push(`${name} links to ${link}, which isn't there`);
    else if (hash.length > 1 && !anchors.get(target)?.has(decodeURIComponent(hash.slice(1)))) {
      failures.push(`${name} links to ${link}, a place that isn't there`);
    }
  }

  await show('search.html');
  for (let wait = 0; !await tab.evaluate('Search.hasIndex()'); ++wait) {
    assert(wait < 400, "the search index wasn't loaded");
    await sleep(25);
  }
  const names = memberNames();
  assert(names.length > 400, 'hardly any member is described');
  // The page shows its results one after the other, the first one at once.
  const lost = await tab.evaluate(`${JSON.stringify(names)}.filter(name => {
    document.getElementById('search-results').textContent = '';
    Search.performSearch(name);
    return document.querySelector('#search-results li') === null;
  })`);
  for (const name of lost) failures.push(`the search doesn't find ${name}`);

  for (const { method, params } of browser.events) {
    if (method === 'Runtime.exceptionThrown') failures.push(`an error: ${params.exceptionDetails.text}`);
    if (method === 'Runtime.consoleAPICalled' && params.type === 'error') failures.push(`an error: ${JSON.stringify(params.args)}`);
    if (method === 'Log.entryAdded' && params.entry.level === 'error') failures.push(`an error: ${params.entry.text} ${params.entry.url ?? ''}`);
  }
  for (const failure of failures) console.log(failure);
  process.exitCode = failures.length === 0 ? 0 : 1;
  console.log(`${pages.length} pages, ${links.length} links, ${names.length} names of members, ${failures.length} failures`);
} finally {
  await browser.end();
}
