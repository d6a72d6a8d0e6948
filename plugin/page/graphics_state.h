// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Dashes, the current matrix and saved states. All call the library in every graphics mode, which refuses with error
/// 4177 where it is not allowed.
namespace quillbar::page {

/// `GraphicsMode`: what the page's content stream is in the middle of; 0 for a page without a library page.
GraphicsMode GetGraphicsMode(Page *page);

/// "SetDashPattern(…)": lengths of dashes and gaps in points. The library takes one number or an even count up to 8, so
/// the last of 3, 5 or 7 numbers is dropped, as is what follows the eighth. An empty array means solid lines, whatever
/// the phase.
void SetDashPattern(Page *page, ArrayOf<std::uint16_t> *dashPattern, std::uint32_t phase);

/// "ResetDashPattern()": solid lines.
void ResetDashPattern(Page *page);

/// "ConcatMatrix(…)": multiplies the current matrix. On a page that works from the top only the last number is flipped:
/// the matrix isn't mirrored.
void ConcatMatrix(Page *page, Single a, Single b, Single c, Single d, Single x, Single y);

/// "SaveState()": saves line style, colours, font, matrix and clipping area, 27 deep; error 4116 beyond.
void SaveState(Page *page);

/// "RestoreState()": brings back what was saved last; an error when nothing is saved.
void RestoreState(Page *page);

}  // namespace quillbar::page
