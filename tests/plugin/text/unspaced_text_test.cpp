// SPDX-License-Identifier: MIT
// Lines of writing without blanks between words, as scripts see them: East Asian text in built-in faces and in embedded
// fonts, South East Asian text.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/plugin/text/text_page.h"
#include "tests/support/judges.h"
#include "tests/support/real_fonts.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kGaruda[] = "/usr/share/fonts/truetype/tlwg/Garuda.ttf";
constexpr char kNanumGothic[] = "/usr/share/fonts/truetype/nanum/NanumGothic.ttf";
constexpr char kSong[] = "/usr/share/fonts/truetype/arphic-gbsn00lp/gbsn00lp.ttf";

class UnspacedText : public TextTest {
 protected:
  // The first so many characters of a text in UTF-8, in bytes.
  static std::size_t BytesOf(const std::string &text, std::int64_t characters) {
    std::size_t at = 0;
    for (; characters > 0 && at < text.size(); --characters) {
      for (++at; at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80; ++at) {
      }
    }
    return at;
  }

  // A text as MeasureText breaks it; the last part is what a line has no room for.
  static std::vector<std::string> Lines(const ScriptObject &page, std::string text, double width) {
    std::vector<std::string> lines;
    while (!text.empty()) {
      const std::int64_t taken = page.Call("MeasureText", text.c_str(), width, true).AsInteger();
      const std::size_t bytes = taken > 0 ? BytesOf(text, taken) : text.size();
      lines.push_back(text.substr(0, bytes));
      text.erase(0, bytes);
    }
    return lines;
  }

  std::int64_t Box(const ScriptObject &page, const char *text, double width, const char *alignment) {
    std::vector<host::Value> arguments{text,
                                       100,
                                       700,
                                       100 + width,
                                       100,
                                       host().Constant(std::string("Page.TextAlignmentEnum.") + alignment),
                                       std::int64_t{99}};
    CallByRef(page, "TextRect", arguments);
    return arguments[6].AsInteger();
  }

  std::int64_t CountedLines(const ScriptObject &page, const char *text, double width) {
    std::vector<host::Value> arguments{text, width, std::int64_t{99}};
    CallByRef(page, "TextRectMeasure", arguments);
    return arguments[2].AsInteger();
  }
};

constexpr char kJapanese[] = "「日本語」の文章は、どこでも改行できる（ちょっと例外）。コーヒーを飲む人々。";

TEST_F(UnspacedText, JapaneseLinesBeginAndEndAsTheyMay) {
  QUILLBAR_NEEDS_FONT(kIpaMincho, "fonts-ipafont-mincho");
  const Document document = NewDocument();
  for (const ScriptObject &font : {document.GetFont("MS-Mincho"), LoadTrueType(document, kIpaMincho)}) {
    const ScriptObject page = TextPage(document, font);
    EXPECT_THAT(Lines(page, kJapanese, 55), ElementsAre("「日本語」", "の文章は、", "どこでも改", "行できる",
                                                        "（ちょっと", "例外）。", "コーヒーを", "飲む人々。"));
    EXPECT_THAT(Lines(page, kJapanese, 45), ElementsAre("「日本", "語」の文", "章は、ど", "こでも改", "行できる",
                                                        "（ちょっ", "と例", "外）。", "コーヒー", "を飲む", "人々。"));
    EXPECT_EQ(CountedLines(page, kJapanese, 45), 11);
    page.Call("EndText");
  }
}

TEST_F(UnspacedText, EveryBuiltInFaceAndItsLikeHasTheSameBreaks) {
  QUILLBAR_NEEDS_FONT(kNanumGothic, "fonts-nanum");
  QUILLBAR_NEEDS_FONT(kSong, "fonts-arphic-gbsn00lp");
  const Document document = NewDocument();
  ScriptObject page = TextPage(document, document.GetFont("SimSun"));
  EXPECT_THAT(Lines(page, "你好，世界！（简体）中文，没有空格。", 45),
              ElementsAre("你好，世", "界！（简", "体）中", "文，没有", "空格。"));
  page.Call("SetFont", LoadTrueType(document, kSong), 10);
  EXPECT_THAT(Lines(page, "你好，世界！（简体）中文，没有空格。", 45),
              ElementsAre("你好，世", "界！（简", "体）中", "文，没有", "空格。"));
  page.Call("SetFont", document.GetFont("MingLiU"), 10);
  EXPECT_THAT(Lines(page, "繁體中文，「沒有」空格。", 45), ElementsAre("繁體中", "文，「沒", "有」空", "格。"));
  page.Call("SetFont", document.GetFont("DotumChe"), 10);
  EXPECT_THAT(Lines(page, "한국어 문장입니다.", 35), ElementsAre("한국어 ", "문장입", "니다."));
  page.Call("SetFont", LoadTrueType(document, kNanumGothic), 10);
  EXPECT_THAT(Lines(page, "한국어 문장입니다.", 32), ElementsAre("한국어 ", "문장입", "니다."));
  page.Call("EndText");
}

TEST_F(UnspacedText, WordsOfLatinScriptStayWholeAmongIdeographs) {
  QUILLBAR_NEEDS_FONT(kIpaMincho, "fonts-ipafont-mincho");
  const Document document = NewDocument();
  for (const ScriptObject &font : {document.GetFont("MS-Mincho"), LoadTrueType(document, kIpaMincho)}) {
    const ScriptObject page = TextPage(document, font);
    EXPECT_THAT(Lines(page, "東京でPDF-writerを", 55), ElementsAre("東京で", "PDF-writer", "を"));
    EXPECT_THAT(Lines(page, "東京でincomprehensibilities", 50), ElementsAre("東京で", "incomprehensibilities"));
    EXPECT_EQ(CountedLines(page, "東京でincomprehensibilities", 50), 1) << "a word longer than the line ends the count";
    EXPECT_EQ(Box(page, "東京でincomprehensibilities", 50, "LEFT"), 3);
    page.Call("EndText");
  }
}

TEST_F(UnspacedText, TakesAllOfAnotherTextBeforeALineIsBrokenInsideIt) {
  const Document document = NewDocument();
  const ScriptObject page = TextPage(document, document.GetFont("MS-Mincho"));
  std::vector<host::Value> arguments{"日本語「", 35, true, 0.0F};
  EXPECT_EQ(CallByRef(page, "MeasureText", arguments).AsInteger(), 3);
  EXPECT_FLOAT_EQ(arguments[3].AsSingle(), 30) << "the width up to the break";
  arguments = {"日本語。", 35, true, 0.0F};
  EXPECT_EQ(CallByRef(page, "MeasureText", arguments).AsInteger(), 2);
  EXPECT_FLOAT_EQ(arguments[3].AsSingle(), 20);
  EXPECT_EQ(page.Call("MeasureText", "日本語。", 35, false).AsInteger(), 3) << "without word wrap anywhere";
  EXPECT_EQ(page.Call("MeasureText", "日本語。", 5, true).AsInteger(), 0);
  page.Call("EndText");
}

TEST_F(UnspacedText, BoxShowsItsLinesAndJustifiesThem) {
  QUILLBAR_NEEDS_FONT(kIpaMincho, "fonts-ipafont-mincho");
  for (const bool isBuiltIn : {true, false}) {
    const Document document = NewDocument();
    const ScriptObject font = isBuiltIn ? document.GetFont("MS-Mincho") : LoadTrueType(document, kIpaMincho);
    const ScriptObject page = TextPage(document, font);
    page.Set("TextLeading", 14);
    EXPECT_EQ(Box(page, kJapanese, 55, "JUSTIFY"), 38);
    page.Call("EndText");
    std::vector<double> spacings;
    std::size_t lines = 0;
    for (const ContentOperator &operation : document.Operators()) {
      if (operation.name == "Tc") spacings.push_back(operation.operands.at(0).number);
      if (operation.name == "'") ++lines;
    }
    EXPECT_EQ(lines, 8u);
    // Lines of five characters have 5 points for four gaps, those of four 15 for three; the last one has none.
    ASSERT_THAT(spacings, testing::SizeIs(testing::Ge(5)));
    for (const double spacing : spacings) {
      EXPECT_TRUE(std::abs(spacing - 1.25) < 0.01 || std::abs(spacing - 5) < 0.01 || spacing == 0) << spacing;
    }
    EXPECT_EQ(spacings.back(), 0);
    EXPECT_TRUE(JudgedFlawless(std::string_view(document.Saved())));
  }
}

TEST_F(UnspacedText, ThaiIsBrokenBetweenClustersOnlyWhereARunDoesNotFit) {
  QUILLBAR_NEEDS_FONT(kGaruda, "fonts-tlwg-garuda-ttf");
  const Document document = NewDocument();
  const ScriptObject page = TextPage(document, LoadTrueType(document, kGaruda));
  const auto lines = Lines(page, "ภาษาไทย ที่เก่าน้ำเก่าน้ำที่เก่าน้ำ", 45);
  EXPECT_EQ(lines.front(), "ภาษาไทย ");
  ASSERT_GT(lines.size(), 2u);
  for (const std::string &line : lines) {
    // No line begins with a mark or a vowel that follows, none ends with one that goes before.
    for (const char *mark : {"ี", "่", "้", "ำ", "า"}) EXPECT_FALSE(line.starts_with(mark)) << line;
    EXPECT_FALSE(line.ends_with("เ")) << line;
    std::vector<host::Value> arguments{line, 1000, true, 0.0F};
    CallByRef(page, "MeasureText", arguments);
    EXPECT_LE(arguments[3].AsSingle(), 45) << line;
  }
  // A run that fits a line of its own goes there whole.
  EXPECT_THAT(Lines(page, "กขค ภาษาไทย", 45), ElementsAre("กขค ", "ภาษาไทย"));
  EXPECT_EQ(CountedLines(page, "ภาษาไทยภาษาไทยภาษาไทย", 45), 3);
  std::vector<host::Value> arguments{"ภาษาไทยภาษาไทยภาษาไทย", 45, true, 0.0F};
  const std::int64_t taken = CallByRef(page, "MeasureText", arguments).AsInteger();
  EXPECT_GT(taken, 5);
  EXPECT_GT(arguments[3].AsSingle(), 30);
  EXPECT_LE(arguments[3].AsSingle(), 45);
  page.Call("EndText");
}

}  // namespace
}  // namespace quillbar::test
