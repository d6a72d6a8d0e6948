// SPDX-License-Identifier: MIT
// ShowText and ShowTextNextLine with text that the font's encoding holds.
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ShowText : public PluginTest {
 protected:
  static ScriptObject AddTextPage(const Document &document, const ScriptObject &font) {
    const ScriptObject page = document.AddPage();
    page.Call("BeginText");
    page.Call("SetFont", font, 12);
    return page;
  }
};

TEST_F(ShowText, IsIgnoredOnAPageWithoutAFont) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("ShowText", "text");
  page.Call("ShowTextNextLine", "text");
  page.Call("EndText");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), Op("ET")));
}

TEST_F(ShowText, WritesTheBytesOfTheFontsEncoding) {
  const Document document = NewDocument();
  const ScriptObject page = AddTextPage(document, document.GetFont("Helvetica", 1));
  page.Call("ShowText", "Gr\u00FC\u00DFe, 5 \u20AC");
  page.Call("SetFont", document.GetFont("Helvetica", 0), 12);
  page.Call("ShowText", "Gr\u00FC\u00DFe");
  page.Call("EndText");
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 6U);
  EXPECT_THAT(operators[2], Op("Tj",
                               "Gr\xFC\xDF"
                               "e, 5 \x80"));
  EXPECT_THAT(operators[4], Op("Tj",
                               "Gr\x9F\xA7"
                               "e"));
}

TEST_F(ShowText, CharactersThatDelimitStringsArriveAsTheyAre) {
  const Document document = NewDocument();
  const ScriptObject page = AddTextPage(document, document.GetFont("Courier"));
  const std::string text = "(()) \\ \\n <a> [b] {c} % /d ((";
  page.Call("ShowText", text);
  page.Call("ShowText", "tab\tline\nreturn\r");
  page.Call("EndText");
  const std::string saved = document.Saved();
  const std::vector<ContentOperator> operators = PdfFile(saved).Operators(0);
  ASSERT_EQ(operators.size(), 5U);
  EXPECT_THAT(operators[2], Op("Tj", text));
  EXPECT_THAT(operators[3], Op("Tj", "tab\tline\nreturn\r"));
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
}

TEST_F(ShowText, EveryByteOfAnEncodingSurvivesTheString) {
  const Document document = NewDocument();
  const ScriptObject page = AddTextPage(document, document.GetFont("Helvetica", 0));
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  page.Call("ShowText", host::StringHandle::FromBytes(bytes, TextEncoding::kMacRoman));
  page.Call("EndText");
  EXPECT_THAT(document.Operators().at(2), Op("Tj", bytes));
}

TEST_F(ShowText, EmptyTextShowsNothing) {
  const Document document = NewDocument();
  const ScriptObject page = AddTextPage(document, document.GetFont("Helvetica"));
  page.Call("ShowText", "");
  page.Call("EndText");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), testing::_, Op("ET")));
}

TEST_F(ShowText, AutomaticFontShowsTextThatWindowsLatin1Holds) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Helvetica", 100);
  const ScriptObject page = AddTextPage(document, font);
  page.Call("ShowText", "caf\u00E9 \u2014 5 \u20AC");
  page.Call("EndText");
  EXPECT_THAT(document.Operators().at(2), Op("Tj", "caf\xE9 \x97 5 \x80"));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(ShowText, TextThatIsTooLongIsRefusedAndTheNextIsShown) {
  const Document document = NewDocument();
  const ScriptObject page = AddTextPage(document, document.GetFont("Helvetica"));
  page.Set("TextLeading", 10);
  const std::string tooLong(70000, 'x');
  page.Call("ShowText", tooLong);
  page.Call("ShowTextNextLine", tooLong);
  const Failure refused{library_error::kStringOutOfRange, 0};
  EXPECT_THAT(document.TakeFailures(), ElementsAre(refused, refused));
  EXPECT_EQ(document.LastFailure(), refused);
  page.Call("ShowText", "short");
  page.Call("EndText");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), testing::_, Op("TL", 10), Op("Tj", "short"), Op("ET")));
}

TEST_F(ShowText, NextLineWithALeadingOfZeroTakesTheSuggestedOneForThisLineOnly) {
  const Document document = NewDocument();
  const ScriptObject page = AddTextPage(document, document.GetFont("Helvetica"));
  // Helvetica's bounding box reaches from -225 to 931.
  const float suggested = (931.0F + 225.0F) / 1000.0F * 12.0F;
  EXPECT_FLOAT_EQ(page.Call("SuggestedTextLeading").AsSingle(), suggested);
  page.Call("ShowTextNextLine", "first");
  EXPECT_EQ(page.GetSingle("TextLeading"), 0.0F);
  page.Set("TextLeading", 20);
  page.Call("ShowTextNextLine", "second");
  EXPECT_EQ(page.GetSingle("TextLeading"), 20.0F);
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), testing::_, Op("TL", suggested), Op("'", "first"),
                                                Op("TL", 0), Op("TL", 20), Op("'", "second"), Op("ET")));
}

TEST_F(ShowText, MovesTheTextPositionByItsWidth) {
  const Document document = NewDocument();
  const ScriptObject page = AddTextPage(document, document.GetFont("Helvetica"));
  page.Call("MoveTextPosition", 100, 200);
  page.Call("ShowText", "text");
  std::vector<host::Value> position{host::Value(0.0F), host::Value(0.0F)};
  host().CallByRef(page.handle(), "GetCurrentTextPosition", position);
  // Widths of t, e, x, t in 1/1000: 278 + 556 + 500 + 278.
  EXPECT_NEAR(position[0].AsSingle(), 100 + 1.612F * 12, 1e-3F);
  EXPECT_EQ(position[1].AsSingle(), 200.0F);
  page.Call("EndText");
}

TEST_F(ShowText, StandsWhereItWasPutInBothCoordinateSystems) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Helvetica-Bold");
  for (const bool fromTop : {false, true}) {
    const ScriptObject page = document.AddPage();
    page.Set("Width", 200);
    page.Set("Height", 100);
    page.Set("TransformCoordinates", fromTop);
    page.Call("BeginText");
    page.Call("SetFont", font, 40);
    page.Call("MoveTextPosition", 10, fromTop ? 40 : 60);
    page.Call("ShowText", "\u2014");  // a dash a whole em wide, about a third of an em above the baseline
    page.Call("EndText");
  }
  const std::string saved = document.Saved();
  const PdfFile file(saved);
  EXPECT_EQ(file.Content(0), file.Content(1));
  const Rendering rendering(saved, 2);
  bool isInked = false;
  for (int row = 20; row < 40; ++row) isInked = isInked || rendering.PixelAt(30, row) == 0U;
  EXPECT_TRUE(isInked);
  EXPECT_EQ(rendering.PixelAt(30, 70), 0xFFFFFFU);
}

}  // namespace
}  // namespace quillbar::test
