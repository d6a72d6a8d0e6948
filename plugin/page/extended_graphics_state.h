// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `ExtendedGraphicsState`: how a document makes one and a page uses it.
namespace quillbar::extended_graphics_state {

/// "CreateExtendedGraphicsState() as ExtendedGraphicsState" of `PDFDocument`: a state that changes nothing yet.
ExtendedGraphicsState *CreateExtendedGraphicsState(PDFDocument *document);

/// "SetExtendedState(state as ExtendedGraphicsState)" of `Page`: what is drawn from here on follows the state, which
/// can no longer be changed. Nothing for Nil or for a state of another document.
void SetExtendedState(Page *page, ExtendedGraphicsState *state);

}  // namespace quillbar::extended_graphics_state
