#pragma once

#include "plugin/bridge/script_types.h"

/// `ExtendedGraphicsState`: opacity and blend mode.
namespace quillbar::extended_graphics_state {

void Initialize(Object state);
void Finalize(Object state);
void Constructor(ExtendedGraphicsState *state);

ExtendedGraphicsState *CreateExtendedGraphicsState(PDFDocument *document);

void SetAlphaFill(ExtendedGraphicsState *state, Single value);
void SetAlphaStroke(ExtendedGraphicsState *state, Single value);
void SetBlendMode(ExtendedGraphicsState *state, BlendMode value);

/// "SetExtendedState(state as ExtendedGraphicsState)" of `Page`.
void SetExtendedState(Page *page, ExtendedGraphicsState *state);

}  // namespace quillbar::extended_graphics_state
