// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Text boxes: text that is broken into lines, at white space and in writing without blanks (engine/layout/line_breaks.h).
/// Sizes are points, lengths characters of the script's text. All three members act in a text object once a font was set. The two that set text fit an automatic font to it
/// first (fallback.h).
namespace quillbar::text {

/// How high a text box of this width would be, and of how many lines; 0 where it can't be told. A text leading of 0
/// counts as the suggested one.
Single TextRectMeasure(Page *page, String text, Single width, Integer *outLineCount);

/// Sets text in a box; `length` receives how much of it went in, 0 where nothing could be set.
void TextRect(Page *page, String text, Single left, Single top, Single right, Single bottom, TextAlignment alignment,
              Integer *length);

/// The same, placed by the baseline of its first line instead of by its top.
void TextRectBaseline(Page *page, String text, Single left, Single baseline, Single width, Single height,
                      TextAlignment alignment, Integer *length);

}  // namespace quillbar::text
