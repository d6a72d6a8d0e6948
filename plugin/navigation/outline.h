// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `Outline`: an entry of the document's tree of bookmarks.
namespace quillbar::outline {

/// Class constructor: no document.
void Initialize(Object outline);
/// Class destructor: lets the document go. The library's entry belongs to its document.
void Finalize(Object outline);
/// "Constructor()": an entry that belongs to no document.
void Constructor(Outline *outline);

/// "CreateOutline(parentOutLine as Outline, title as String) as Outline" of `PDFDocument`: the last entry
/// below the parent, or at the top level without one. Nil for a nil title and for a parent of another
/// document. When the library refuses the entry (a title of more than 65,535 bytes), the object stands for no
/// entry.
Outline *CreateOutline(PDFDocument *document, Outline *parentOutLine, String title);

/// `Opened`: whether viewers show the entries below from the start. True for a new entry.
Boolean GetOpened(Outline *outline);
void SetOpened(Outline *outline, std::intptr_t parameter, Boolean value);

/// "SetDestination(target as Destination)": where the entry leads. Nothing for Nil or for a destination of
/// another document.
void SetDestination(Outline *outline, Destination *target);

}  // namespace quillbar::outline
