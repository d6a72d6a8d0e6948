// SPDX-License-Identifier: MIT
// pdf-lib: `node pdf_lib.mjs text|paths PAGES compressed LINES FILE` writes the document to FILE. Its content streams are
// always compressed; paths are written with its operators, the only way to set a path that isn't SVG text.
import fs from 'node:fs';
import { peerModule } from './peer_module.mjs';

const { PDFDocument, StandardFonts, PageSizes, ...operators } = peerModule('pdf-lib');
const { setStrokingRgbColor, setLineWidth, moveTo, lineTo, appendBezierCurve, rectangle, stroke } = operators;
const [content, pages, compression, linesFile, file] = process.argv.slice(2);
if (compression !== 'compressed') throw new Error('pdf-lib only writes compressed pages');
const text = fs.readFileSync(linesFile, 'ascii').trimEnd();

function writePaths(page) {
  for (let figure = 0; figure < 100; ++figure) {
    const x = 20 + (figure % 10) * 55.37;
    const y = 20 + Math.floor(figure / 10) * 79.91;
    const shade = figure / 100;
    page.pushOperators(
      setStrokingRgbColor(shade, 0.25, 1 - shade),
      setLineWidth(0.25 + shade),
      moveTo(x, y),
      lineTo(x + 41.5, y + 3.25),
      lineTo(x + 38.125, y + 61.75),
      appendBezierCurve(x + 30.1, y + 70.2, x + 12.3, y + 66.4, x + 5.5, y + 40.6),
      appendBezierCurve(x + 1.7, y + 30.8, x - 3.9, y + 11.1, x, y),
      stroke(),
      rectangle(x + 8, y + 9, 21.7, 33.3),
      stroke(),
    );
  }
}

const document = await PDFDocument.create();
const font = await document.embedFont(StandardFonts.Helvetica);
for (let number = 0; number < Number(pages); ++number) {
  const page = document.addPage(PageSizes.A4);
  if (content === 'text') page.drawText(text, { x: 56, y: 780, size: 10.5, font, lineHeight: 14.25 });
  else writePaths(page);
}
fs.writeFileSync(file, await document.save());
