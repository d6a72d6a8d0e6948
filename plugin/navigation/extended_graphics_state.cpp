#include "plugin/navigation/extended_graphics_state.h"

#include "plugin/document/owned_by_document.h"
#include "plugin/navigation/extended_graphics_state_data.h"

namespace quillbar::extended_graphics_state {

void Initialize(Object object) { DataOf(static_cast<ExtendedGraphicsState *>(object)).document = nullptr; }

void Finalize(Object object) { Let(DataOf(static_cast<ExtendedGraphicsState *>(object)).document); }

void Constructor(ExtendedGraphicsState *state) { DataOf(state).document = nullptr; }

ExtendedGraphicsState *CreateExtendedGraphicsState(PDFDocument *) { return nullptr; }

void SetAlphaFill(ExtendedGraphicsState *, Single) {}

void SetAlphaStroke(ExtendedGraphicsState *, Single) {}

void SetBlendMode(ExtendedGraphicsState *, BlendMode) {}

void SetExtendedState(Page *, ExtendedGraphicsState *) {}

}  // namespace quillbar::extended_graphics_state
