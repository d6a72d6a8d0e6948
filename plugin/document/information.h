// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "plugin/script/script_types.h"

/// The entries of the document information that are texts.
namespace quillbar::document {

/// An information entry as a string; the empty one when the entry was never set.
String InformationOf(PDFDocument *document, HPDF_InfoType entry);

/// Sets an information entry; a nil string changes nothing.
void SetInformationOf(PDFDocument *document, HPDF_InfoType entry, String value);

/// The functions of a property that is such an entry.
template <HPDF_InfoType Entry>
String GetInformation(PDFDocument *document) {
  return InformationOf(document, Entry);
}
template <HPDF_InfoType Entry>
void SetInformation(PDFDocument *document, std::intptr_t, String value) {
  SetInformationOf(document, Entry, value);
}

}  // namespace quillbar::document
