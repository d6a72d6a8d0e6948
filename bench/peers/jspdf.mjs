// SPDX-License-Identifier: MIT
// jsPDF: `node jspdf.mjs text|paths PAGES plain|compressed LINES FILE` writes the document to FILE.
// Its y runs down the page.
import fs from 'node:fs';
import { peerModule } from './peer_module.mjs';

const { jsPDF } = peerModule('jspdf');
const [content, pages, compression, linesFile, file] = process.argv.slice(2);
const lines = fs.readFileSync(linesFile, 'ascii').trimEnd().split('\n');
const height = 841.89;

function writeText(document) {
  document.setFont('helvetica', 'normal');
  document.setFontSize(10.5);
  document.text(lines, 56, height - 780, { lineHeightFactor: 14.25 / 10.5 });
}

function writePaths(document) {
  for (let figure = 0; figure < 100; ++figure) {
    const x = 20 + (figure % 10) * 55.37;
    const y = height - 20 - Math.floor(figure / 10) * 79.91;
    const shade = figure / 100;
    document.setDrawColor(shade * 255, 0.25 * 255, (1 - shade) * 255);
    document.setLineWidth(0.25 + shade);
    document.moveTo(x, y);
    document.lineTo(x + 41.5, y - 3.25);
    document.lineTo(x + 38.125, y - 61.75);
    document.curveTo(x + 30.1, y - 70.2, x + 12.3, y - 66.4, x + 5.5, y - 40.6);
    document.curveTo(x + 1.7, y - 30.8, x - 3.9, y - 11.1, x, y);
    document.stroke();
    document.rect(x + 8, y - 9 - 33.3, 21.7, 33.3);
  }
}

const document = new jsPDF({ unit: 'pt', format: 'a4', compress: compression === 'compressed' });
for (let page = 0; page < Number(pages); ++page) {
  if (page > 0) document.addPage();
  if (content === 'text') writeText(document);
  else writePaths(document);
}
fs.writeFileSync(file, Buffer.from(document.output('arraybuffer')));
