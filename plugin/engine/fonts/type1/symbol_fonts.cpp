// SPDX-License-Identifier: MIT
// libharu numbers the glyphs of Symbol and ZapfDingbats by their codes, and no encoding of letters leads to
// them: text in one of those came out empty in viewers.
#include "plugin/engine/fonts/type1/symbol_fonts.h"

#include <hpdf_encoder.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "plugin/engine/fonts/type1/type1_definition.h"

namespace quillbar::engine {

namespace {

// The characters of Symbol from code 32 on (ISO 32000-1, Annex D.5). Pieces of tall brackets are the
// characters that Unicode has for them.
constexpr std::array<char16_t, 224> kSymbol = {
    0x0020, 0x0021, 0x2200, 0x0023, 0x2203, 0x0025, 0x0026, 0x220B,  // 20
    0x0028, 0x0029, 0x2217, 0x002B, 0x002C, 0x2212, 0x002E, 0x002F,  // 28
    0x0030, 0x0031, 0x0032, 0x0033, 0x0034, 0x0035, 0x0036, 0x0037,  // 30
    0x0038, 0x0039, 0x003A, 0x003B, 0x003C, 0x003D, 0x003E, 0x003F,  // 38
    0x2245, 0x0391, 0x0392, 0x03A7, 0x0394, 0x0395, 0x03A6, 0x0393,  // 40
    0x0397, 0x0399, 0x03D1, 0x039A, 0x039B, 0x039C, 0x039D, 0x039F,  // 48
    0x03A0, 0x0398, 0x03A1, 0x03A3, 0x03A4, 0x03A5, 0x03C2, 0x03A9,  // 50
    0x039E, 0x03A8, 0x0396, 0x005B, 0x2234, 0x005D, 0x22A5, 0x005F,  // 58
    0x203E, 0x03B1, 0x03B2, 0x03C7, 0x03B4, 0x03B5, 0x03C6, 0x03B3,  // 60
    0x03B7, 0x03B9, 0x03D5, 0x03BA, 0x03BB, 0x03BC, 0x03BD, 0x03BF,  // 68
    0x03C0, 0x03B8, 0x03C1, 0x03C3, 0x03C4, 0x03C5, 0x03D6, 0x03C9,  // 70
    0x03BE, 0x03C8, 0x03B6, 0x007B, 0x007C, 0x007D, 0x223C, 0x0000,  // 78
    0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000,  // 80
    0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000,  // 88
    0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000,  // 90
    0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000,  // 98
    0x20AC, 0x03D2, 0x2032, 0x2264, 0x2044, 0x221E, 0x0192, 0x2663,  // A0
    0x2666, 0x2665, 0x2660, 0x2194, 0x2190, 0x2191, 0x2192, 0x2193,  // A8
    0x00B0, 0x00B1, 0x2033, 0x2265, 0x00D7, 0x221D, 0x2202, 0x2022,  // B0
    0x00F7, 0x2260, 0x2261, 0x2248, 0x2026, 0x23D0, 0x23AF, 0x21B5,  // B8
    0x2135, 0x2111, 0x211C, 0x2118, 0x2297, 0x2295, 0x2205, 0x2229,  // C0
    0x222A, 0x2283, 0x2287, 0x2284, 0x2282, 0x2286, 0x2208, 0x2209,  // C8
    0x2220, 0x2207, 0x00AE, 0x00A9, 0x2122, 0x220F, 0x221A, 0x22C5,  // D0
    0x00AC, 0x2227, 0x2228, 0x21D4, 0x21D0, 0x21D1, 0x21D2, 0x21D3,  // D8
    0x25CA, 0x27E8, 0x00AE, 0x00A9, 0x2122, 0x2211, 0x239B, 0x239C,  // E0
    0x239D, 0x23A1, 0x23A2, 0x23A3, 0x23A7, 0x23A8, 0x23A9, 0x23AA,  // E8
    0x0000, 0x27E9, 0x222B, 0x2320, 0x23AE, 0x2321, 0x239E, 0x239F,  // F0
    0x23A0, 0x23A4, 0x23A5, 0x23A6, 0x23AB, 0x23AC, 0x23AD, 0x0000,  // F8
};

// ZapfDingbats (Annex D.6): Unicode took over its signs in the order of their codes, but for those which it
// had already.
constexpr std::array<std::pair<HPDF_BYTE, char16_t>, 17> kOtherDingbats = {{
    {0x25, 0x260E},
    {0x2A, 0x261B},
    {0x2B, 0x261E},
    {0x48, 0x2605},
    {0x6C, 0x25CF},
    {0x6E, 0x25A0},
    {0x73, 0x25B2},
    {0x74, 0x25BC},
    {0x75, 0x25C6},
    {0x77, 0x25D7},
    {0xA8, 0x2663},
    {0xA9, 0x2666},
    {0xAA, 0x2665},
    {0xAB, 0x2660},
    {0xD5, 0x2192},
    {0xD6, 0x2194},
    {0xD7, 0x2195},
}};

char32_t DingbatOf(HPDF_BYTE code) {
  for (const auto &[known, character] : kOtherDingbats) {
    if (known == code) return character;
  }
  if (code == 0x20) return U' ';
  if (code > 0x20 && code < 0x7F) return 0x2700U + code - 0x20U;
  if (code >= 0x80 && code <= 0x8D) return 0x2768U + code - 0x80U;
  if (code > 0xA0 && code < 0xA8) return 0x2760U + code - 0xA0U;
  if (code >= 0xAC && code < 0xB6) return 0x2460U + code - 0xACU;
  if (code >= 0xB6 && code < 0xFF && code != 0xF0) return 0x2776U + code - 0xB6U;
  return 0;
}

const HPDF_CharData *MetricsOfCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code) {
  const std::span glyphs = Type1GlyphsOf(definition);
  const auto found = std::ranges::find(glyphs, code, &HPDF_CharData::char_cd);
  return found == glyphs.end() ? nullptr : &*found;
}

bool IsLetter(HPDF_UNICODE character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
         (character >= 0xC0 && character < 0x700);
}

// Whether the encoding's letters are letters that the font has, at least in part.
bool ReachesLetters(const Type1Attributes &font, HPDF_Encoder encoder) {
  constexpr int kFewestInHundred = 12;
  int letters = 0, reached = 0;
  for (HPDF_UINT16 code = 0; code < 256; ++code) {
    const HPDF_UNICODE character = HPDF_Encoder_ToUnicode(encoder, code);
    if (!IsLetter(character)) continue;
    ++letters;
    if (font.glyphs.contains(character)) ++reached;
  }
  return reached * 100 >= letters * kFewestInHundred;
}

}  // namespace

bool HasOwnCodes(const HPDF_FontAttr_Rec &font) {
  const HPDF_FontDef_Rec &definition = *font.fontdef;
  if (definition.type != HPDF_FONTDEF_TYPE_TYPE1 ||
      std::strcmp(Type1MetricsOf(definition).encoding_scheme, HPDF_ENCODING_FONT_SPECIFIC) != 0)
    return false;
  const Type1Attributes *file = Type1FileOf(definition);
  return file == nullptr || !ReachesLetters(*file, font.encoder);
}

char32_t CharacterOfOwnCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code) {
  if (Type1FileOf(definition) != nullptr) {
    const HPDF_CharData *glyph = MetricsOfCode(definition, code);
    return glyph == nullptr ? 0 : glyph->unicode;
  }
  if (std::strcmp(definition.base_font, "Symbol") != 0) return DingbatOf(code);
  return code < 0x20 ? 0 : kSymbol[code - 0x20U];
}

HPDF_INT16 WidthOfOwnCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code) {
  const HPDF_CharData *glyph = MetricsOfCode(definition, code);
  return glyph == nullptr ? definition.missing_width : glyph->width;
}

}  // namespace quillbar::engine
