// SPDX-License-Identifier: MIT
// Widths of texts in Type 1 fonts (type1_text_width.cpp).
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

// Adds up the widths of a text's bytes, in 1/1000 of the font size, and counts its words.
HPDF_TextWidth Type1TextWidth(HPDF_Font font, const HPDF_BYTE *text, HPDF_UINT length);

}  // namespace quillbar::engine
