// SPDX-License-Identifier: MIT
// Font, leading, rise, word space and rendering mode.
#include <limits>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Members of Font.FontEncodingEnum.
constexpr std::int64_t kMacRoman = 0;

class TextState : public PluginTest {};

TEST_F(TextState, OfANewPage) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_EQ(page.GetSingle("TextLeading"), 0.0F);
  EXPECT_EQ(page.GetSingle("TextRise"), 0.0F);
  EXPECT_EQ(page.GetSingle("WordSpace"), 0.0F);
  EXPECT_EQ(page.Get("TextRenderingMode"), host().Constant("Page.TextRenderingModeEnum.FILL"));
}

TEST_F(TextState, IsWrittenAndReadBackInsideAndOutsideATextObject) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("TransformCoordinates", true);  // has no effect on any of these
  page.Set("TextLeading", 13.3F);
  page.Set("TextRise", -4.5F);
  page.Call("BeginText");
  page.Set("WordSpace", 2.25F);
  EXPECT_EQ(page.GetSingle("TextLeading"), 13.3F);
  EXPECT_EQ(page.GetSingle("TextRise"), -4.5F);
  EXPECT_EQ(page.GetSingle("WordSpace"), 2.25F);
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("TL", 13.3F), Op("Ts", -4.5), Op("BT"), Op("Tw", 2.25), Op("ET")));
}

TEST_F(TextState, EveryRenderingModeIsWrittenAndReadBack) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (std::int64_t mode = 0; mode < 8; ++mode) {
    page.Set("TextRenderingMode", mode);
    EXPECT_EQ(page.GetInteger("TextRenderingMode"), mode);
  }
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 8U);
  for (std::size_t mode = 0; mode < 8; ++mode) EXPECT_THAT(operators[mode], Op("Tr", mode));
}

TEST_F(TextState, ValuesThatTheLibraryRefusesAreReportedAndNotWritten) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("TextRenderingMode", 2);
  page.Set("WordSpace", 5);
  page.Set("TextRenderingMode", 8);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 8}));
  page.Set("TextRenderingMode", -1);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 4294967295U}));
  for (const float space : {-30.5F, 300.5F, 1e20F}) {
    page.Set("WordSpace", space);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 0}));
    EXPECT_EQ(document.LastFailure(), (Failure{library_error::kOutOfRange, 0}));
  }
  EXPECT_EQ(page.GetInteger("TextRenderingMode"), 2);
  EXPECT_EQ(page.GetSingle("WordSpace"), 5.0F);
  page.Set("WordSpace", 300);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("Tr", 2), Op("Tw", 5), Op("Tw", 300)));
}

TEST_F(TextState, FontIsWrittenWithItsSize) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Times-Roman"), 10.5F);
  const PdfFile file(document.Saved());
  const std::vector<ContentOperator> operators = file.Operators(0);
  ASSERT_EQ(operators.size(), 1U);
  EXPECT_EQ(operators[0].name, "Tf");
  EXPECT_EQ(operators[0].operands.at(1).number, 10.5);
  EXPECT_EQ(file.Font(0, operators[0].operands.at(0).text).getKey("/BaseFont").getName(), "/Times-Roman");
}

TEST_F(TextState, FontSizesOutsideTheLibrarysRangeAreRefused) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Helvetica");
  const ScriptObject page = document.AddPage();
  for (const float size : {0.0F, -1.0F, 601.0F, 1e10F}) {
    SCOPED_TRACE(size);
    page.Call("SetFont", font, size);
    const std::vector<Failure> failures = document.TakeFailures();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].number, library_error::kInvalidFontSize);
    EXPECT_EQ(document.LastFailure(), failures[0]);
  }
  page.Call("SetFont", font, 600);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(document.Operators().size(), 1U);
}

TEST_F(TextState, FontThatIsRefusedChangesNothing) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("SetFont", document.GetFont("Courier"), 0);
  page.Call("ShowText", "not shown: no font is set yet");
  EXPECT_EQ(page.Call("MeasureText", "text", 100, true).AsInteger(), -1);
  page.Call("SetFont", document.GetFont("Courier"), 10);
  const float widthOfFive = 30;
  document.TakeFailures();
  for (const double size : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 601.0}) {
    page.Call("SetFont", document.GetFont("Helvetica", kMacRoman), size);
    EXPECT_EQ(document.TakeFailures().size(), 1U);
    page.Call("ShowText", "zürich");
    EXPECT_EQ(page.Call("MeasureText", "zürich", widthOfFive, false).AsInteger(), 5);
  }
  page.Call("EndText");
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 7U);
  for (std::size_t i = 2; i < 6; ++i) EXPECT_THAT(operators[i], Op("Tj", "z\xFCrich"));
}

TEST_F(TextState, FontIsSavedAndRestoredWithTheState) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const auto show = [&] {
    page.Call("BeginText");
    page.Call("ShowText", "café");
    page.Call("EndText");
  };
  page.Call("SaveState");
  page.Call("SetFont", document.GetFont("Helvetica"), 10);
  page.Call("SaveState");
  page.Call("SetFont", document.GetFont("Courier", kMacRoman), 20);
  show();
  page.Call("RestoreState");
  show();
  EXPECT_EQ(page.Call("MeasureText", "café", 1000, false).AsInteger(), 4);
  page.Call("RestoreState");
  show();  // no font is set any more
  EXPECT_EQ(page.Call("MeasureText", "café", 1000, false).AsInteger(), -1);
  page.Call("RestoreState");
  EXPECT_EQ(document.TakeFailures(), std::vector{(Failure{library_error::kCannotRestoreGState, 0})});
  std::vector<std::string> shown;
  for (const ContentOperator &operation : document.Operators()) {
    if (operation.name == "Tj") shown.push_back(operation.operands.at(0).text);
  }
  EXPECT_THAT(shown, ElementsAre("caf\x8E", "caf\xE9"));
}

TEST_F(TextState, StatesThatARefusedCallDidNotOpenOrCloseLeaveTheFont) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Courier", kMacRoman), 10);
  page.Call("SaveState");
  page.Call("SetFont", document.GetFont("Helvetica"), 10);
  page.Call("BeginText");
  page.Call("SaveState");  // a text object has no states
  page.Call("RestoreState");
  EXPECT_EQ(document.TakeFailures().size(), 2U);
  page.Call("ShowText", "é");
  page.Call("EndText");
  page.Call("RestoreState");
  page.Call("BeginText");
  page.Call("ShowText", "é");
  page.Call("EndText");
  std::vector<std::string> shown;
  for (const ContentOperator &operation : document.Operators()) {
    if (operation.name == "Tj") shown.push_back(operation.operands.at(0).text);
  }
  EXPECT_THAT(shown, ElementsAre("\xE9", "\x8E"));
}

TEST_F(TextState, FontOfASavedStateIsKeptUntilItIsRestoredOrThePageEnds) {
  const auto destroyed = [&] { return host().InspectLedger().objectsDestroyed; };
  {
    const Document document = NewDocument();
    {
      const ScriptObject page = document.AddPage();
      page.Call("SetFont", document.GetFont("Helvetica"), 10);
      const std::uint64_t before = destroyed();
      page.Call("SaveState");
      page.Call("SetFont", document.GetFont("Courier"), 10);
      EXPECT_EQ(destroyed(), before) << "the state still needs Helvetica";
      page.Call("RestoreState");
      EXPECT_EQ(destroyed(), before + 1) << "Courier";
      page.Call("SaveState");
      page.Call("SaveState");
    }
  }
  // What a page leaves open is given back with it: the fixture counts.
}

TEST_F(TextState, NilFontChangesNothing) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Helvetica"), 12);
  page.Call("SetFont", host::Value::Nil(), 20);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(document.Operators().size(), 1U);
}

TEST_F(TextState, FontOfAnotherDocumentIsIgnoredInSilence) {
  const Document document = NewDocument();
  const Document other = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", other.GetFont("Helvetica"), 12);
  page.Call("BeginText");
  page.Call("ShowText", "not shown: no font is set yet");
  page.Call("SetFont", document.GetFont("Courier"), 9);
  page.Call("SetFont", other.GetFont("Helvetica"), 12);
  page.Call("ShowText", "shown");
  page.Call("EndText");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(other.TakeFailures(), IsEmpty());
  const PdfFile file(document.Saved());
  EXPECT_THAT(file.Operators(0), ElementsAre(Op("BT"), testing::_, Op("Tj", "shown"), Op("ET")));
  EXPECT_EQ(file.Font(0, "/F1").getKey("/BaseFont").getName(), "/Courier");
}

TEST_F(TextState, PageKeepsItsFontUntilTheNextOne) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const auto destroyed = [&] { return host().InspectLedger().objectsDestroyed; };
  page.Call("SetFont", document.GetFont("Helvetica"), 12);
  const std::uint64_t before = destroyed();
  page.Call("SetFont", document.GetFont("Courier"), 12);
  EXPECT_EQ(destroyed(), before + 1);
  page.Call("SetFont", document.GetFont("Helvetica"), 12);
  EXPECT_EQ(destroyed(), before + 2);
}

TEST_F(TextState, SettingTheSameFontAgainKeepsIt) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  {
    const ScriptObject font = document.GetFont("Helvetica");
    page.Call("SetFont", font, 12);
    page.Call("SetFont", font, 14);
  }
  page.Call("BeginText");
  page.Call("ShowText", "text");
  page.Call("EndText");
  EXPECT_EQ(document.Operators().size(), 5U);
}

TEST_F(TextState, FontMaySetAnotherFontFromInsideTheErrorOfThisOne) {
  Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Courier"), 8);
  host().SetEventHandler(document.handle(), "ErrorLog", [&](const host::ObjectHandle &, std::span<host::Value>) {
    page.Call("SetFont", document.GetFont("Times-Roman"), 9);
    return host::Value();
  });
  page.Call("SetFont", document.GetFont("Helvetica"), -1);
  host().SetEventHandler(document.handle(), "ErrorLog", {});
  page.Call("BeginText");
  page.Call("ShowText", "text");
  page.Call("EndText");
  EXPECT_EQ(document.Operators().size(), 5U);
}

}  // namespace
}  // namespace quillbar::test
