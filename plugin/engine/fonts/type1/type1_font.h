// SPDX-License-Identifier: MIT
// Fonts of Type 1 (type1_font.cpp).
#pragma once

#include <hpdf.h>

#include <string_view>

namespace quillbar::engine {

// Takes note of bytes shown in a font of type HPDF_FONT_TYPE1: the file says what they mean where the names
// of the glyphs don't.
void NoteShownCodes(HPDF_Font font, std::string_view bytes);

}  // namespace quillbar::engine
