// SPDX-License-Identifier: MIT
// The flip of y: what a script calls from the top, the library receives from the bottom, in single precision.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kA4 = 3;
constexpr std::int64_t kPortrait = 0;
constexpr std::int64_t kLandscape = 1;

class Coordinates : public PluginTest {
 protected:
  // A page of this height on which y counts from the top.
  static void TurnOver(const ScriptObject &page, float height) {
    page.Set("Height", height);
    page.Set("TransformCoordinates", true);
  }
};

TEST_F(Coordinates, ReachTheLibraryUnchangedOnANewPage) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_FALSE(page.Get("TransformCoordinates").AsBoolean());
  page.Call("MoveTo", 10, 20);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 10, 20), Op("n")));
}

TEST_F(Coordinates, FlagCapturesTheHeightWhenItIsTurnedOn) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetSize", kA4, kPortrait);
  page.Set("TransformCoordinates", true);
  EXPECT_TRUE(page.Get("TransformCoordinates").AsBoolean());
  page.Call("MoveTo", 10, 20);
  page.Call("Rectangle", 10, 20, 100, 50);
  page.Call("EndPath");
  const float height = 841.89F;
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("m", 10, height - 20.0F), Op("re", 10, height - 20.0F - 50.0F, 100, 50), Op("n")));
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 10, 821.89), Op("re", 10, 771.89, 100, 50), Op("n")));
}

TEST_F(Coordinates, FlagIsCapturedOnceUntilItIsTurnedOffAndOn) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  TurnOver(page, 500);
  page.Set("TransformCoordinates", false);
  page.Set("Height", 600);
  page.Call("MoveTo", 1, 2);
  page.Set("TransformCoordinates", true);
  page.Call("MoveTo", 1, 2);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 2), Op("m", 1, 598), Op("n")));
}

TEST_F(Coordinates, TurningTheFlagOnAgainDoesNotRefreshTheHeight) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  TurnOver(page, 500);
  const ScriptObject other = document.AddPage();
  // The library's page changes behind the flag's back: another Page with the same library page.
  auto *data = static_cast<void **>(host().ClassData(page.handle(), host().Class("Page")));
  auto *otherData = static_cast<void **>(host().ClassData(other.handle(), host().Class("Page")));
  otherData[0] = data[0];
  other.Set("Height", 900);
  EXPECT_EQ(page.GetSingle("Height"), 900.0F);
  page.Set("TransformCoordinates", true);
  page.Call("MoveTo", 1, 2);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 498), Op("n")));
}

TEST_F(Coordinates, SetSizeRefreshesTheHeightWhileTheFlagIsOn) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  TurnOver(page, 500);
  page.Call("SetSize", kA4, kLandscape);
  page.Call("MoveTo", 1, 2);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 595.276F - 2.0F), Op("n")));
}

TEST_F(Coordinates, RefusedSizesKeepTheHeight) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  TurnOver(page, 500);
  page.Call("SetSize", 13, kPortrait);
  page.Call("SetSize", kA4, 2);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  page.Call("SetSize", 12, kPortrait);
  page.Set("Height", -1);
  EXPECT_EQ(document.TakeFailures().size(), 2U);
  page.Call("MoveTo", 1, 2);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 498), Op("n")));
}

TEST_F(Coordinates, HeightRefreshesWhileTheFlagIsOnAndWidthDoesNot) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  TurnOver(page, 700);
  page.Set("Width", 500);
  page.Call("MoveTo", 1, 2);
  page.Set("Height", 500);
  page.Call("MoveTo", 1, 2);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 698), Op("m", 1, 498), Op("n")));
}

TEST_F(Coordinates, PathMembersTurnEveryYAndNothingElse) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  TurnOver(page, 100);
  page.Call("MoveTo", 1, 2);
  page.Call("LineTo", 3, 4);
  page.Call("CurveTo", 1, 2, 3, 4, 5, 6);
  page.Call("CurveTo2", 7, 8, 9, 10);
  page.Call("CurveTo3", 11, 12, 13, 14);
  page.Call("Draw");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 98), Op("l", 3, 96), Op("c", 1, 98, 3, 96, 5, 94),
                                                Op("v", 7, 92, 9, 90), Op("y", 11, 88, 13, 86), Op("S")));
}

TEST_F(Coordinates, RectangleHangsFromItsTopLeftCorner) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  TurnOver(page, 800);
  page.Call("Rectangle", 0, 0, 100, 50);
  page.Call("EndPath");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("re", 0, 750, 100, 50), Op("n")));
}

TEST_F(Coordinates, RectangleSubtractsInTheOrderOfSinglePrecision) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const float height = 841.89F;
  const float y = 0.1F;
  const float extent = 33.333F;
  TurnOver(page, height);
  page.Call("Rectangle", 0.7F, y, 0.3F, extent);
  page.Call("MoveTo", 0.7F, 123.456F);
  page.Call("EndPath");
  const volatile float fromTop = height - y;
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("re", 0.7F, fromTop - extent, 0.3F, extent), Op("m", 0.7F, height - 123.456F), Op("n")));
}

TEST_F(Coordinates, EllipseTurnsItsCentreOnly) {
  const Document document = NewDocument();
  const ScriptObject below = document.AddPage();
  below.Call("Ellipse", 50, 70, 20, 10);
  below.Call("Draw");
  const ScriptObject page = document.AddPage();
  TurnOver(page, 100);
  page.Call("Ellipse", 50, 30, 20, 10);
  page.Call("Draw");
  const PdfFile file(document.Saved());
  EXPECT_EQ(file.Content(0), file.Content(1));
  EXPECT_THAT(file.Operators(1).at(0), Op("m", 30, 70));
}

TEST_F(Coordinates, ArcTurnsItsCentreAndKeepsItsAngles) {
  const Document document = NewDocument();
  const ScriptObject below = document.AddPage();
  below.Call("Arc", 100, 700, 50, 0, 90);
  below.Call("Draw");
  const ScriptObject page = document.AddPage();
  TurnOver(page, 800);
  page.Call("Arc", 100, 100, 50, 0, 90);
  page.Call("Draw");
  const PdfFile file(document.Saved());
  EXPECT_EQ(file.Content(0), file.Content(1));
  // Angles count clockwise from the top.
  const std::vector<ContentOperator> operators = file.Operators(1);
  ASSERT_EQ(operators.size(), 3U);
  EXPECT_THAT(operators[0], Op("m", 100, 750));
  EXPECT_NEAR(operators[1].operands.at(4).number, 150, 1e-3);
  EXPECT_NEAR(operators[1].operands.at(5).number, 700, 1e-3);
}

TEST_F(Coordinates, MatrixTurnsItsTranslationOnly) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("ConcatMatrix", 1, 0, 0, 1, 10, 20);
  TurnOver(page, 800);
  page.Call("ConcatMatrix", 1, 0, 0, 1, 10, 20);
  page.Call("ConcatMatrix", 1.5F, 0.25F, -0.25F, 2, 10, 20);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("cm", 1, 0, 0, 1, 10, 20), Op("cm", 1, 0, 0, 1, 10, 780),
                                                Op("cm", 1.5, 0.25, -0.25, 2, 10, 780)));
}

TEST_F(Coordinates, PagesHaveFlagsOfTheirOwn) {
  const Document document = NewDocument();
  const ScriptObject first = document.AddPage();
  const ScriptObject second = document.AddPage();
  TurnOver(first, 300);
  first.Call("MoveTo", 1, 2);
  first.Call("EndPath");
  second.Call("MoveTo", 1, 2);
  second.Call("EndPath");
  const PdfFile file(document.Saved());
  EXPECT_THAT(file.Operators(0), ElementsAre(Op("m", 1, 298), Op("n")));
  EXPECT_THAT(file.Operators(1), ElementsAre(Op("m", 1, 2), Op("n")));
}

}  // namespace
}  // namespace quillbar::test
