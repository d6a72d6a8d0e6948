// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// The current font, and positions of text. Lengths are points. Where a mode is named, the member is silent in any
/// other mode.
namespace quillbar::text {

/// Sets the font of the text that follows, with its size in points; error 4176 for sizes that the library refuses. Page
/// description or text object. Nothing for Nil or for a font of another document.
void SetFont(Page *page, Font *fontType, Single size);

/// Moves the start of the line by (x, y). Text object. The PDF operator moves relative to the start of the line, yet y
/// is flipped as if it were a position: the first move after `BeginText` lands on (x, y) from the top, later ones add
/// page height - y.
void MoveTextPosition(Page *page, Single x, Single y);

/// Moves to the start of the next line. Text object. A leading of 0 is replaced by the suggested one for this move
/// alone.
void MoveTextPositionNextLine(Page *page);

/// The position of the text that follows. Text object; outside one, x and y are left as they are.
void GetCurrentTextPosition(Page *page, Single *x, Single *y);

/// The height of the bounding box of the library's current font at its current size; 0 without a font.
Single SuggestedTextLeading(Page *page);

/// Sets the text matrix, of which only y is flipped. The library refuses it outside of a text object, and a matrix that
/// flattens text.
void SetTextMatrix(Page *page, Single a, Single b, Single c, Single d, Single x, Single y);

/// Sets a text matrix that turns by `angle` degrees, counter-clockwise, at (x, y). The library refuses it outside of a
/// text object.
void SetTextRotation(Page *page, Single angle, Single x, Single y);

}  // namespace quillbar::text
