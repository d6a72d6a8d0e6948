// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `PDFDocument`: from its creation to its destruction.
namespace quillbar::document {

/// Class constructor: creates the library's document, uncompressed, with UTF-8 as its current encoder.
void Initialize(Object document);

/// Class destructor: frees the library's document and with it every library object. Whatever was made
/// from the document keeps it alive, so nothing refers to it any more.
void Finalize(Object document);

/// "Constructor()": the class constructor has done everything.
void Constructor(PDFDocument *document);

/// "Constructor(compressor as CompressorHandle)": takes over the compressor's entry points, for all
/// documents, and switches this document's compression on if there are all three. Nothing with Nil.
void ConstructorWithCompressor(PDFDocument *document, CompressorHandle *compressor);

/// "AddPage() as Page": appends a page of the library's default size.
Page *AddPage(PDFDocument *document);

}  // namespace quillbar::document
