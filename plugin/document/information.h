// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Document information and the viewer's opening mode.
namespace quillbar::document {

DocumentMode GetMode(PDFDocument *document);
void SetMode(PDFDocument *document, std::intptr_t parameter, DocumentMode value);

String GetAuthor(PDFDocument *document);
void SetAuthor(PDFDocument *document, std::intptr_t parameter, String value);
String GetTitle(PDFDocument *document);
void SetTitle(PDFDocument *document, std::intptr_t parameter, String value);
String GetSubject(PDFDocument *document);
void SetSubject(PDFDocument *document, std::intptr_t parameter, String value);
String GetCreator(PDFDocument *document);
void SetCreator(PDFDocument *document, std::intptr_t parameter, String value);
String GetKeyWords(PDFDocument *document);
void SetKeyWords(PDFDocument *document, std::intptr_t parameter, String value);

}  // namespace quillbar::document
