// SPDX-License-Identifier: MIT
// Draws the first page of a PDF file with PDFium and prints the picture as a portable graymap.
// Usage: node draw_with_pdfium.mjs FOLDER-OF-READERS DOTS-PER-INCH FILE
import { readFileSync, writeSync } from 'node:fs';
import { pathToFileURL } from 'node:url';

const [readers, resolution, file] = process.argv.slice(2);
const { PDFiumLibrary } = await import(pathToFileURL(`${readers}/pdfium/dist/index.esm.js`));
const c = (await PDFiumLibrary.init()).module;

const gray = 1; // FPDFBitmap_Gray
const asGrayscale = 8; // FPDF_GRAYSCALE

const bytes = readFileSync(file);
const place = c.wasmExports.malloc(bytes.length);
c.HEAPU8.set(bytes, place);
const document = c._FPDF_LoadMemDocument(place, bytes.length, 0);
if (!document) throw new Error(`PDFium refuses ${file}: error ${c._FPDF_GetLastError()}`);
const page = c._FPDF_LoadPage(document, 0);
if (!page) throw new Error(`PDFium refuses the first page of ${file}`);
const scale = resolution / 72;
const width = Math.round(c._FPDF_GetPageWidth(page) * scale);
const height = Math.round(c._FPDF_GetPageHeight(page) * scale);
const bitmap = c._FPDFBitmap_CreateEx(width, height, gray, 0, 0);
c._FPDFBitmap_FillRect(bitmap, 0, 0, width, height, 0xFFFFFFFF);
c._FPDF_RenderPageBitmap(bitmap, page, 0, 0, width, height, 0, asGrayscale);
const rows = c._FPDFBitmap_GetBuffer(bitmap);
const stride = c._FPDFBitmap_GetStride(bitmap);
const picture = [Buffer.from(`P5\n${width} ${height}\n255\n`)];
for (let row = 0; row < height; ++row)
  picture.push(Buffer.from(c.HEAPU8.slice(rows + row * stride, rows + row * stride + width)));
// A pipe may take less than everything at once.
for (let rest = Buffer.concat(picture); rest.length;) rest = rest.subarray(writeSync(1, rest));
