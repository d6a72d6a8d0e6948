// Prints the text of a PDF file as pdf.js, Firefox's and many applications' reader, copies it: one line for each run.
// Usage: node pdfjs_text.mjs FOLDER-OF-pdfjs-dist FILE
import { readFileSync } from 'node:fs';
import { pathToFileURL } from 'node:url';

const [library, file] = process.argv.slice(2);
const { getDocument, VerbosityLevel } = await import(pathToFileURL(`${library}/legacy/build/pdf.mjs`));
const document = await getDocument({
  data: new Uint8Array(readFileSync(file)),
  cMapUrl: `${library}/cmaps/`,
  cMapPacked: true,
  standardFontDataUrl: `${library}/standard_fonts/`,
  verbosity: VerbosityLevel.WARNINGS,
}).promise;
for (let number = 1; number <= document.numPages; ++number) {
  const page = await document.getPage(number);
  // Also loads the fonts, whose faults are warnings.
  await page.getOperatorList();
  for (const item of (await page.getTextContent()).items) {
    if (item.str) console.log(item.str);
  }
}
