// SPDX-License-Identifier: MIT
// Text objects, positions and matrices.
#include <cmath>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TextPosition : public PluginTest {
 protected:
  std::pair<float, float> PositionOn(const ScriptObject &page, float x = -1, float y = -2) {
    std::vector<host::Value> position{host::Value(x), host::Value(y)};
    host().CallByRef(page.handle(), "GetCurrentTextPosition", position);
    return {position[0].AsSingle(), position[1].AsSingle()};
  }
};

TEST_F(TextPosition, EndTextOutsideAndBeginTextInsideATextObjectDoNothing) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("EndText");
  page.Call("BeginText");
  page.Call("BeginText");
  EXPECT_EQ(page.GetInteger("GraphicsMode"), graphics_mode::kTextObject);
  page.Call("EndText");
  page.Call("EndText");
  EXPECT_EQ(page.GetInteger("GraphicsMode"), graphics_mode::kPageDescription);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), Op("ET")));
}

TEST_F(TextPosition, ReadOutsideATextObjectLeavesBothArgumentsAsTheyWere) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_EQ(PositionOn(page, 7, 8), std::pair(7.0F, 8.0F));
  page.Call("MoveTo", 1, 1);
  EXPECT_EQ(PositionOn(page, 7, 8), std::pair(7.0F, 8.0F));
  page.Call("EndPath");
}

TEST_F(TextPosition, MovesAreRelativeFromTheBottom) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("MoveTextPosition", 10, 20);
  EXPECT_EQ(PositionOn(page), std::pair(10.0F, 20.0F));
  page.Call("MoveTextPosition", 1, -2.5F);
  EXPECT_EQ(PositionOn(page), std::pair(11.0F, 17.5F));
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), Op("Td", 10, 20), Op("Td", 1, -2.5), Op("ET")));
}

TEST_F(TextPosition, MovesFromTheTopTurnTheirYAsIfItWereAbsolute) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Height", 842);
  page.Set("TransformCoordinates", true);
  page.Call("BeginText");
  page.Call("MoveTextPosition", 10, 20);
  EXPECT_EQ(PositionOn(page), std::pair(10.0F, 20.0F));
  page.Call("MoveTextPosition", 5, 800);
  EXPECT_EQ(PositionOn(page), std::pair(15.0F, 842.0F - (822.0F + 42.0F)));
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), Op("Td", 10, 822), Op("Td", 5, 42), Op("ET")));
}

TEST_F(TextPosition, MatrixTurnsItsTranslationOnly) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Height", 842);
  page.Call("BeginText");
  page.Call("SetTextMatrix", 1.5F, 0.25F, -0.5F, 2, 10, 20);
  EXPECT_EQ(PositionOn(page), std::pair(10.0F, 20.0F));
  page.Set("TransformCoordinates", true);
  page.Call("SetTextMatrix", 1, 0, 0, 1, 10, 20);
  EXPECT_EQ(PositionOn(page), std::pair(10.0F, 20.0F));
  page.Call("EndText");
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("BT"), Op("Tm", 1.5, 0.25, -0.5, 2, 10, 20), Op("Tm", 1, 0, 0, 1, 10, 822), Op("ET")));
}

TEST_F(TextPosition, MatrixThatFlattensTextIsRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("SetTextMatrix", 0, 0, 0, 0, 10, 20);
  const std::vector<Failure> failures = document.TakeFailures();
  ASSERT_EQ(failures.size(), 1U);
  EXPECT_EQ(failures[0].number, library_error::kInvalidParameter);
  page.Call("SetTextMatrix", 1, 0, 0, 1, 10, 20);
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), Op("Tm", 1, 0, 0, 1, 10, 20), Op("ET")));
}

TEST_F(TextPosition, RotationUsesItsTruncatedPi) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Height", 842);
  page.Set("TransformCoordinates", true);
  const float angles[] = {0, 30, 45, 90, 180, 270, 360, -90, 12.34F, 720.5F, 1e6F};
  page.Call("BeginText");
  for (const float angle : angles) page.Call("SetTextRotation", angle, 10, 20);
  page.Call("EndText");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), std::size(angles) + 2);
  for (std::size_t index = 0; index < std::size(angles); ++index) {
    const auto radians = static_cast<float>(static_cast<double>(angles[index]) / 180.0 * 3.141592);
    const auto cosine = static_cast<float>(std::cos(static_cast<double>(radians)));
    const auto sine = static_cast<float>(std::sin(static_cast<double>(radians)));
    EXPECT_THAT(operators[index + 1], Op("Tm", cosine, sine, -sine, cosine, 10, 822)) << angles[index];
  }
  // A right angle isn't quite one: the cosine is small and not zero.
  const ContentOperator &rightAngle = operators[4];
  EXPECT_NE(rightAngle.operands[0].number, 0);
  EXPECT_NEAR(rightAngle.operands[0].number, 0, 1e-6);
  EXPECT_EQ(rightAngle.operands[1].number, 1);
}

TEST_F(TextPosition, NextLineMovesByTheLeading) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("SetFont", document.GetFont("Helvetica"), 10);
  page.Set("TextLeading", 14);
  page.Call("MoveTextPosition", 50, 500);
  page.Call("MoveTextPositionNextLine");
  EXPECT_EQ(PositionOn(page), std::pair(50.0F, 486.0F));
  page.Set("TextLeading", 0);
  page.Call("MoveTextPositionNextLine");
  EXPECT_EQ(page.GetSingle("TextLeading"), 0.0F);
  const float suggested = (931.0F + 225.0F) / 1000.0F * 10.0F;
  EXPECT_FLOAT_EQ(PositionOn(page).second, 486.0F - suggested);
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), testing::_, Op("TL", 14), Op("Td", 50, 500), Op("T*"),
                                                Op("TL", 0), Op("TL", suggested), Op("T*"), Op("TL", 0), Op("ET")));
}

TEST_F(TextPosition, NextLineWithoutAFontHasNoLeadingToSuggest) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_EQ(page.Call("SuggestedTextLeading").AsSingle(), 0.0F);
  page.Call("BeginText");
  page.Call("MoveTextPosition", 50, 500);
  page.Call("MoveTextPositionNextLine");
  EXPECT_EQ(PositionOn(page), std::pair(50.0F, 500.0F));
  page.Call("EndText");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(TextPosition, SuggestedLeadingFollowsTheLibrarysFontAndSize) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Helvetica"), 10);
  page.Call("SaveState");
  page.Call("SetFont", document.GetFont("Courier"), 20);
  EXPECT_FLOAT_EQ(page.Call("SuggestedTextLeading").AsSingle(), (805.0F + 250.0F) / 1000.0F * 20.0F);
  page.Call("RestoreState");
  EXPECT_FLOAT_EQ(page.Call("SuggestedTextLeading").AsSingle(), (931.0F + 225.0F) / 1000.0F * 10.0F);
}

}  // namespace
}  // namespace quillbar::test
