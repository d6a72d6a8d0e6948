#pragma once

#include "plugin/bridge/script_types.h"

/// `Outline`: an entry of the document's tree of bookmarks.
namespace quillbar::outline {

void Initialize(Object outline);
void Finalize(Object outline);
void Constructor(Outline *outline);

Outline *CreateOutline(PDFDocument *document, Outline *parentOutLine, String title);

Boolean GetOpened(Outline *outline);
void SetOpened(Outline *outline, std::intptr_t parameter, Boolean value);
void SetDestination(Outline *outline, Destination *target);

}  // namespace quillbar::outline
