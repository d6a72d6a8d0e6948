// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Measuring text and setting it in boxes. Lengths are characters of the script's text, sizes points.
///
/// All but `TextRectMeasure` fit an automatic font to the text first (fallback.h), so they may switch it.
namespace quillbar::text {

/// How many characters of a text fit into a width; up to the last white space with `wordWrap`, and never
/// beyond a line feed. -1 for a nil text, without a font, or when the text can't be converted. In any
/// graphics mode.
Integer MeasureText(Page *page, String text, Single width, Boolean wordWrap);

/// The same; `outWidth` receives how wide they are, and is left alone when none fit.
Integer MeasureTextWidth(Page *page, String text, Single width, Boolean wordWrap, Single *outWidth);

/// How high a text box of this width would be, and of how many lines. Text object, with a font; 0 otherwise.
/// A text leading of 0 counts as the suggested one.
Single TextRectMeasure(Page *page, String text, Single width, Integer *outLineCount);

/// Sets text in a box, broken at white space; `length` receives how much of it went in. Text object, with a
/// font; `length` is 0 otherwise.
void TextRect(Page *page, String text, Single left, Single top, Single right, Single bottom, TextAlignment alignment,
              Integer *length);

/// The same, placed by the baseline of its first line instead of by its top.
void TextRectBaseline(Page *page, String text, Single left, Single baseline, Single width, Single height,
                      TextAlignment alignment, Integer *length);

}  // namespace quillbar::text
