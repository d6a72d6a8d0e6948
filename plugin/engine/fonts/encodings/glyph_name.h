// SPDX-License-Identifier: MIT
// Glyph names and the characters that they name (Adobe Glyph List Specification).
#pragma once

#include <hpdf.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace quillbar::engine {

/// The name under which viewers look for a character: the customary one, or one by its number. ".notdef" for 0 and for
/// control characters.
std::string GlyphName(HPDF_UNICODE character);

/// The character of a glyph's name: a customary one, "uniXXXX" or "uXXXX"; 0 for any other name and for characters
/// above U+FFFF, which no single-byte encoding has.
HPDF_UNICODE CharacterOfGlyphName(const std::string &name);

/// Whether every reader takes the name that the file has for this character as that character, and as no other one.
bool HasPlainName(char32_t character);

/// Characters that share a glyph name: a font may have its glyph under the other one.
inline constexpr std::array<std::pair<HPDF_UNICODE, HPDF_UNICODE>, 10> kNamesakes = {{
    {0x0020, 0x00A0},
    {0x002D, 0x00AD},
    {0x00AF, 0x02C9},
    {0x00B5, 0x03BC},
    {0x00B7, 0x2219},
    {0x0162, 0x021A},
    {0x0163, 0x021B},
    {0x0394, 0x2206},
    {0x03A9, 0x2126},
    {0x2044, 0x2215},
}};

}  // namespace quillbar::engine
