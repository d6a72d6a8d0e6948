// SPDX-License-Identifier: MIT
// libharu's map declares character ranges of another kind of CMap (`begincidrange`), which viewers skip or complain
// about. Each code has an entry of its own here, since Ghostscript reads ranges of text wrongly.
#include "plugin/engine/fonts/to_unicode_map.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "plugin/engine/streams/write_bytes.h"

namespace quillbar::engine {

namespace {

// The most entries that a block of a CMap may have.
constexpr std::size_t kBlockEntries = 100;

void AppendHex(std::string &text, std::uint32_t value, int bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (int shift = 8 * bytes - 4; shift >= 0; shift -= 4) text.push_back(kDigits[value >> shift & 0xF]);
}

void AppendUtf16(std::string &text, char32_t character) {
  if (character > 0xFFFF) {
    const std::uint32_t offset = character - 0x10000;
    AppendHex(text, 0xD800 + (offset >> 10), 2);
    AppendHex(text, 0xDC00 + (offset & 0x3FF), 2);
  } else {
    AppendHex(text, character, 2);
  }
}

}  // namespace

std::string ToUnicodeMap(std::span<const char32_t> characters, CodeLength length) {
  const bool isOneByte = length == CodeLength::kOneByte;
  const int codeBytes = isOneByte ? 1 : 2;
  std::string map =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n";
  map += isOneByte ? "<00> <FF>" : "<0000> <FFFF>";
  map += "\nendcodespacerange\n";
  std::vector<std::uint32_t> codes;
  for (std::uint32_t code = 0; code < characters.size(); ++code) {
    if (characters[code] != 0) codes.push_back(code);
  }
  for (std::size_t i = 0; i < codes.size(); i += kBlockEntries) {
    const std::size_t end = std::min(codes.size(), i + kBlockEntries);
    map += std::to_string(end - i) + " beginbfchar\n";
    for (std::size_t j = i; j < end; ++j) {
      map += '<';
      AppendHex(map, codes[j], codeBytes);
      map += "> <";
      AppendUtf16(map, characters[codes[j]]);
      map += ">\n";
    }
    map += "endbfchar\n";
  }
  map += "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
  return map;
}

HPDF_STATUS ReplaceToUnicodeMap(HPDF_Dict map, std::span<const char32_t> characters, CodeLength length) {
  const std::string text = ToUnicodeMap(characters, length);
  HPDF_MemStream_FreeData(map->stream);
  return WriteText(map->stream, text);
}

}  // namespace quillbar::engine
