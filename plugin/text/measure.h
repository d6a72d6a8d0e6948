// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Measuring text on one line. Widths are points, lengths characters of the script's text. An automatic font is fitted
/// to the text first (fallback.h), so measuring may switch it.
namespace quillbar::text {

/// How many characters of a text fit into a width; with `wordWrap` up to the last place where a text box would break
/// the line, and never beyond a line feed. -1 for a nil text, without a font, or when the text can't be converted. In any graphics mode.
Integer MeasureText(Page *page, String text, Single width, Boolean wordWrap);

/// The same; `outWidth` receives how wide they are, and is left alone when none fit.
Integer MeasureTextWidth(Page *page, String text, Single width, Boolean wordWrap, Single *outWidth);

}  // namespace quillbar::text
