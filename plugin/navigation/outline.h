// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `Outline`: an entry of the document's tree of bookmarks.
namespace quillbar::outline {

/// "CreateOutline(parentOutLine as Outline, title as String) as Outline" of `PDFDocument`: the last entry
/// below the parent, or at the top level without one. Nil for a nil title and for a parent of another
/// document. When the library refuses the entry (a title of more than 65,535 bytes), the object has no
/// entry.
Outline *CreateOutline(PDFDocument *document, Outline *parentOutLine, String title);

/// "SetDestination(target as Destination)": where the entry leads. Nothing for Nil or for a destination of
/// another document.
void SetDestination(Outline *outline, Destination *target);

}  // namespace quillbar::outline
