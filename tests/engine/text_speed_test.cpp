// SPDX-License-Identifier: MIT
// What stands in place of libharu's slower functions for text says the same as they do.
#include <gtest/gtest.h>
#include <hpdf.h>
#include <hpdf_encoder.h>
#include <hpdf_fontdef.h>
#include <hpdf_utils.h>

#include <string>
#include <string_view>

#include "plugin/engine/streams/escaped_text.h"
#include "tests/engine/library_document.h"

namespace quillbar {
namespace {

std::string EveryByte() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

// What a reader makes of a literal string whose only escapes are octal ones.
std::string Unescaped(std::string_view literal) {
  EXPECT_TRUE(literal.size() >= 2 && literal.front() == '(' && literal.back() == ')') << literal;
  std::string bytes;
  for (std::size_t i = 1; i + 1 < literal.size(); ++i) {
    if (literal[i] == '\\') {
      bytes.push_back(static_cast<char>(std::stoi(std::string(literal.substr(i + 1, 3)), nullptr, 8)));
      i += 3;
    } else {
      bytes.push_back(literal[i]);
    }
  }
  return bytes;
}

class LiteralStringTest : public testing::Test {
 protected:
  std::string Written(std::string_view text, std::string_view after = {}) {
    HPDF_Stream stream = HPDF_MemStream_New(document_.document->mmgr, 4096);
    EXPECT_EQ(engine::WriteLiteralString(stream, text, after), HPDF_OK);
    std::string written(HPDF_Stream_Size(stream), '\0');
    auto size = static_cast<HPDF_UINT>(written.size());
    HPDF_Stream_Seek(stream, 0, HPDF_SEEK_SET);
    if (size != 0) HPDF_Stream_Read(stream, reinterpret_cast<HPDF_BYTE *>(written.data()), &size);
    HPDF_Stream_Free(stream);
    return written;
  }

 private:
  LibraryDocument document_;
};

TEST_F(LiteralStringTest, EveryByteIsReadBackAndIsPrintableInTheFile) {
  const std::string written = Written(EveryByte());
  EXPECT_EQ(Unescaped(written), EveryByte());
  for (const char c : written.substr(1, written.size() - 2)) {
    EXPECT_TRUE(c >= ' ' && c <= '~') << static_cast<int>(c);
    EXPECT_EQ(std::string_view("%#/()<>[]{}").find(c), std::string_view::npos) << c;
  }
  EXPECT_EQ(Written("a(b)\\\xE9"), "(a\\050b\\051\\134\\351)");
}

TEST_F(LiteralStringTest, TextOfAnyLengthIsWhole) {
  for (const std::size_t length : {0, 1, 7, 8, 9, 255, 256, 257, 511, 512, 513, 5000, 65535}) {
    const std::string plain(length, 'x'), escaped(length, '(');
    EXPECT_EQ(Written(plain), "(" + plain + ")");
    EXPECT_EQ(Unescaped(Written(escaped)), escaped);
  }
}

TEST_F(LiteralStringTest, AnEscapeAtAnyPlaceLeavesItsNeighboursAlone) {
  for (std::size_t place = 0; place < 300; ++place) {
    std::string text(300, 'x');
    text[place] = '\\';
    ASSERT_EQ(Unescaped(Written(text)), text) << place;
  }
}

TEST_F(LiteralStringTest, WhatFollowsStandsDirectlyBehindTheString) {
  EXPECT_EQ(Written("text", " Tj\n"), "(text) Tj\n");
  EXPECT_EQ(Written("", " Tj\n"), "() Tj\n");
  EXPECT_EQ(Written(std::string(256, '('), " '\n").substr(4 * 256), std::string("0) '\n"));
  const std::string longOne(100, '%');
  EXPECT_EQ(Written("text", longOne), "(text)" + longOne);
}

TEST(TextLength, EndsAtTheNulOrAtTheLimit) {
  EXPECT_EQ(HPDF_StrLen(nullptr, -1), 0U);
  EXPECT_EQ(HPDF_StrLen("", -1), 0U);
  EXPECT_EQ(HPDF_StrLen("text", -1), 4U);
  EXPECT_EQ(HPDF_StrLen("text", 5), 4U);
  EXPECT_EQ(HPDF_StrLen("text", 3), 3U);
  EXPECT_EQ(HPDF_StrLen("text", 0), 0U);
  const char unended[] = {'a', 'b'};
  EXPECT_EQ(HPDF_StrLen(unended, 2), 2U);
}

TEST(Type1TextWidth, AddsUpTheWidthsOfTheBytesAndCountsTheSpaces) {
  LibraryDocument document;
  HPDF_Font font = HPDF_GetFont(document.document, "Helvetica", "WinAnsiEncoding");
  const auto widthOf = [font](std::string_view text) {
    return HPDF_Font_TextWidth(font, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                               static_cast<HPDF_UINT>(text.size()));
  };
  const std::string bytes = EveryByte();
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

// Looking from the start of the list to its end, as libharu does.
HPDF_INT16 ListedWidth(HPDF_FontDef definition, HPDF_UINT16 character) {
  const auto *own = static_cast<HPDF_CIDFontDefAttr>(definition->attr);
  for (HPDF_UINT i = 0; i < own->widths->count; ++i) {
    const auto *entry = static_cast<const HPDF_CID_Width *>(own->widths->obj[i]);
    if (entry->cid == character) return entry->width;
  }
  return own->DW;
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
    ASSERT_GT(static_cast<HPDF_CIDFontDefAttr>(definition->attr)->widths->count, 50U) << name;
    for (HPDF_UINT character = 0; character < 0x10000; ++character) {
      const auto cid = static_cast<HPDF_UINT16>(character);
      ASSERT_EQ(HPDF_CIDFontDef_GetCIDWidth(definition, cid), ListedWidth(definition, cid)) << name << " " << cid;
    }
  }
}

}  // namespace
}  // namespace quillbar
