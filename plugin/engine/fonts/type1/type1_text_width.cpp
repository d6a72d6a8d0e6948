// SPDX-License-Identifier: MIT
// One question to a table for each byte, where libharu asks six.
#include "plugin/engine/fonts/type1/type1_text_width.h"

#include <hpdf_font.h>
#include <hpdf_utils.h>

#include <array>

namespace quillbar::engine {

namespace {

constexpr std::array<HPDF_BYTE, 256> kIsWhiteSpace = [] {
  std::array<HPDF_BYTE, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) table[byte] = HPDF_IS_WHITE_SPACE(byte) ? 1 : 0;
  return table;
}();

}  // namespace

HPDF_TextWidth Type1TextWidth(HPDF_Font font, const HPDF_BYTE *text, HPDF_UINT length) {
  const HPDF_INT16 *widths = static_cast<HPDF_FontAttr>(font->attr)->widths;
  HPDF_UINT width = 0, spaces = 0;
  const auto add = [&](HPDF_BYTE byte) {
    width += static_cast<HPDF_UINT>(widths[byte]);
    spaces += kIsWhiteSpace[byte];
  };
  HPDF_UINT i = 0;
  for (; length - i >= 4; i += 4) {
    add(text[i]);
    add(text[i + 1]);
    add(text[i + 2]);
    add(text[i + 3]);
  }
  for (; i < length; ++i) add(text[i]);
  HPDF_TextWidth result{};
  result.numchars = length;
  result.width = width;
  result.numspace = spaces;
  result.numwords = spaces + (length != 0 && kIsWhiteSpace[text[length - 1]] == 0 ? 1 : 0);
  return result;
}

}  // namespace quillbar::engine
