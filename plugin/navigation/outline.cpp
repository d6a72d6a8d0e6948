#include "plugin/navigation/outline.h"

#include "plugin/document/owned_by_document.h"
#include "plugin/navigation/outline_data.h"

namespace quillbar::outline {

void Initialize(Object object) { DataOf(static_cast<Outline *>(object)).document = nullptr; }

void Finalize(Object object) { Let(DataOf(static_cast<Outline *>(object)).document); }

void Constructor(Outline *outline) { DataOf(outline).document = nullptr; }

Outline *CreateOutline(PDFDocument *, Outline *, String) { return nullptr; }

Boolean GetOpened(Outline *) { return 0; }

void SetOpened(Outline *, std::intptr_t, Boolean) {}

void SetDestination(Outline *, Destination *) {}

}  // namespace quillbar::outline
