// SPDX-License-Identifier: MIT
#include "plugin/document/information.h"

#include "binding/host_strings.h"
#include "binding/owned.h"
#include "plugin/guard/library_call.h"
#include "plugin/script/document_data.h"

namespace quillbar::document {

// The library's functions for these entries look into the document without asking whether there is one; after a failed
// creation there is none.

String InformationOf(PDFDocument *document, HPDF_InfoType entry) {
  const HPDF_Doc libraryDocument = HandleOf(document);
  return BuildText(libraryDocument != nullptr ? Call<HPDF_GetInfoAttr>(libraryDocument, entry) : nullptr);
}

void SetInformationOf(PDFDocument *document, HPDF_InfoType entry, String value) {
  const HPDF_Doc libraryDocument = HandleOf(document);
  const StringData text(value, TextEncoding::kUtf8);
  if (text && libraryDocument != nullptr) Call<HPDF_SetInfoAttr>(libraryDocument, entry, text.bytes());
}

}  // namespace quillbar::document
