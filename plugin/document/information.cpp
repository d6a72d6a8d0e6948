// SPDX-License-Identifier: MIT
#include "plugin/document/information.h"

#include "binding/host_strings.h"
#include "binding/owned.h"
#include "plugin/guard/library_call.h"
#include "plugin/guard/library_value.h"
#include "plugin/script/document_data.h"

namespace quillbar::document {

namespace {

// The library's functions for these entries look into the document without asking whether there is one, as
// all others do; after a failed creation there is none.

/// An information entry as a string; the empty one when the entry was never set.
String GetEntry(PDFDocument *document, HPDF_InfoType type) {
  const HPDF_Doc libraryDocument = DataOf(document).libraryDocument;
  return BuildText(libraryDocument != nullptr ? Call<HPDF_GetInfoAttr>(libraryDocument, type) : nullptr);
}

/// Sets an information entry; a nil string changes nothing.
void SetEntry(PDFDocument *document, HPDF_InfoType type, String value) {
  const HPDF_Doc libraryDocument = DataOf(document).libraryDocument;
  const StringData text(value, TextEncoding::kUtf8);
  if (text && libraryDocument != nullptr) Call<HPDF_SetInfoAttr>(libraryDocument, type, text.bytes());
}

}  // namespace

DocumentMode GetMode(PDFDocument *document) {
  return static_cast<DocumentMode>(Call<HPDF_GetPageMode>(DataOf(document).libraryDocument));
}

void SetMode(PDFDocument *document, std::intptr_t, DocumentMode value) {
  Call<HPDF_SetPageMode>(DataOf(document).libraryDocument, ToLibrary<HPDF_PageMode>(value));
}

String GetAuthor(PDFDocument *document) { return GetEntry(document, HPDF_INFO_AUTHOR); }
String GetTitle(PDFDocument *document) { return GetEntry(document, HPDF_INFO_TITLE); }
String GetSubject(PDFDocument *document) { return GetEntry(document, HPDF_INFO_SUBJECT); }
String GetCreator(PDFDocument *document) { return GetEntry(document, HPDF_INFO_CREATOR); }
String GetKeyWords(PDFDocument *document) { return GetEntry(document, HPDF_INFO_KEYWORDS); }

void SetAuthor(PDFDocument *document, std::intptr_t, String value) { SetEntry(document, HPDF_INFO_AUTHOR, value); }
void SetTitle(PDFDocument *document, std::intptr_t, String value) { SetEntry(document, HPDF_INFO_TITLE, value); }
void SetSubject(PDFDocument *document, std::intptr_t, String value) { SetEntry(document, HPDF_INFO_SUBJECT, value); }
void SetCreator(PDFDocument *document, std::intptr_t, String value) { SetEntry(document, HPDF_INFO_CREATOR, value); }
void SetKeyWords(PDFDocument *document, std::intptr_t, String value) { SetEntry(document, HPDF_INFO_KEYWORDS, value); }

}  // namespace quillbar::document
