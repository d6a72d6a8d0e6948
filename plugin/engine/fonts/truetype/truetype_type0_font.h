// SPDX-License-Identifier: MIT
// TrueType fonts for texts in multi-byte encodings (truetype_type0_font.cpp).
#pragma once

#include <hpdf.h>

#include <span>
#include <string>
#include <string_view>

namespace quillbar::engine {

// Appends the codes of `text`, four hexadecimal digits each, under which the page names its characters;
// characters shown for the first time get codes; and `behindSpace` behind each white space, as text is
// measured. `font` must be of type HPDF_FONT_TYPE0_TT. Throws std::bad_alloc.
void AppendCodesInHex(HPDF_Font font, std::span<const HPDF_BYTE> text, std::string_view behindSpace, std::string &hex);

}  // namespace quillbar::engine
