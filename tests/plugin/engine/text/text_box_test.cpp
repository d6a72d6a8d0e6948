// SPDX-License-Identifier: MIT
// Text boxes and line counts of the library: line breaks, alignment, spacing, time.
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "plugin/engine/pages/page_object.h"
#include "plugin/engine/text/line_count.h"
#include "tests/plugin/engine/driver/font_document.h"
#include "tests/support/content_operator.h"
#include "tests/support/real_fonts.h"

namespace quillbar {
namespace {

using test::ContentOperator;
using test::FontDocument;
using test::SyntheticFont;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// A page in a text object, with Courier in 10 points: every character is 6 points wide.
class TextBoxTest : public testing::Test {
 protected:
  TextBoxTest() {
    Call<HPDF_Page_BeginText>(page());
    Call<HPDF_Page_SetFontAndSize>(page(), document_.Font("Courier", "WinAnsiEncoding"), 10.0F);
  }

  HPDF_Page page() const { return document_.page; }

  HPDF_STATUS Box(const std::string &text, HPDF_TextAlignment alignment = HPDF_TALIGN_LEFT, float width = 60,
                  float bottom = 0) {
    return Call<HPDF_Page_TextRect>(page(), 100.0F, 700.0F, 100.0F + width, bottom, text.c_str(), alignment, &taken_);
  }

  struct Count {
    HPDF_UINT lines = 99;
    HPDF_REAL height = 99;
  };
  Count Lines(const std::string &text, float width = 60) {
    Count count;
    Call<engine::CountTextLines>(page(), text.c_str(), width, &count.lines, &count.height);
    return count;
  }

  // What was shown, one entry a line.
  std::vector<std::string> Shown() const {
    std::vector<std::string> lines;
    const std::string content = ContentOf(page());
    for (std::size_t at = 0; (at = content.find('(', at)) != std::string::npos;) {
      const std::size_t end = content.find(')', at);
      lines.push_back(content.substr(at + 1, end - at - 1));
      at = end;
    }
    return lines;
  }

  FontDocument document_;
  HPDF_UINT taken_ = 0;
};

TEST_F(TextBoxTest, BreaksLinesAtWhiteSpace) {
  EXPECT_EQ(Box("one two three four"), HPDF_OK);
  EXPECT_THAT(Shown(), ElementsAre("one two", "three four"));
  EXPECT_EQ(taken_, 18u);
}

TEST_F(TextBoxTest, LineFeedEndsALine) {
  EXPECT_EQ(Box("one\ntwo\r\nthree"), HPDF_OK);
  EXPECT_THAT(Shown(), ElementsAre("one", "two", "three"));
}

TEST_F(TextBoxTest, BlankLineMovesOnWithoutText) {
  EXPECT_EQ(Box("one\n\ntwo"), HPDF_OK);
  EXPECT_THAT(Shown(), ElementsAre("one", "two"));
  EXPECT_THAT(ContentOf(page()), HasSubstr("T*"));
}

TEST_F(TextBoxTest, WordLongerThanTheBoxEndsTheText) {
  EXPECT_EQ(Box("one incomprehensibilities two"), HPDF_PAGE_INSUFFICIENT_SPACE);
  EXPECT_THAT(Shown(), ElementsAre("one"));
  EXPECT_EQ(taken_, 4u);
}

TEST_F(TextBoxTest, BoxThatIsFullKeepsTheRest) {
  // Room for two lines and not for a third.
  Call<HPDF_Page_SetTextLeading>(page(), 12.0F);
  EXPECT_EQ(Box("aaaaaaaaaa bbbbbbbbbb cccccccccc", HPDF_TALIGN_LEFT, 60, 670), HPDF_PAGE_INSUFFICIENT_SPACE);
  EXPECT_THAT(Shown(), ElementsAre("aaaaaaaaaa", "bbbbbbbbbb"));
}

TEST_F(TextBoxTest, RightAndCentredLinesBeginWhereTheyMust) {
  Box("ab abcdefgh", HPDF_TALIGN_RIGHT, 50);
  EXPECT_THAT(ContentOf(page()), HasSubstr("138 "));  // 100 + 50 - 2 × 6
  Box("abcdef", HPDF_TALIGN_CENTER, 60);
  const HPDF_TransMatrix matrix = engine::AttributesOf(page()).text_matrix;
  EXPECT_FLOAT_EQ(matrix.x, 112);  // 100 + (60 - 36) / 2
}

TEST_F(TextBoxTest, JustifiedLineReachesTheRightEdge) {
  Box("abc defgh ijklmn", HPDF_TALIGN_JUSTIFY, 60);
  // Nine characters of 54 points, eight gaps for the 6 that are left.
  EXPECT_THAT(ContentOf(page()), HasSubstr("0.75 Tc"));
  EXPECT_EQ(engine::AttributesOf(page()).gstate->char_space, 0);
}

TEST_F(TextBoxTest, JustifyingOneCharacterDividesByNothing) {
  EXPECT_EQ(Box("a incomprehensible", HPDF_TALIGN_JUSTIFY, 90), HPDF_PAGE_INSUFFICIENT_SPACE);
  EXPECT_THAT(ContentOf(page()), Not(HasSubstr("Tc")));
  EXPECT_THAT(Shown(), ElementsAre("a"));
}

TEST_F(TextBoxTest, LastLineOfAParagraphIsNotJustified) {
  Box("abc defgh\nab cd", HPDF_TALIGN_JUSTIFY, 60);
  EXPECT_THAT(ContentOf(page()), Not(HasSubstr("Tc")));
}

TEST_F(TextBoxTest, CharacterSpacingIsKept) {
  for (const HPDF_TextAlignment alignment :
       {HPDF_TALIGN_LEFT, HPDF_TALIGN_RIGHT, HPDF_TALIGN_CENTER, HPDF_TALIGN_JUSTIFY}) {
    Call<HPDF_Page_SetCharSpace>(page(), 1.5F);
    Box("one two three four five six", alignment, 80);
    EXPECT_FLOAT_EQ(engine::AttributesOf(page()).gstate->char_space, 1.5F) << alignment;
  }
}

TEST_F(TextBoxTest, CharacterSpacingCountsWhenLinesAreBroken) {
  Call<HPDF_Page_SetCharSpace>(page(), 2.0F);
  Box("abc defg", HPDF_TALIGN_LEFT, 55);  // 8 × 6 would fit
  EXPECT_THAT(Shown(), ElementsAre("abc", "defg"));
}

TEST_F(TextBoxTest, NumbersThatAreNoneAreRefused) {
  EXPECT_NE(Box("text", HPDF_TALIGN_LEFT, std::nanf("")), HPDF_OK);
  EXPECT_NE(Box("text", HPDF_TALIGN_LEFT, HUGE_VALF), HPDF_OK);
  EXPECT_THAT(Shown(), ElementsAre());
}

TEST_F(TextBoxTest, EmptyAndNegativeWidthsHoldNothing) {
  EXPECT_EQ(Box("text", HPDF_TALIGN_LEFT, 0), HPDF_PAGE_INSUFFICIENT_SPACE);
  EXPECT_EQ(Box("text", HPDF_TALIGN_JUSTIFY, -60), HPDF_PAGE_INSUFFICIENT_SPACE);
  EXPECT_EQ(taken_, 0u);
}

TEST_F(TextBoxTest, TextMatrixThatFlattensTheTextIsAnError) {
  Call<HPDF_Page_SetTextMatrix>(page(), 1.0F, 1.0F, 1.0F, 1.0F, 0.0F, 0.0F);
  EXPECT_NE(Box("text"), HPDF_OK);
  EXPECT_THAT(ContentOf(page()), Not(HasSubstr("inf")));
}

// Which line of turned text is the last is decided by the height at which it would end if it held all the
// text left for it. Nothing better can be said of a box with a lower edge that the text runs across, and
// applications have their boxes arranged for it.
TEST_F(TextBoxTest, TurnedTextEndsWhereAllTheRestOnOneLineWouldEndBelowTheBox) {
  constexpr int kLines = 7;
  const std::string text = "aa bb cc dd ee ff gg";  // in a box that holds two characters on a line
  const HPDF_Box extent = Call<HPDF_Font_GetBBox>(Call<HPDF_Page_GetCurrentFont>(page()));
  for (const float rise : {0.6F, -0.6F}) {
    for (float bottom = 560; bottom < 800; bottom += 7) {
      FontDocument document;
      Call<HPDF_Page_BeginText>(document.page);
      Call<HPDF_Page_SetFontAndSize>(document.page, document.Font("Courier", "WinAnsiEncoding"), 10.0F);
      Call<HPDF_Page_SetTextLeading>(document.page, 12.0F);
      Call<HPDF_Page_SetTextMatrix>(document.page, 0.8F, rise, -rise, 0.8F, 0.0F, 0.0F);
      HPDF_UINT taken = 0;
      Call<HPDF_Page_TextRect>(document.page, 100.0F, 700.0F, 115.0F, static_cast<float>(bottom), text.c_str(),
                               HPDF_TALIGN_LEFT, &taken);
      int expected = 0;
      for (bool fits = true; fits && expected < kLines;) {
        ++expected;
        const double start = 700 - extent.top / 100 + 12 - 12 * 0.8 * expected;
        const double charactersLeft = 20 - 3 * (expected - 1);
        fits = start + 6 * charactersLeft * rise - 12 >= bottom - extent.bottom / 100;
      }
      EXPECT_EQ(static_cast<int>(taken), std::min(3 * expected, 20)) << rise << ' ' << bottom;
    }
  }
}

TEST_F(TextBoxTest, TextTooLongForTheLibraryIsAnError) {
  EXPECT_EQ(Box(std::string(65'536, 'x')), HPDF_STRING_OUT_OF_RANGE);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_STRING_OUT_OF_RANGE));
}

TEST_F(TextBoxTest, TimeGrowsWithTheLengthOfTheText) {
  // The longest text that the library takes, on 21,845 lines that climb and so never leave the box. A routine
  // that looks at the whole rest for each of them needs minutes; a busy machine needs some seconds for what is right.
  Call<HPDF_Page_SetTextLeading>(page(), -1.0F);
  std::string text;
  while (text.size() + 3 <= 65'535) text += "ab ";
  for (const float rise : {0.0F, 0.6F}) {  // level and turned
    Call<HPDF_Page_SetTextMatrix>(page(), 0.8F, rise, -rise, 0.8F, 0.0F, 0.0F);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Box(text, HPDF_TALIGN_LEFT, 12), HPDF_OK);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_EQ(taken_, text.size());
  }
}

TEST_F(TextBoxTest, EmbeddedFontBreaksAndShowsWholeCharacters) {
  HPDF_Font font = document_.Font(document_.Load(SyntheticFont(4, 0x4E00).Build()));  // 一 and the two behind it
  Call<HPDF_Page_SetFontAndSize>(page(), font, 10.0F);
  EXPECT_EQ(Box("一丁 丂一", HPDF_TALIGN_LEFT, 15), HPDF_OK);
  EXPECT_THAT(ContentOf(page()), HasSubstr("<00010002> '"));
  EXPECT_THAT(ContentOf(page()), HasSubstr("<00030001> '"));
  EXPECT_EQ(taken_, 13u) << "bytes";
}

TEST_F(TextBoxTest, CountsLinesAsTheBoxBreaksThem) {
  Call<HPDF_Page_SetTextLeading>(page(), 12.0F);
  const Count count = Lines("one two three four");
  EXPECT_EQ(count.lines, 2u);
  EXPECT_FLOAT_EQ(count.height, 24);
}

TEST_F(TextBoxTest, CountOfAnEmptyTextIsZero) {
  const Count count = Lines("");
  EXPECT_EQ(count.lines, 0u);
  EXPECT_EQ(count.height, 0);
}

TEST_F(TextBoxTest, WordLongerThanTheWidthEndsTheCount) {
  EXPECT_EQ(Lines("one incomprehensibilities two").lines, 1u);
  EXPECT_EQ(Lines("incomprehensibilities").lines, 0u);
}

TEST_F(TextBoxTest, CountedLinesOfLeadingZeroAreAsHighAsTheFont) {
  const HPDF_Box box = Call<HPDF_Font_GetBBox>(Call<HPDF_Page_GetCurrentFont>(page()));
  EXPECT_FLOAT_EQ(Lines("one").height, (box.top - box.bottom) / 1000 * 10);
}

TEST_F(TextBoxTest, EachLineFeedEndsACountedLineOnce) {
  EXPECT_EQ(Lines("one\ntwo\nthree").lines, 3u);
  EXPECT_EQ(Lines("one\n\ntwo").lines, 3u);
  EXPECT_EQ(Lines("one\n").lines, 1u);
  EXPECT_EQ(Lines("one\r\ntwo").lines, 2u);
}

TEST_F(TextBoxTest, CountOutsideATextObjectIsAnError) {
  Call<HPDF_Page_EndText>(page());
  const Count count = Lines("one");
  EXPECT_EQ(count.lines, 99u);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_PAGE_INVALID_GMODE));
}

TEST_F(TextBoxTest, CountingATextOfTenMegabytesIsAnErrorAndNotAWait) {
  Lines(std::string(10'000'000, 'x'));
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_STRING_OUT_OF_RANGE));
}

TEST_F(TextBoxTest, NeedNotTellHowMuchItTook) {
  EXPECT_EQ(Call<HPDF_Page_TextRect>(page(), 100.0F, 700.0F, 160.0F, 0.0F, "some text", HPDF_TALIGN_LEFT, nullptr),
            HPDF_OK);
  EXPECT_THAT(Shown(), ElementsAre("some text"));
  HPDF_UINT taken = 99;
  EXPECT_EQ(Call<HPDF_Page_TextRect>(page(), 100.0F, 700.0F, 160.0F, 0.0F, nullptr, HPDF_TALIGN_LEFT, &taken), HPDF_OK);
  EXPECT_EQ(taken, 0U);
}

TEST_F(TextBoxTest, TextMayRunDownwards) {
  HPDF_UseCNSFonts(document_.document);
  HPDF_UseCNSEncodings(document_.document);
  Call<HPDF_Page_SetFontAndSize>(page(), document_.Font("SimSun", "GBK-EUC-V"), 10.0F);
  EXPECT_EQ(Box("a"), HPDF_OK);
  const HPDF_Point afterOne = HPDF_Page_GetCurrentTextPos(page());
  EXPECT_EQ(Box("abc"), HPDF_OK);
  EXPECT_EQ(taken_, 3U);
  EXPECT_THAT(ContentOf(page()), HasSubstr("<616263>"));
  const HPDF_Point afterThree = HPDF_Page_GetCurrentTextPos(page());
  EXPECT_FLOAT_EQ(afterThree.x, afterOne.x);
  EXPECT_NEAR(afterThree.y, afterOne.y - 20, 0.01) << "two more characters, each 10 points high";
}

// What is not seen at the end of a line takes no room on its right.
TEST_F(TextBoxTest, WhiteSpaceOfAnyKindAtTheEndOfALineIsNotShown) {
  for (const char *space : {" ", "\t", "\f", "\r", "\n", " \t\f "}) {
    EXPECT_EQ(Box("word" + std::string(space), HPDF_TALIGN_RIGHT), HPDF_OK);
    EXPECT_EQ(Shown().back(), "word");
    EXPECT_EQ(taken_, 4 + std::string_view(space).size());
  }
}

TEST_F(TextBoxTest, LinesOfOrderedTextAreCounted) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  Call<HPDF_Page_SetFontAndSize>(page(), document_.Font(document_.Load(test::kDejaVuSans)), 10.0F);
  const std::string plain = "שלום עולם שלום עולם", ordered = "\u200F" + plain;
  EXPECT_EQ(Lines(plain, 1000).lines, 1U);
  EXPECT_EQ(Lines(ordered, 1000).lines, 1U);
  EXPECT_GT(Lines(ordered, 40).lines, 1U);
  EXPECT_EQ(Lines(ordered, 40).lines, Lines(plain, 40).lines);
}

}  // namespace
}  // namespace quillbar
