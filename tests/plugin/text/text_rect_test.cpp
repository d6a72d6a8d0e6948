// SPDX-License-Identifier: MIT
// Text boxes as scripts see them: lines, positions, and how much of a text goes in.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "tests/plugin/text/text_page.h"
#include "tests/support/judges.h"
#include "tests/support/real_fonts.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

enum Alignment { kLeft, kRight, kCenter, kJustify };

class TextRect : public TextTest {
 protected:
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

TEST_F(TextRect, CountsTheLinesOfABox) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  page.Set("TextLeading", 12);
  const Lines lines = CountLines(page, "one two three four", 60);
  EXPECT_EQ(lines.count, 2);
  EXPECT_FLOAT_EQ(lines.height, 24);
  EXPECT_EQ(CountLines(page, "incomprehensibilities", 60).count, 0);
  page.Call("EndText");
}

TEST_F(TextRect, CountOfAnEmptyTextIsZero) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  const Lines lines = CountLines(page, "", 60);
  EXPECT_EQ(lines.count, 0);
  EXPECT_EQ(lines.height, 0);
  page.Call("EndText");
}

TEST_F(TextRect, CountOutsideATextObjectIsZeroInSilence) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Courier"), 10);
  EXPECT_EQ(CountLines(page, "text", 60).count, 0);
  EXPECT_EQ(Box(page, "text", 0, 700, 60, 0, kLeft), 0);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(TextRect, CountWithALeadingOfZeroTakesTheSuggestedOneAndLeavesItZero) {
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

class Alignments : public TextRect {
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

TEST_F(TextRect, BoxFromTheTopIsTheBoxFromTheBottomTurned) {
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

TEST_F(TextRect, BoxByItsBaselinePutsTheFirstLineThere) {
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

TEST_F(TextRect, BoxThatIsFullTellsHowMuchWentIn) {
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

TEST_F(TextRect, BoxCountsTheLinesThatWereSet) {
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

TEST_F(TextRect, BoxCountsCharactersOfItsTextWhateverAHandlerSets) {
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

TEST_F(TextRect, BoxIsAlignedLeftByANumberThatIsNoAlignment) {
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

TEST_F(TextRect, BoxLeavesALeadingOfZero) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  Box(page, "one two three", 100, 700, 160, 100, kLeft);
  EXPECT_EQ(page.GetSingle("TextLeading"), 0);
  page.Call("EndText");
}

TEST_F(TextRect, LengthsAreCharactersInFontsOfManyBytesToo) {
  const Document document = NewDocument();
  const ScriptObject page = TextPage(document, LoadTrueType(document, kIpaMincho));
  EXPECT_EQ(Box(page, "日本 語", 0, 700, 28, 0, kLeft), 4);
  page.Call("EndText");
}

TEST_F(TextRect, NumbersThatAreNoneHoldNothing) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const double width : {std::numeric_limits<double>::quiet_NaN(), kInfinite, -kInfinite}) {
    EXPECT_EQ(CountLines(page, "text", width).count, 0);
    EXPECT_EQ(Box(page, "text", 0, 700, width, 0, kJustify), 0);
  }
  for (const Failure &failure : document.TakeFailures()) EXPECT_EQ(failure.number, library_error::kInvalidParameter);
  page.Call("EndText");
}

TEST_F(TextRect, TextOfTenMegabytesIsAnErrorAndNotAWait) {
  const Document document = NewDocument();
  const ScriptObject page = CourierPage(document);
  const std::string text(10'000'000, 'x');
  EXPECT_EQ(Box(page, text, 100, 700, 160, 100, kLeft), 0);
  EXPECT_EQ(CountLines(page, text, 60).count, 0);
  for (const Failure &failure : document.TakeFailures()) EXPECT_EQ(failure.number, library_error::kStringOutOfRange);
  page.Call("EndText");
}

}  // namespace
}  // namespace quillbar::test
