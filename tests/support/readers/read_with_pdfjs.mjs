// SPDX-License-Identifier: MIT
// Reads PDF files with pdf.js and prints what it found in the form that document_readers.h describes.
// Usage: node read_with_pdfjs.mjs FOLDER-OF-READERS FILE…
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { pathToFileURL } from 'node:url';

// pdf.js reports errors on the console, and of a drawing library that it misses, which only rendering needs.
let warnings = [];
const note = (...words) => {
  const text = words.join(' ');
  if (!/Cannot (load "@napi-rs|polyfill)/.test(text)) warnings.push(text);
};
console.log = console.warn = console.error = note;

// pdf.js reads its fonts through a function that Node.js has from version 20.16 on.
process.getBuiltinModule ??= createRequire(import.meta.url);

const [readers, ...files] = process.argv.slice(2);
const library = `${readers}/pdfjs`;
const { getDocument, VerbosityLevel } = await import(pathToFileURL(`${library}/legacy/build/pdf.mjs`));

// The page that a destination leads to, counted from 1; 0 without one.
async function pageOf(document, destination) {
  const place = typeof destination === 'string' ? await document.getDestination(destination) : destination;
  return place ? (await document.getPageIndex(place[0])) + 1 : 0;
}

async function bookmarksOf(document, items) {
  const bookmarks = [];
  for (const item of items ?? []) {
    bookmarks.push({
      title: item.title,
      page: await pageOf(document, item.dest),
      children: await bookmarksOf(document, item.items),
    });
  }
  return bookmarks;
}

async function annotationsOf(document, page) {
  const annotations = [];
  for (const item of await page.getAnnotations()) {
    annotations.push({
      kind: item.subtype,
      contents: item.contentsObj?.str ?? '',
      // What a click opens, with the bytes outside ASCII escaped; without it, what pdf.js refuses to open.
      address: item.url ?? item.unsafeUrl ?? '',
      page: await pageOf(document, item.dest),
    });
  }
  return annotations;
}

async function read(file) {
  warnings = [];
  const document = await getDocument({
    data: new Uint8Array(readFileSync(file)),
    cMapUrl: `${library}/cmaps/`,
    cMapPacked: true,
    standardFontDataUrl: `${library}/standard_fonts/`,
    verbosity: VerbosityLevel.WARNINGS,
  }).promise;
  const { info } = await document.getMetadata();
  const information = {};
  for (const [key, value] of Object.entries(info)) {
    if (typeof value === 'string') information[key] = value;
  }
  const pages = [];
  for (let number = 1; number <= document.numPages; ++number) {
    const page = await document.getPage(number);
    // This loads the fonts too, whose errors are warnings. Unless told not to, pdf.js puts other characters in the place
    // of ligatures, the micro sign and the like.
    const { items } = await page.getTextContent({ disableNormalization: true });
    pages.push({
      text: items.map((item) => item.str + (item.hasEOL ? '\n' : '')).join(''),
      annotations: await annotationsOf(document, page),
    });
  }
  const bookmarks = await bookmarksOf(document, await document.getOutline());
  await document.destroy();
  return { pages, information, bookmarks, warnings };
}

const documents = [];
for (const file of files) documents.push(await read(file));
process.stdout.write(JSON.stringify(documents));
