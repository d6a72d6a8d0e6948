// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/encodings/glyph_name.h"

#include <hpdf_encoder.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace quillbar::engine {

std::string GlyphName(HPDF_UNICODE character) {
  // The library's list calls these by the names of the middle dot, the ohm sign and the micro sign, which some fonts
  // have beside them, or instead. The final sigma's name there, sigma1, is unknown to the fonts that Ghostscript has
  // for the standard ones, and its place stayed empty.
  constexpr std::array<HPDF_UNICODE, 4> kNumbered = {0x2219, 0x03A9, 0x03BC, 0x03C2};
  const char *none = HPDF_UnicodeToGryphName(0);
  if (character < 0x20 || (character >= 0x7F && character < 0xA0)) return none;
  const char *customary = HPDF_UnicodeToGryphName(character);
  if (std::ranges::find(kNumbered, character) == kNumbered.end() && std::strcmp(customary, none) != 0) return customary;
  char name[8];
  std::snprintf(name, sizeof name, "uni%04X", static_cast<unsigned>(character));
  return name;
}

HPDF_UNICODE CharacterOfGlyphName(const std::string &name) {
  if (const HPDF_UNICODE customary = HPDF_GryphNameToUnicode(name.c_str()); customary != 0) return customary;
  std::string_view digits = name;
  if (digits.starts_with("uni") && digits.size() == 7) {
    digits.remove_prefix(3);
  } else if (digits.starts_with('u') && digits.size() >= 5 && digits.size() <= 7) {
    digits.remove_prefix(1);
  } else {
    return 0;
  }
  unsigned character = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), character, 16);
  const bool isCharacter = error == std::errc() && end == digits.data() + digits.size() && character <= 0xFFFF &&
                           !(character >= 0xD800 && character < 0xE000);
  return isCharacter ? static_cast<HPDF_UNICODE>(character) : HPDF_UNICODE{0};
}

bool HasPlainName(char32_t character) {
  // The characters of Windows Latin 1 but the no-break space and the soft hyphen, which have the names of the space
  // and the hyphen.
  constexpr std::u32string_view kBeyondLatin1 = U"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ";
  if (character < 0x7F) return true;
  if (character > 0xA0 && character <= 0xFF) return character != 0xAD;
  return kBeyondLatin1.find(character) != std::u32string_view::npos;
}

}  // namespace quillbar::engine
