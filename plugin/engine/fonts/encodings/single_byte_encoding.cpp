// SPDX-License-Identifier: MIT
// What libharu's HPDF_BasicEncoder_Write writes for a font, with a name for every character.
//
// libharu writes ".notdef" for each character that its list of glyph names lacks, such as the dotted letters of ISO
// 8859-14: nothing is shown or copied there. And PDF's MacRomanEncoding is older than the Mac's table: it has the
// currency sign for the euro sign and nothing for the mathematical signs, so these are listed as differences once a
// page uses them.
#include "plugin/engine/fonts/encodings/single_byte_encoding.h"

#include <hpdf_encoder.h>

#include <array>
#include <cstring>
#include <string>

#include "plugin/engine/fonts/encodings/glyph_name.h"

namespace quillbar::engine {

namespace {

constexpr char kMacRoman[] = "MacRomanEncoding";

// Codes at which the Mac's own table differs from PDF's (ISO 32000-1, 9.6.6.4 and Annex D.2).
constexpr std::array<bool, 256> kIsMacAddition = [] {
  std::array<bool, 256> table{};
  for (const int code : {173, 176, 178, 179, 182, 183, 184, 185, 186, 189, 195, 197, 198, 215, 219, 240})
    table[static_cast<std::size_t>(code)] = true;
  return table;
}();

HPDF_BasicEncoderAttr AttributesOf(HPDF_Encoder encoder) { return static_cast<HPDF_BasicEncoderAttr>(encoder->attr); }

}  // namespace

GlyphNames NamesOfDifferences(HPDF_Encoder encoder) {
  const HPDF_BasicEncoderAttr_Rec &own = *AttributesOf(encoder);
  GlyphNames names;
  if (own.has_differences == HPDF_FALSE) return names;
  for (int code = own.first_char; code <= own.last_char; ++code) {
    if (own.differences[code] == 1) names[code] = GlyphName(own.unicode_map[code]);
  }
  return names;
}

std::string EncodingEntry(HPDF_Encoder encoder, const GlyphNames &differences) {
  const HPDF_BasicEncoderAttr_Rec &own = *AttributesOf(encoder);
  // A font's built-in encoding is what a file without an entry means.
  if (std::strcmp(own.base_encoding, HPDF_ENCODING_FONT_SPECIFIC) == 0) return {};
  std::string text = "/Encoding ";
  if (!differences.empty()) text += "<<\n/Type /Encoding\n/BaseEncoding ";
  text += "/";
  text += own.base_encoding;
  text += "\n";
  if (differences.empty()) return text;
  text += "/Differences [";
  for (const auto &[code, name] : differences) text += std::to_string(code) + " /" + name + " ";
  return text + "]\n>>\n";
}

void NoteShownByte(HPDF_Encoder encoder, HPDF_BYTE code) {
  if (!kIsMacAddition[code] || std::strcmp(encoder->name, kMacRoman) != 0) return;
  HPDF_BasicEncoderAttr own = AttributesOf(encoder);
  own->differences[code] = 1;
  own->has_differences = HPDF_TRUE;
}

}  // namespace quillbar::engine
