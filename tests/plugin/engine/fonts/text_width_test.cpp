// SPDX-License-Identifier: MIT
// Widths of text in Type 1 fonts, and of the characters of Chinese, Japanese and Korean ones; words and lines in fonts of
// every kind.
#include <gmock/gmock.h>
#include <hpdf.h>
#include <hpdf_encoder.h>
#include <hpdf_fontdef.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "plugin/engine/fonts/cid/cid_definition.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "tests/plugin/engine/driver/font_document.h"
#include "tests/support/real_fonts.h"

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

// A font, and two words that it shows, as its encoding has them.
struct WordsInFont {
  const char *kind;
  const char *font;  // null: DejaVu Sans
  const char *encoding;
  std::string_view first, second;
};

void PrintTo(const WordsInFont &words, std::ostream *out) { *out << words.kind; }

class MeasuredWords : public testing::TestWithParam<WordsInFont> {
 protected:
  void SetUp() override {
    QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
    HPDF_UseCNSFonts(document_.document);
    HPDF_UseCNSEncodings(document_.document);
    const char *name = GetParam().font != nullptr ? GetParam().font : document_.Load(test::kDejaVuSans);
    font_ = document_.Font(name, GetParam().encoding);
    ASSERT_NE(font_, nullptr);
  }

  HPDF_TextWidth WidthOf(std::string_view text) const {
    return HPDF_Font_TextWidth(font_, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                               static_cast<HPDF_UINT>(text.size()));
  }

  // In points, set in 10 points.
  float PointsOf(std::string_view text) const { return static_cast<float>(WidthOf(text).width) / 100; }

  HPDF_UINT Fitting(std::string_view text, float width, bool breaksAtWords, float *reached) const {
    return HPDF_Font_MeasureText(font_, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                                 static_cast<HPDF_UINT>(text.size()), width, 10, 0, 0, breaksAtWords ? 1 : 0, reached);
  }

  static std::string Joined(char space) {
    return std::string(GetParam().first).append(1, space).append(GetParam().second);
  }

  test::FontDocument document_;
  HPDF_Font font_ = nullptr;
};

TEST_P(MeasuredWords, AreParted) {
  for (const char space : {'\0', '\t', '\n', '\f', '\r', ' '}) {
    const HPDF_TextWidth whole = WidthOf(Joined(space));
    EXPECT_EQ(whole.numspace, 1U) << int{space};
    EXPECT_EQ(whole.numwords, 2U) << int{space};
    const HPDF_TextWidth open = WidthOf(std::string(GetParam().first) + space);
    EXPECT_EQ(open.numspace, 1U) << int{space};
    EXPECT_EQ(open.numwords, 1U) << int{space};
  }
  const HPDF_TextWidth word = WidthOf(GetParam().first);
  EXPECT_EQ(word.numspace, 0U);
  EXPECT_EQ(word.numwords, 1U);
  EXPECT_GT(word.width, 0U);
}

TEST_P(MeasuredWords, FillALineAsFarAsTheyFit) {
  const std::string text = Joined(' ');
  float reached = 0;
  EXPECT_EQ(Fitting(text, PointsOf(text) + 1, true, &reached), text.size());
  EXPECT_NEAR(reached, PointsOf(text), 0.01);
  // All but a little of the second word.
  EXPECT_EQ(Fitting(text, PointsOf(text) - 1, true, &reached), GetParam().first.size() + 1);
  EXPECT_NEAR(reached, PointsOf(GetParam().first), 0.01);
  const HPDF_UINT cut = Fitting(text, PointsOf(text) - 1, false, &reached);
  EXPECT_GT(cut, GetParam().first.size());
  EXPECT_LT(cut, text.size());
  EXPECT_LE(reached, PointsOf(text) - 1);
  EXPECT_EQ(Fitting(text, PointsOf(text) - 1, false, nullptr), cut);
  for (const bool breaksAtWords : {true, false}) {
    EXPECT_EQ(Fitting(text, 0.1F, breaksAtWords, nullptr), 0U);
    EXPECT_EQ(Fitting("", 100, breaksAtWords, &reached), 0U);
  }
}

TEST_P(MeasuredWords, EndALineAtALineFeed) {
  for (const bool breaksAtWords : {true, false}) {
    float reached = 0;
    EXPECT_EQ(Fitting(Joined('\n'), 1000, breaksAtWords, &reached), GetParam().first.size() + 1);
    EXPECT_NEAR(reached, PointsOf(GetParam().first), 0.01);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Fonts, MeasuredWords,
    testing::Values(WordsInFont{"Type1", "Helvetica", "WinAnsiEncoding", "wide", "word"},
                    WordsInFont{"TrueType", nullptr, "CP1250", "wide", "word"},
                    WordsInFont{"TrueTypeUtf8", nullptr, "UTF-8", "wide", "word"},
                    WordsInFont{"TrueTypeShaped", nullptr, "UTF-8", "wi\u0300de", "wo\u0308rd"},
                    WordsInFont{"TrueTypeTwoBytes", nullptr, "GBK-EUC-H", "wide", "\xA6\xC1\xA6\xC2"},
                    WordsInFont{"Chinese", "SimSun", "GBK-EUC-H", "wide", "\xA6\xC1\xA6\xC2"},
                    WordsInFont{"ChineseVertical", "SimSun", "GBK-EUC-V", "wide", "\xA6\xC1\xA6\xC2"},
                    WordsInFont{"TrueTypeVertical", nullptr, "GBK-EUC-V", "wide", "\xA6\xC1\xA6\xC2"}),
    [](const auto &made) { return std::string(made.param.kind); });

using VerticalText = testing::Test;

TEST_F(VerticalText, GoesDownByTheHeightOfTheFontsBox) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  test::FontDocument document;
  HPDF_UseCNSEncodings(document.document);
  HPDF_Font font = document.Font(document.Load(test::kDejaVuSans), "GBK-EUC-V");
  ASSERT_NE(font, nullptr);
  const HPDF_Box box = HPDF_Font_GetBBox(font);
  const auto widthOf = [font](std::string_view text) {
    return HPDF_Font_TextWidth(font, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                               static_cast<HPDF_UINT>(text.size()))
        .width;
  };
  EXPECT_EQ(widthOf("A"), static_cast<HPDF_UINT>(box.top - box.bottom));
  EXPECT_EQ(widthOf("\xA6\xC1."), 2 * widthOf("A"));
  document.Show(font, "A\xA6\xC1");
  test::PdfFile file(document.SaveToString());
  EXPECT_EQ(file.Font(0, "/F1").getKey("/Encoding").getName(), "/Identity-V");
}

// Malformed text and codes of a user's own: every byte is measured, and lines take whole codes.
TEST(CidText, BrokenAndPrivateCodesAreMeasured) {
  LibraryDocument document;
  HPDF_UseCNSFonts(document.document);
  HPDF_UseCNSEncodings(document.document);
  const HPDF_Font font = engine::GetFont(document.document, "SimSun", "GBK-EUC-H");
  ASSERT_NE(font, nullptr);
  for (const std::string_view text : {"\xA6", "a\xA6", "\xA6\xC1\xA6", "\xAA\xA1\xAA\xA2", "\xFE\xFE", "\xA6 b",
                                      "\xFF\xFF", "\x80\x80", "a\xA6\x01z", "\xFF\xA6\xC1"}) {
    const auto *bytes = reinterpret_cast<const HPDF_BYTE *>(text.data());
    const auto size = static_cast<HPDF_UINT>(text.size());
    const HPDF_TextWidth whole = HPDF_Font_TextWidth(font, bytes, size);
    EXPECT_GT(whole.width, 0U) << text;
    EXPECT_LE(whole.numchars, size) << text;
    for (const HPDF_BOOL breaksAtWords : {HPDF_FALSE, HPDF_TRUE}) {
      float reached = -1;
      EXPECT_EQ(HPDF_Font_MeasureText(font, bytes, size, 1000, 10, 0, 0, breaksAtWords, &reached), size) << text;
      EXPECT_NEAR(reached, static_cast<float>(whole.width) / 100, 0.01) << text;
      EXPECT_LT(HPDF_Font_MeasureText(font, bytes, size, reached - 0.1F, 10, 0, 0, breaksAtWords, nullptr), size)
          << text;
    }
  }
}

// Where encodings leave room for them; libharu takes them all for squares, which hold together.
TEST(CidText, LinesAreBrokenBetweenIdeographsOfAUsersOwn) {
  LibraryDocument document;
  const HPDF_Doc doc = document.document;
  HPDF_UseJPFonts(doc);
  HPDF_UseJPEncodings(doc);
  HPDF_UseCNSFonts(doc);
  HPDF_UseCNSEncodings(doc);
  for (const auto &[name, encoding, text] : {std::tuple{"MS-Mincho", "90ms-RKSJ-H", "\xF0\x40\xF0\x41\xF0\x42"},
                                             std::tuple{"SimSun", "GBK-EUC-H", "\xAA\xA1\xAA\xA2\xAA\xA3"}}) {
    const HPDF_Font font = engine::GetFont(doc, name, encoding);
    ASSERT_NE(font, nullptr) << name;
    const auto *bytes = reinterpret_cast<const HPDF_BYTE *>(text);
    const HPDF_TextWidth whole = HPDF_Font_TextWidth(font, bytes, 6);
    ASSERT_EQ(whole.numchars, 3U) << encoding;
    const float most = static_cast<float>(whole.width) / 100 - 0.1F;
    EXPECT_EQ(HPDF_Font_MeasureText(font, bytes, 6, most, 10, 0, 0, HPDF_TRUE, nullptr), 4U) << encoding;
  }
}

// As wide as an ideograph, and a line is broken before and behind it.
TEST(CidText, CodesThatUnicodeDoesNotHaveAreIdeographs) {
  LibraryDocument document;
  const HPDF_Doc doc = document.document;
  HPDF_UseJPFonts(doc);
  HPDF_UseJPEncodings(doc);
  HPDF_UseKRFonts(doc);
  HPDF_UseKREncodings(doc);
  int found = 0;
  for (const auto &[name, encoding, ideograph] :
       {std::tuple{"MS-Mincho", "90ms-RKSJ-H", "\x93\xFA"}, std::tuple{"DotumChe", "KSCms-UHC-H", "\xF9\xED"}}) {
    const HPDF_Encoder encoder = HPDF_GetEncoder(doc, encoding);
    const HPDF_Font font = engine::GetFont(doc, name, encoding);
    ASSERT_NE(font, nullptr) << name;
    for (HPDF_UINT code = 0x8140; code < 0xFEFF; ++code) {
      const auto lead = static_cast<char>(code >> 8), trail = static_cast<char>(code & 0xFF);
      if (HPDF_Encoder_ToUnicode(encoder, static_cast<HPDF_UINT16>(code)) != 0) continue;
      const std::string text = std::string(ideograph) + lead + trail + ideograph;
      const auto *bytes = reinterpret_cast<const HPDF_BYTE *>(text.data());
      const HPDF_TextWidth whole = HPDF_Font_TextWidth(font, bytes, 6);
      if (whole.numchars != 3) continue;  // no code of two bytes
      ++found;
      const float most = static_cast<float>(whole.width) / 100 - 0.1F;
      EXPECT_EQ(HPDF_Font_MeasureText(font, bytes, 6, most, 10, 0, 0, HPDF_TRUE, nullptr), 4U) << encoding << code;
    }
  }
  EXPECT_GT(found, 0);
}

}  // namespace
}  // namespace quillbar
