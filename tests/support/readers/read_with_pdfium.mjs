// SPDX-License-Identifier: MIT
// Reads PDF files with PDFium and prints what it found in the form that document_readers.h describes.
// Usage: node read_with_pdfium.mjs FOLDER-OF-READERS FILE…
import { readFileSync } from 'node:fs';
import { pathToFileURL } from 'node:url';

const [readers, ...files] = process.argv.slice(2);
const { PDFiumLibrary } = await import(pathToFileURL(`${readers}/pdfium/dist/index.esm.js`));
const library = await PDFiumLibrary.init();
// The wrapper's own classes know text and pictures only; these are PDFium's functions in C.
const c = library.module;

const uri = 3; // PDFACTION_URI
const kinds = { 1: 'Text', 2: 'Link', 3: 'FreeText', 4: 'Line', 5: 'Square', 6: 'Circle', 9: 'Highlight', 10: 'Underline',
  11: 'Squiggly', 12: 'StrikeOut', 13: 'Stamp', 15: 'Ink', 16: 'Popup' };

// Calls `use` with the address of so many bytes of PDFium's memory.
function withMemory(size, use) {
  const place = c.wasmExports.malloc(size);
  try {
    return use(place);
  } finally {
    c.wasmExports.free(place);
  }
}

const withKey = (key, use) => withMemory(key.length + 1, (place) => {
  c.HEAPU8.set([...Buffer.from(key), 0], place);
  return use(place);
});

// The answer of a function that fills a buffer with a text and a zero after it, and returns its length in bytes.
function stringFrom(fill, encoding, zero) {
  const size = fill(0, 0);
  if (size <= zero) return '';
  return withMemory(size, (place) => {
    fill(place, size);
    return new TextDecoder(encoding, { ignoreBOM: true }).decode(c.HEAPU8.slice(place, place + size - zero));
  });
}
const wideString = (fill) => stringFrom(fill, 'utf-16le', 2);
const byteString = (fill) => stringFrom(fill, 'utf-8', 1);

// The page that a destination leads to, counted from 1; 0 without one.
const pageOf = (document, destination) => (destination ? c._FPDFDest_GetDestPageIndex(document, destination) + 1 : 0);

function bookmarksOf(document, parent) {
  const bookmarks = [];
  for (let item = c._FPDFBookmark_GetFirstChild(document, parent); item; item = c._FPDFBookmark_GetNextSibling(document, item)) {
    bookmarks.push({
      title: wideString((place, size) => c._FPDFBookmark_GetTitle(item, place, size)),
      page: pageOf(document, c._FPDFBookmark_GetDest(document, item)),
      children: bookmarksOf(document, item),
    });
  }
  return bookmarks;
}

function annotationsOf(document, page) {
  const annotations = [];
  for (let index = 0; index < c._FPDFPage_GetAnnotCount(page); ++index) {
    const item = c._FPDFPage_GetAnnot(page, index);
    const link = c._FPDFAnnot_GetLink(item);
    const action = link && c._FPDFLink_GetAction(link);
    const isAddress = action && c._FPDFAction_GetType(action) === uri;
    const subtype = c._FPDFAnnot_GetSubtype(item);
    annotations.push({
      kind: kinds[subtype] ?? String(subtype),
      contents: withKey('Contents', (key) =>
        wideString((place, size) => c._FPDFAnnot_GetStringValue(item, key, place, size))),
      address: isAddress ? byteString((place, size) => c._FPDFAction_GetURIPath(document, action, place, size)) : '',
      page: link ? pageOf(document, c._FPDFLink_GetDest(document, link)) : 0,
    });
    c._FPDFPage_CloseAnnot(item);
  }
  return annotations;
}

function textOf(page) {
  const text = c._FPDFText_LoadPage(page);
  const count = c._FPDFText_CountChars(text);
  // A character takes up to two units of UTF-16.
  const found = count <= 0 ? '' : withMemory(4 * count + 2, (place) => {
    const units = c._FPDFText_GetText(text, 0, count, place);
    return new TextDecoder('utf-16le', { ignoreBOM: true }).decode(c.HEAPU8.slice(place, place + 2 * (units - 1)));
  });
  c._FPDFText_ClosePage(text);
  return found;
}

function read(file) {
  const bytes = readFileSync(file);
  return withMemory(bytes.length, (place) => {
    c.HEAPU8.set(bytes, place);
    const document = c._FPDF_LoadMemDocument(place, bytes.length, 0);
    if (!document) throw new Error(`PDFium refuses ${file}: error ${c._FPDF_GetLastError()}`);
    const pages = [];
    for (let index = 0; index < c._FPDF_GetPageCount(document); ++index) {
      const page = c._FPDF_LoadPage(document, index);
      if (!page) throw new Error(`PDFium refuses page ${index + 1} of ${file}`);
      pages.push({ text: textOf(page), annotations: annotationsOf(document, page) });
      c._FPDF_ClosePage(page);
    }
    const information = {};
    for (const key of ['Title', 'Author', 'Subject', 'Keywords', 'Creator', 'Producer', 'CreationDate', 'ModDate']) {
      const value = withKey(key, (name) => wideString((to, size) => c._FPDF_GetMetaText(document, name, to, size)));
      if (value) information[key] = value;
    }
    const bookmarks = bookmarksOf(document, 0);
    c._FPDF_CloseDocument(document);
    return { pages, information, bookmarks, warnings: [] };
  });
}

process.stdout.write(JSON.stringify(files.map(read)));
