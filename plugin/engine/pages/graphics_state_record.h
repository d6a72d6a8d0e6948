// SPDX-License-Identifier: MIT
/// Graphics states: what a page begins with, saves and restores (ISO 32000-1, 8.4).
#pragma once

#include <hpdf.h>
#include <hpdf_gstate.h>

namespace quillbar::engine {

/// A graphics state with the values that a page begins with; null when memory ran out. Freed by FreeGraphicsState.
HPDF_GState NewGraphicsState(HPDF_MMgr memory);

/// A copy of `state` that leads back to it; null when memory ran out. Freed by FreeGraphicsState.
HPDF_GState CopyOfGraphicsState(HPDF_MMgr memory, HPDF_GState state);

/// Frees `state` alone and returns the state that was saved before it, or null.
HPDF_GState FreeGraphicsState(HPDF_MMgr memory, HPDF_GState state);

/// Whether no further state can be saved: readers need not keep more than 28 (ISO 32000-1, Annex C.2).
inline bool IsDeepest(const HPDF_GState_Rec &state) { return state.depth >= HPDF_LIMIT_MAX_GSTATE; }

}  // namespace quillbar::engine
