// SPDX-License-Identifier: MIT
// PDFKit: `node pdfkit.mjs text|paths PAGES plain|compressed LINES FILE` writes the document to FILE.
// Its y runs down the page.
import fs from 'node:fs';
import { peerModule } from './peer_module.mjs';

const PDFDocument = peerModule('pdfkit');
const [content, pages, compression, linesFile, file] = process.argv.slice(2);
const lines = fs.readFileSync(linesFile, 'ascii').trimEnd().split('\n');
const height = 841.89;

function writeText(document) {
  document.font('Helvetica').fontSize(10.5);
  lines.forEach((line, number) => {
    document.text(line, 56, height - 780 + number * 14.25, { lineBreak: false, baseline: 'alphabetic' });
  });
}

function writePaths(document) {
  for (let figure = 0; figure < 100; ++figure) {
    const x = 20 + (figure % 10) * 55.37;
    const y = height - 20 - Math.floor(figure / 10) * 79.91;
    const shade = figure / 100;
    document
      .strokeColor([shade * 255, 0.25 * 255, (1 - shade) * 255])
      .lineWidth(0.25 + shade)
      .moveTo(x, y)
      .lineTo(x + 41.5, y - 3.25)
      .lineTo(x + 38.125, y - 61.75)
      .bezierCurveTo(x + 30.1, y - 70.2, x + 12.3, y - 66.4, x + 5.5, y - 40.6)
      .bezierCurveTo(x + 1.7, y - 30.8, x - 3.9, y - 11.1, x, y)
      .stroke();
    document.rect(x + 8, y - 9 - 33.3, 21.7, 33.3).stroke();
  }
}

const document = new PDFDocument({
  size: 'A4',
  margin: 0,
  autoFirstPage: false,
  compress: compression === 'compressed',
});
document.pipe(fs.createWriteStream(file));
for (let page = 0; page < Number(pages); ++page) {
  document.addPage();
  if (content === 'text') writeText(document);
  else writePaths(document);
}
document.end();
