// SPDX-License-Identifier: MIT
// Measuring text and text boxes as scripts see them: characters, widths, lines, positions.
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
using testing::SizeIs;

enum Alignment { kLeft, kRight, kCenter, kJustify };

class Measure : public TextTest {
 protected:
  // A page with Courier in 10 points, in which every character is 6 points wide.
  ScriptObject CourierPage(const Document &document) { return TextPage(document, document.GetFont("Courier")); }

  static std::int64_t Fits(const ScriptObject &page, const char *text, double width, bool wordWrap) {
    return page.Call("MeasureText", text, width, wordWrap).AsInteger();
  }

  struct Lines {
    float height;
    std::int64_t count;
  };
  Lines CountLines(const ScriptObject &page, const host::Value &text, double width) {
    std::vector<host::Value> arguments{text, width, std::int64_t{99}};
    const float height = CallByRef(page, "TextRectMeasure", arguments).AsSingle();
    return {height, arguments[2].AsInteger()};
  }

  std::int64_t Box(const ScriptObject &page, const host::Value &text, double left, double top, double right,
                   double bottom, Alignment alignment) {
    constexpr const char *kNames[] = {"LEFT", "RIGHT", "CENTER", "JUSTIFY"};
    std::vector<host::Value> arguments{text,
                                       left,
                                       top,
                                       right,
                                       bottom,
                                       host().Constant(std::string("Page.TextAlignmentEnum.") + kNames[alignment]),
                                       std::int64_t{99}};
    CallByRef(page, "TextRect", arguments);
    return arguments[6].AsInteger();
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
  EXPECT_EQ(Box(page, "日本 語", 0, 700, 28, 0, kLeft), 4);
  page.Call("EndText");
}

TEST_F(Measure, NumbersThatAreNoneMeasureNothing) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const double width : {kNan, kInfinite, -kInfinite}) {
    if (width != kInfinite) {
      EXPECT_EQ(Fits(page, "text", width, true), 0);
    }
    EXPECT_EQ(CountLines(page, "text", width).count, 0);
    EXPECT_EQ(Box(page, "text", 0, 700, width, 0, kJustify), 0);
  }
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
    EXPECT_EQ(Box(page, text, 100, 700, 500, 600, kRight), 18);
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

TEST_F(Measure, CountsTheLinesOfABox) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  page.Set("TextLeading", 12);
  const Lines lines = CountLines(page, "one two three four", 60);
  EXPECT_EQ(lines.count, 2);
  EXPECT_FLOAT_EQ(lines.height, 24);
  EXPECT_EQ(CountLines(page, "incomprehensibilities", 60).count, 0);
  page.Call("EndText");
}

TEST_F(Measure, CountOfAnEmptyTextIsZero) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  const Lines lines = CountLines(page, "", 60);
  EXPECT_EQ(lines.count, 0);
  EXPECT_EQ(lines.height, 0);
  page.Call("EndText");
}

TEST_F(Measure, CountOutsideATextObjectIsZeroInSilence) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Courier"), 10);
  EXPECT_EQ(CountLines(page, "text", 60).count, 0);
  EXPECT_EQ(Box(page, "text", 0, 700, 60, 0, kLeft), 0);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Measure, CountWithALeadingOfZeroTakesTheSuggestedOneAndLeavesItZero) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  const float suggested = page.Call("SuggestedTextLeading").AsSingle();
  EXPECT_FLOAT_EQ(CountLines(page, "one two three four", 60).height, 2 * suggested);
  EXPECT_EQ(page.GetSingle("TextLeading"), 0);
  page.Call("EndText");
}

// Where each line of a text box begins, and its text: from the operators that place and show it.
struct PlacedLine {
  double x, y;
  std::string text;
};

std::vector<PlacedLine> PlacedLines(const Document &document) {
  std::vector<PlacedLine> lines;
  double x = 0, y = 0, leading = 0;
  for (const ContentOperator &operation : document.Operators()) {
    if (operation.name == "Td") {
      x += operation.operands.at(0).number;
      y += operation.operands.at(1).number;
    } else if (operation.name == "TL") {
      leading = operation.operands.at(0).number;
    } else if (operation.name == "'") {
      y -= leading;
      lines.push_back({x, y, operation.operands.at(0).text});
    }
  }
  return lines;
}

class Alignments : public Measure {
 protected:
  // Three lines in a box from 100 to 160: 42, 60 and 24 points wide.
  std::vector<PlacedLine> Set(Alignment alignment) {
    const Document document = NewDocument();
    const ScriptObject page = CourierPage(document);
    page.Set("TextLeading", 12);
    EXPECT_EQ(Box(page, "one two three four five", 100, 700, 160, 100, alignment), 23);
    EXPECT_EQ(page.GetSingle("TextLeading"), 12);
    page.Call("EndText");
    const std::string saved = document.Saved();
    EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
    return PlacedLines(document);
  }
};

TEST_F(Alignments, LeftLinesBeginAtTheLeftEdge) {
  const auto lines = Set(kLeft);
  ASSERT_THAT(lines, SizeIs(3));
  for (const PlacedLine &line : lines) EXPECT_NEAR(line.x, 100, 0.01);
  EXPECT_EQ(lines[1].text, "three four");
}

TEST_F(Alignments, RightLinesEndAtTheRightEdge) {
  const auto lines = Set(kRight);
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_NEAR(lines[0].x, 118, 0.01);
  EXPECT_NEAR(lines[1].x, 100, 0.01);
  EXPECT_NEAR(lines[2].x, 136, 0.01);
}

TEST_F(Alignments, CentredLinesHaveTheSameRoomOnBothSides) {
  const auto lines = Set(kCenter);
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_NEAR(lines[0].x, 109, 0.01);
  EXPECT_NEAR(lines[1].x, 100, 0.01);
  EXPECT_NEAR(lines[2].x, 118, 0.01);
}

TEST_F(Alignments, JustifiedLinesAreSpacedOutButTheLast) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  Box(page, "one two three four five", 100, 700, 160, 100, kJustify);
  page.Call("EndText");
  std::vector<double> spacings;
  for (const ContentOperator &operation : document.Operators()) {
    if (operation.name == "Tc") spacings.push_back(operation.operands.at(0).number);
  }
  // 18 points for six gaps, then none for a line that fills the box and for the last one.
  EXPECT_THAT(spacings, ElementsAre(testing::DoubleNear(3, 0.01), 0));
}

TEST_F(Alignments, LinesFollowEachOtherByTheLeading) {
  const auto lines = Set(kLeft);
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_NEAR(lines[0].y - lines[1].y, 12, 0.01);
  EXPECT_NEAR(lines[1].y - lines[2].y, 12, 0.01);
}

TEST_F(Measure, BoxFromTheTopIsTheBoxFromTheBottomTurned) {
  const auto lines = [&](bool fromTop) {
    const Document document = NewDocument();
    const ScriptObject page = CourierPage(document);
    const double height = page.GetSingle("Height");
    page.Set("TransformCoordinates", fromTop);
    EXPECT_EQ(Box(page, "one two three", 100, fromTop ? 100 : height - 100, 160, fromTop ? 300 : height - 300, kLeft),
              13);
    page.Call("EndText");
    return PlacedLines(document);
  };
  const auto fromTop = lines(true), fromBottom = lines(false);
  ASSERT_EQ(fromTop.size(), fromBottom.size());
  for (std::size_t i = 0; i < fromTop.size(); ++i) EXPECT_NEAR(fromTop[i].y, fromBottom[i].y, 0.01);
}

TEST_F(Measure, BoxByItsBaselinePutsTheFirstLineThere) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  page.Set("TextLeading", 12);
  std::vector<host::Value> arguments{"one two three", 100, 500, 60, 100, host().Constant("Page.TextAlignmentEnum.LEFT"),
                                     std::int64_t{0}};
  CallByRef(page, "TextRectBaseline", arguments);
  page.Call("EndText");
  EXPECT_EQ(arguments[6].AsInteger(), 13);
  const auto lines = PlacedLines(document);
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_NEAR(lines[0].y, 500, 0.01);
}

TEST_F(Measure, BoxThatIsFullTellsHowMuchWentIn) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  page.Set("TextLeading", 12);
  EXPECT_EQ(Box(page, "äbc def ghi", 100, 700, 120, 690, kLeft), 4);
  EXPECT_EQ(Box(page, "text", 100, 700, 110, 0, kLeft), 0) << "a word wider than the box";
  EXPECT_EQ(Box(page, "", 100, 700, 110, 0, kLeft), 0);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  page.Call("EndText");
}

// A page on which the second line of a right-aligned box has no position: after the first one the text matrix
// is beyond what a number can hold.
void LoseThePositionAfterALine(const ScriptObject &page) {
  page.Set("TextLeading", 1e38F);
  page.Call("SetTextMatrix", 1, 0, 10, 0.001F, 0, 0);
}

TEST_F(Measure, BoxCountsTheLinesThatWereSet) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  LoseThePositionAfterALine(page);
  EXPECT_EQ(Box(page, "one two three four five", 100, -1e38, 160, -3e38, kRight), 8);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 0}));
  page.Call("SetTextMatrix", 1, 1, 1, 1, 0, 0);  // leads nowhere on the page
  EXPECT_EQ(Box(page, "one two three four five", 100, 700, 160, 100, kLeft), 0);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 0}));
  page.Call("EndText");
  EXPECT_THAT(PlacedLines(document), SizeIs(1));
}

TEST_F(Measure, BoxCountsCharactersOfItsTextWhateverAHandlerSets) {
  const Document document = NewDocument();
  const ScriptObject page = TextPage(document, document.GetFont("MS-Mincho"));
  LoseThePositionAfterALine(page);
  host().SetEventHandler(document.handle(), "ErrorLog", [&](const host::ObjectHandle &, std::span<host::Value>) {
    page.Call("SetFont", document.GetFont("Courier"), 10);
    return host::Value();
  });
  EXPECT_EQ(Box(page, "日本 日本 日本", 100, -1e38, 128, -3e38, kRight), 3);
  host().SetEventHandler(document.handle(), "ErrorLog", {});
  page.Call("EndText");
}

TEST_F(Measure, BoxIsAlignedLeftByANumberThatIsNoAlignment) {
  for (const std::int64_t alignment : {std::int64_t{-1}, std::int64_t{4}, kHighBitOnly, kHighBitOnly + kRight}) {
    const Document document = NewDocument();
    const ScriptObject page = CourierPage(document);
    std::vector<host::Value> arguments{"one two three four five", 100, 700, 160, 100, alignment, std::int64_t{99}};
    CallByRef(page, "TextRect", arguments);
    EXPECT_EQ(arguments[6].AsInteger(), 23);
    page.Call("EndText");
    const auto lines = PlacedLines(document);
    ASSERT_THAT(lines, SizeIs(3));
    for (const PlacedLine &line : lines) EXPECT_NEAR(line.x, 100, 0.01);
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
  }
}

TEST_F(Measure, BoxLeavesALeadingOfZero) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  Box(page, "one two three", 100, 700, 160, 100, kLeft);
  EXPECT_EQ(page.GetSingle("TextLeading"), 0);
  page.Call("EndText");
}

TEST_F(Measure, TextOfTenMegabytesIsAnErrorAndNotAWait) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  const std::string text(10'000'000, 'x');
  EXPECT_EQ(Fits(page, text.c_str(), 60, true), 0);
  EXPECT_EQ(Box(page, text, 100, 700, 160, 100, kLeft), 0);
  EXPECT_EQ(CountLines(page, text, 60).count, 0);
  for (const Failure &failure : document.TakeFailures()) EXPECT_EQ(failure.number, library_error::kStringOutOfRange);
  page.Call("EndText");
}

}  // namespace
}  // namespace quillbar::test
