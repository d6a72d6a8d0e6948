// SPDX-License-Identifier: MIT
/// Counting the lines that a text box would have.
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Stores in `lineCount` into how many lines of `width` text space units `text`, in the bytes of the page's current
/// font, would be broken, and in `height` their height: the count times the text leading. Characters count as not
/// spaced out. A text leading of exactly 0 is set to the height of the font's bounding box, and stays so. A word wider
/// than a line, which no break divides, ends the count.
///
/// The page must be in a text object and have a font, and the text at most 65,535 bytes; what is refused leaves the
/// results alone, but for a text that is too long: they are 0 then.
HPDF_STATUS CountTextLines(HPDF_Page page, const char *text, HPDF_REAL width, HPDF_UINT *lineCount, HPDF_REAL *height);

}  // namespace quillbar::engine
