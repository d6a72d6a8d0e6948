// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// The three ways to write a document. Each call builds the whole file anew, any number of times.
namespace quillbar::document {

/// "Save(f as FolderItem)": writes the file. Nothing for Nil or for a file that exists: an existing file is
/// never overwritten. A failure is the library's (error 4119 when the file can't be opened, with the
/// system's number), and no part of a file remains.
void Save(PDFDocument *document, FolderItem *f);

/// "SaveToString() as String": the file's bytes, with no text encoding; nil when the library can't build
/// the file.
String SaveToString(PDFDocument *document);

/// "SaveToMemoryBlock() as MemoryBlock": the same in a block of just that size.
MemoryBlock *SaveToMemoryBlock(PDFDocument *document);

}  // namespace quillbar::document
