// SPDX-License-Identifier: MIT
// Widths of text in Type 1 fonts, and of the characters of Chinese, Japanese and Korean ones.
#include <gtest/gtest.h>
#include <hpdf.h>
#include <hpdf_encoder.h>
#include <hpdf_fontdef.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/engine/fonts/cid/cid_definition.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

TEST(Type1TextWidth, AddsUpTheWidthsOfTheBytesAndCountsTheSpaces) {
  LibraryDocument document;
  HPDF_Font font = engine::GetFont(document.document, "Helvetica", "WinAnsiEncoding");
  const auto widthOf = [font](std::string_view text) {
    return HPDF_Font_TextWidth(font, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                               static_cast<HPDF_UINT>(text.size()));
  };
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    const HPDF_TextWidth whole = widthOf(std::string_view(bytes).substr(0, length));
    HPDF_UINT width = 0, spaces = 0;
    for (std::size_t i = 0; i < length; ++i) {
      width += widthOf({&bytes[i], 1}).width;
      spaces += std::string_view("\0\t\n\f\r ", 6).find(bytes[i]) != std::string_view::npos;
    }
    ASSERT_EQ(whole.width, width) << length;
    ASSERT_EQ(whole.numchars, length);
    ASSERT_EQ(whole.numspace, spaces) << length;
  }
  EXPECT_EQ(widthOf("A").width, 667U);
  EXPECT_EQ(widthOf(" ").width, 278U);
  EXPECT_EQ(widthOf("two words").numwords, 2U);
  EXPECT_EQ(widthOf("two words ").numwords, 2U);
  EXPECT_EQ(widthOf("").numwords, 0U);
}

// The width of each character as libharu finds it, looking from the start of the list to its end.
std::vector<HPDF_INT16> ListedWidths(const engine::CidDefinition &face) {
  std::vector<HPDF_INT16> listed(0x10000, face.defaultWidth);
  for (std::size_t i = face.widths.size(); i-- > 0;) listed.at(face.widths[i].cid) = face.widths[i].width;
  return listed;
}

TEST(CidWidth, EveryCharacterOfEveryBuiltInFaceHasItsListedWidth) {
  LibraryDocument document;
  HPDF_Doc doc = document.document;
  HPDF_UseJPFonts(doc);
  HPDF_UseKRFonts(doc);
  HPDF_UseCNSFonts(doc);
  HPDF_UseCNTFonts(doc);
  for (const char *name : {"MS-Gothic", "MS-PGothic", "MS-Mincho", "MS-PMincho", "DotumChe", "Dotum", "BatangChe",
                           "Batang", "SimSun", "SimHei", "MingLiU"}) {
    HPDF_FontDef definition = HPDF_GetFontDef(doc, name);
    ASSERT_NE(definition, nullptr) << name;
    const engine::CidDefinition &face = engine::CidOf(*definition);
    ASSERT_GT(face.widths.size(), 50U) << name;
    const std::vector<HPDF_INT16> listed = ListedWidths(face);
    for (HPDF_UINT character = 0; character < 0x10000; ++character)
      ASSERT_EQ(face.WidthOf(static_cast<HPDF_UINT16>(character)), listed[character]) << name << " " << character;
  }
}

}  // namespace
}  // namespace quillbar
