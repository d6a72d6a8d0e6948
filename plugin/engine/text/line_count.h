// SPDX-License-Identifier: MIT
// Counting the lines that a text box would have.
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

// Stores in `lineCount` into how many lines of `width` points `text`, in the bytes of the page's current
// font, would be broken, and in `height` their height in points: the count times the text leading. A text
// leading of exactly 0 is set to the height of the font's bounding box, and stays so. A word longer than the
// width ends the count. The page must be in a text object and have a font; the results are left alone if it
// is not or has none.
HPDF_STATUS CountTextLines(HPDF_Page page, const char *text, HPDF_REAL width, HPDF_UINT *lineCount, HPDF_REAL *height);

}  // namespace quillbar::engine
