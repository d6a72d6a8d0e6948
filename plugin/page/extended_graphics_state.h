// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `ExtendedGraphicsState`: opacity and blend mode. Once a page uses a state it can no longer be changed: the
/// setters leave error 4226 and change nothing.
namespace quillbar::extended_graphics_state {

/// Class constructor: no document.
void Initialize(Object state);
/// Class destructor: lets the document go. The library's state belongs to its document.
void Finalize(Object state);
/// "Constructor()": a state that belongs to no document.
void Constructor(ExtendedGraphicsState *state);

/// "CreateExtendedGraphicsState() as ExtendedGraphicsState" of `PDFDocument`.
ExtendedGraphicsState *CreateExtendedGraphicsState(PDFDocument *document);

/// Opacity of what is filled and of what is stroked, 0 (invisible) to 1; the library refuses others with
/// error 4224.
void SetAlphaFill(ExtendedGraphicsState *state, Single value);
void SetAlphaStroke(ExtendedGraphicsState *state, Single value);
/// How new colours mix with those beneath; numbers beyond the enumeration are refused with error 4224.
void SetBlendMode(ExtendedGraphicsState *state, BlendMode value);

/// "SetExtendedState(state as ExtendedGraphicsState)" of `Page`: what is drawn from here on follows the
/// state. Nothing for Nil or for a state of another document.
void SetExtendedState(Page *page, ExtendedGraphicsState *state);

}  // namespace quillbar::extended_graphics_state
