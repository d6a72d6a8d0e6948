// Reads PDF files with MuPDF and prints what it found in the form that document_readers.h describes.
// Usage: mutool run read_with_mupdf.js FILE…

// MuPDF reports errors on standard error, which the caller looks at. Where its members have changed, those of 1.25 stand
// before those of 1.21.
var keys = ['Title', 'Author', 'Subject', 'Keywords', 'Creator', 'Producer', 'CreationDate', 'ModDate'];

// The page that an address inside the document leads to, counted from 1; 0 for one outside.
function pageOf(document, address) {
  if (!address || address[0] !== '#') return 0;
  var destination = document.resolveLink(address);
  return (typeof destination === 'number' ? destination : destination.page) + 1;
}

function bookmarksOf(document, items) {
  return (items || []).map(function (item) {
    return { title: item.title, page: pageOf(document, item.uri), children: bookmarksOf(document, item.down) };
  });
}

function annotationsOf(document, page) {
  var notes = page.getAnnotations().map(function (item) {
    return { kind: item.getType(), contents: item.getContents(), address: '', page: 0 };
  });
  var links = page.getLinks().map(function (item) {
    var address = item.getURI ? item.getURI() : item.uri;
    var number = pageOf(document, address);
    return { kind: 'Link', contents: '', address: number ? '' : address, page: number };
  });
  return notes.concat(links);
}

// MuPDF's JavaScript has no characters above U+FFFF here: they come as U+FFFD.
function textOf(page) {
  var lines = [];
  page.toStructuredText().walk({
    beginLine: function () { lines.push(''); },
    onChar: function (character) { lines[lines.length - 1] += character; },
  });
  return lines.join('\n');
}

function read(file) {
  var document = Document.openDocument ? Document.openDocument(file) : new Document(file);
  var pages = [], information = {};
  for (var index = 0; index < document.countPages(); ++index) {
    var page = document.loadPage(index);
    pages.push({ text: textOf(page), annotations: annotationsOf(document, page) });
  }
  keys.forEach(function (key) {
    var value = document.getMetaData('info:' + key);
    if (value) information[key] = value;
  });
  return { pages: pages, information: information, bookmarks: bookmarksOf(document, document.loadOutline()), warnings: [] };
}

print(JSON.stringify(scriptArgs.map(read)));
