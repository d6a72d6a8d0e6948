// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Line style, dashes, the current matrix, clipping and saved states. None of these has a guard: the library
/// refuses a call in a mode that doesn't allow it, and values that it doesn't know.
namespace quillbar::page {

/// `LineWidth` in points.
Single GetLineWidth(Page *page);
void SetLineWidth(Page *page, std::intptr_t parameter, Single value);
LineCapType GetLineCapType(Page *page);
void SetLineCapType(Page *page, std::intptr_t parameter, LineCapType value);
LineJoinType GetLineJoinType(Page *page);
void SetLineJoinType(Page *page, std::intptr_t parameter, LineJoinType value);

/// `GraphicsMode`, read-only: 16 bits wide, 0 for a page without a library page.
GraphicsMode GetGraphicsMode(Page *page);

/// "SetDashPattern(dashPattern() as UInt16,phase as UInt32)": lengths of dashes and gaps in points. The
/// library takes one number or an even count up to 8, so the last of 3, 5 or 7 numbers is dropped, as is what
/// is behind the eighth. An empty array means solid lines, whatever the phase.
void SetDashPattern(Page *page, ArrayOf<std::uint16_t> *dashPattern, std::uint32_t phase);
/// "ResetDashPattern()": solid lines.
void ResetDashPattern(Page *page);

/// "ConcatMatrix(…)": multiplies the current matrix. On a page that works from the top only the last number
/// is flipped: the matrix isn't mirrored.
void ConcatMatrix(Page *page, Single a, Single b, Single c, Single d, Single x, Single y);
/// "Clip()": the path becomes the clipping area, nonzero winding rule, once it is ended.
void Clip(Page *page);
void SaveState(Page *page);
void RestoreState(Page *page);

}  // namespace quillbar::page
