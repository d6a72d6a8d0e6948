// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `Page`: pages are made by `PDFDocument.AddPage`.
namespace quillbar::page {

/// Class constructor: no document, no font, coordinates as in PDF.
void Initialize(Object page);

/// Class destructor: lets the document go, then the fonts, which have locks of their own on it. The library's
/// page belongs to its document.
void Finalize(Object page);

}  // namespace quillbar::page
