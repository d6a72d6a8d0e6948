// SPDX-License-Identifier: MIT
// Measuring text as scripts see it: characters and widths.
#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "tests/plugin/text/text_page.h"
#include "tests/support/judges.h"
#include "tests/support/process.h"
#include "tests/support/real_fonts.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Measure : public TextTest {
 protected:
  static std::int64_t Fits(const ScriptObject &page, const char *text, double width, bool wordWrap) {
    return page.Call("MeasureText", text, width, wordWrap).AsInteger();
  }
};

TEST_F(Measure, WithoutAFontThereIsNothingToMeasure) {
  const Document document = NewDocument();
  EXPECT_EQ(Fits(document.AddPage(), "text", 100, true), -1);
}

TEST_F(Measure, EmptyTextMeasuresMinusOne) {
  const Document document = NewDocument();
  EXPECT_EQ(Fits(CourierPage(document), "", 100, true), -1);
}

TEST_F(Measure, WorksInEveryGraphicsMode) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Courier"), 10);
  EXPECT_EQ(Fits(page, "text", 100, true), 4);
  page.Call("MoveTo", 0, 0);
  EXPECT_EQ(Fits(page, "text", 100, true), 4);
  page.Call("EndPath");
}

TEST_F(Measure, BreaksBetweenWordsOrAnywhere) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  EXPECT_EQ(Fits(page, "one two three", 50, true), 8) << "with the white space";
  EXPECT_EQ(Fits(page, "one two three", 57, false), 9);
  EXPECT_EQ(Fits(page, "incomprehensibilities", 50, true), 0);
  EXPECT_EQ(Fits(page, "one\ntwo", 500, true), 4) << "never beyond a line feed";
}

TEST_F(Measure, WidthComesBackInTheFourthArgument) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  std::vector<host::Value> arguments{"one two three", 50, true, 0.0F};
  EXPECT_EQ(CallByRef(page, "MeasureText", arguments).AsInteger(), 8);
  EXPECT_FLOAT_EQ(arguments[3].AsSingle(), 42);
  arguments = {"three", 50, true, 0.0F};
  EXPECT_EQ(CallByRef(page, "MeasureText", arguments).AsInteger(), 5);
  EXPECT_FLOAT_EQ(arguments[3].AsSingle(), 30);
}

TEST_F(Measure, LengthsAreCharactersInEveryEncoding) {
  QUILLBAR_NEEDS_FONT(kIpaMincho, "fonts-ipafont-mincho");
  const Document document = NewDocument();
  const ScriptObject page = TextPage(document);
  page.Call("SetFont", document.GetFont("Courier"), 10);
  EXPECT_EQ(Fits(page, "äöü ß", 1000, true), 5);
  page.Call("SetFont", document.GetFont("MS-Mincho"), 10);
  EXPECT_EQ(Fits(page, "日本 語", 1000, true), 4);
  page.Call("SetFont", LoadTrueType(document, kIpaMincho), 10);
  EXPECT_EQ(Fits(page, "日本 語", 1000, true), 4);
  EXPECT_EQ(Fits(page, "日本 語", 28, true), 3) << "two ideographs of 10 points and a space";
  page.Call("EndText");
}

TEST_F(Measure, NumbersThatAreNoneMeasureNothing) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const double width : {kNan, -kInfinite}) EXPECT_EQ(Fits(page, "text", width, true), 0);
  EXPECT_EQ(Fits(page, "text", 0, true), 0);
  EXPECT_EQ(Fits(page, "text", -10, false), 0);
  for (const Failure &failure : document.TakeFailures()) EXPECT_EQ(failure.number, library_error::kInvalidParameter);
  page.Call("EndText");
}

TEST_F(Measure, InfiniteWidthIsNoLimit) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  std::vector<host::Value> arguments{"one two three", kInfinite, true, 0.0F};
  EXPECT_EQ(CallByRef(page, "MeasureText", arguments).AsInteger(), 13);
  EXPECT_FLOAT_EQ(arguments[3].AsSingle(), 13 * 6);
  EXPECT_EQ(Fits(page, "one two three", kInfinite, false), 13);
  EXPECT_EQ(Fits(page, "one\ntwo", kInfinite, true), 4);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  page.Call("EndText");
}

// Where poppler sees the right end of the last word of a line.
double RightEnd(const std::string &pdf) {
  const TemporaryFolder folder;
  WriteFile(folder / "page.pdf", pdf);
  const ProcessResult result = RunProcess({"pdftotext", "-bbox", folder / "page.pdf", "-"});
  const std::size_t at = result.output.rfind("xMax=\"");
  return at == std::string::npos ? -1 : std::atof(result.output.c_str() + at + 6);
}

TEST_F(Measure, WordSpaceIsShownAsItIsMeasuredInFontsOfTwoByteCodes) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  const std::string text = "one two three four";
  for (const bool isEmbedded : {true, false}) {
    SCOPED_TRACE(isEmbedded);
    const Document document = NewDocument();
    const ScriptObject font = isEmbedded ? LoadTrueType(document, kDejaVuSans) : document.GetFont("Helvetica");
    const ScriptObject page = TextPage(document, font, 10);
    std::vector<host::Value> arguments{text, 1000, false, 0.0F};
    CallByRef(page, "MeasureText", arguments);
    const float tight = arguments[3].AsSingle();
    page.Set("WordSpace", 5);
    CallByRef(page, "MeasureText", arguments);
    EXPECT_FLOAT_EQ(arguments[3].AsSingle(), tight + 15);
    page.Call("MoveTextPosition", 500 - arguments[3].AsSingle(), 600);
    page.Call("ShowText", text);
    page.Call("EndText");
    const std::string saved = document.Saved();
    EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
    EXPECT_NEAR(RightEnd(saved), 500, 0.1);
    EXPECT_EQ(ExtractedText(saved).substr(0, text.size()), text);
  }
}

TEST_F(Measure, WordSpaceOfTwoByteCodesMovesWhatFollows) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  const Document document = NewDocument();
  const ScriptObject page = TextPage(document, LoadTrueType(document, kDejaVuSans), 10);
  page.Set("WordSpace", 5);
  page.Call("MoveTextPosition", 100, 700);
  page.Call("ShowText", "a ");
  page.Call("ShowText", " b");
  page.Call("ShowTextNextLine", "a b");
  page.Set("WordSpace", 0);
  page.Call("ShowText", " c");
  page.Call("EndText");
  std::vector<std::string> shown;
  for (const ContentOperator &operation : document.Operators()) {
    if (operation.name == "T*" || operation.name == "Tj") shown.push_back(operation.name);
    if (operation.name != "TJ") continue;
    std::string pieces;
    for (const Operand &piece : operation.operands.at(0).elements) pieces += piece.text + ' ';
    shown.push_back(pieces);
  }
  using namespace std::string_literals;
  EXPECT_THAT(shown, ElementsAre("\0\1\0\2 -500 "s, "\0\2 -500 \0\3 "s, "T*", "\0\1\0\2 -500 \0\3 "s, "Tj"));
  const std::string saved = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
}

TEST_F(Measure, TextOfTenMegabytesIsAnErrorAndNotAWait) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  const std::string text(10'000'000, 'x');
  EXPECT_EQ(Fits(page, text.c_str(), 60, true), 0);
  for (const Failure &failure : document.TakeFailures()) EXPECT_EQ(failure.number, library_error::kStringOutOfRange);
  page.Call("EndText");
}

}  // namespace
}  // namespace quillbar::test
