// SPDX-License-Identifier: MIT
// Paths: what each member writes, when paths begin and end, and the uneven guards.
#include <cmath>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Path : public PluginTest {
 protected:
  static std::int64_t ModeOf(const ScriptObject &page) { return page.GetInteger("GraphicsMode"); }
};

TEST_F(Path, LineToOnAFreshPageDoesNothingAndRecordsNoError) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("LineTo", 10, 10);
  EXPECT_EQ(ModeOf(page), graphics_mode::kPageDescription);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), IsEmpty());
}

TEST_F(Path, MoveToLineToAndDrawWriteOneOperatorEach) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 0, 0);
  EXPECT_EQ(ModeOf(page), graphics_mode::kPathObject);
  page.Call("LineTo", 10, 10);
  page.Call("Draw");
  EXPECT_EQ(ModeOf(page), graphics_mode::kPageDescription);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 0, 0), Op("l", 10, 10), Op("S")));
}

TEST_F(Path, EveryMemberWritesItsOperands) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("Rectangle", 1.5F, -2.25F, 30, 40.125F);
  page.Call("MoveTo", 1, 2);
  page.Call("CurveTo", 1, 2, 3, 4, 5, 6);
  page.Call("CurveTo2", 7, 8, 9, 10);
  page.Call("CurveTo3", 11, 12, 13, 14);
  page.Call("Fill");
  page.Call("MoveTo", -0.5F, 1e5F);
  page.Call("FillAndDraw");
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("re", 1.5, -2.25, 30, 40.125), Op("m", 1, 2), Op("c", 1, 2, 3, 4, 5, 6),
                          Op("v", 7, 8, 9, 10), Op("y", 11, 12, 13, 14), Op("f"), Op("m", -0.5, 1e5), Op("B")));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Path, EveryBeginningMemberOpensAPathAndEveryPaintingMemberClosesIt) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const auto begin = [&](int member) {
    if (member == 0) page.Call("MoveTo", 1, 1);
    if (member == 1) page.Call("Rectangle", 1, 1, 5, 5);
    if (member == 2) page.Call("Ellipse", 9, 9, 5, 5);
    if (member == 3) page.Call("Arc", 9, 9, 5, 0, 45);
  };
  for (int member = 0; member < 4; ++member) {
    for (const char *paint : {"Draw", "Fill", "FillAndDraw", "EndPath"}) {
      SCOPED_TRACE(testing::Message() << member << ' ' << paint);
      begin(member);
      EXPECT_EQ(ModeOf(page), graphics_mode::kPathObject);
      page.Call(paint);
      EXPECT_EQ(ModeOf(page), graphics_mode::kPageDescription);
    }
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Path, MoveToInsideATextObjectIsIgnoredAndRectangleIsRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("MoveTo", 1, 2);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  page.Call("Rectangle", 1, 2, 3, 4);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kInvalidGMode, 0}));
  EXPECT_EQ(ModeOf(page), graphics_mode::kTextObject);
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), Op("ET")));
}

TEST_F(Path, FillIsIgnoredAfterClipAndThePathStaysOpen) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("Rectangle", 1, 2, 3, 4);
  page.Call("Clip");
  EXPECT_EQ(ModeOf(page), graphics_mode::kClippingPath);
  page.Call("Fill");
  page.Call("FillAndDraw");
  EXPECT_EQ(ModeOf(page), graphics_mode::kClippingPath);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  page.Call("EndPath");
  EXPECT_EQ(ModeOf(page), graphics_mode::kPageDescription);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("re", 1, 2, 3, 4), Op("W"), Op("n")));
}

TEST_F(Path, DrawEndsAClippedPathToo) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("Rectangle", 1, 2, 3, 4);
  page.Call("Clip");
  page.Call("Draw");
  EXPECT_EQ(ModeOf(page), graphics_mode::kPageDescription);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("re", 1, 2, 3, 4), Op("W"), Op("S")));
}

TEST_F(Path, ClippingLimitsWhatIsSeen) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Width", 100);
  page.Set("Height", 100);
  page.Set("TransformCoordinates", true);
  page.Call("SaveState");
  page.Call("Rectangle", 10, 10, 20, 20);
  page.Call("Clip");
  page.Call("EndPath");
  page.Set("FillColor", static_cast<Color>(0xFF0000));
  page.Call("Rectangle", 0, 0, 100, 100);
  page.Call("Fill");
  page.Call("RestoreState");
  page.Set("FillColor", static_cast<Color>(0x0000FF));
  page.Call("Rectangle", 60, 60, 10, 10);
  page.Call("Fill");
  const std::string saved = document.Saved();
  const Rendering rendering(saved);
  EXPECT_EQ(rendering.PixelAt(20, 20), 0xFF0000U);
  EXPECT_EQ(rendering.PixelAt(5, 20), 0xFFFFFFU);
  EXPECT_EQ(rendering.PixelAt(35, 20), 0xFFFFFFU);
  EXPECT_EQ(rendering.PixelAt(65, 65), 0x0000FFU);
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
}

TEST_F(Path, EllipseIsFourQuartersThroughItsExtremes) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("Ellipse", 100, 200, 40, 30);
  page.Call("Draw");
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 6U);
  EXPECT_THAT(operators[0], Op("m", 60, 200));
  const double ends[4][2] = {{100, 230}, {140, 200}, {100, 170}, {60, 200}};
  for (std::size_t quarter = 0; quarter < 4; ++quarter) {
    const ContentOperator &curve = operators[quarter + 1];
    ASSERT_EQ(curve.name, "c");
    EXPECT_NEAR(curve.operands[4].number, ends[quarter][0], 1e-3);
    EXPECT_NEAR(curve.operands[5].number, ends[quarter][1], 1e-3);
  }
}

// The points of a curve at its ends and its middle.
std::vector<std::pair<double, double>> PointsOn(const ContentOperator &curve, std::pair<double, double> from) {
  const auto at = [&](std::size_t index) {
    return std::pair(curve.operands[index * 2].number, curve.operands[index * 2 + 1].number);
  };
  const auto middle = [](double a, double b, double c, double d) { return (a + 3 * b + 3 * c + d) / 8; };
  return {from,
          {middle(from.first, at(0).first, at(1).first, at(2).first),
           middle(from.second, at(0).second, at(1).second, at(2).second)},
          at(2)};
}

TEST_F(Path, ArcsLieOnTheirCircleAndEndAtTheirAngles) {
  const std::pair<float, float> sweeps[] = {{0, 90},     {0, 359.9F}, {90, 0},      {-45, 45},      {300, 400},
                                            {10, 10.5F}, {720, 800},  {-700, -400}, {1e6F, 1000090}};
  const Document document = NewDocument();
  for (const auto &[from, to] : sweeps) {
    const ScriptObject page = document.AddPage();
    page.Call("Arc", 300, 400, 50, from, to);
    page.Call("Draw");
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const PdfFile file(document.Saved());
  for (std::size_t index = 0; index < std::size(sweeps); ++index) {
    const auto [from, to] = sweeps[index];
    SCOPED_TRACE(testing::Message() << from << " to " << to);
    const std::vector<ContentOperator> operators = file.Operators(index);
    ASSERT_GE(operators.size(), 3U);
    ASSERT_EQ(operators[0].name, "m");
    // Angles count clockwise from the top, in degrees.
    const auto expectedAt = [](double degrees) {
      const double radians = std::fmod(degrees, 360) * 3.14159265358979 / 180;
      return std::pair(300 + 50 * std::sin(radians), 400 + 50 * std::cos(radians));
    };
    std::pair<double, double> position(operators[0].operands[0].number, operators[0].operands[1].number);
    EXPECT_NEAR(position.first, expectedAt(from).first, 0.02);
    EXPECT_NEAR(position.second, expectedAt(from).second, 0.02);
    for (std::size_t curve = 1; curve + 1 < operators.size(); ++curve) {
      ASSERT_EQ(operators[curve].name, "c");
      for (const auto &[x, y] : PointsOn(operators[curve], position)) {
        EXPECT_NEAR(std::hypot(x - 300, y - 400), 50, 0.05);
        position = {x, y};
      }
    }
    EXPECT_NEAR(position.first, expectedAt(to).first, 0.02);
    EXPECT_NEAR(position.second, expectedAt(to).second, 0.02);
  }
}

TEST_F(Path, ArcInsideAPathContinuesItWithALine) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 100, 100);
  page.Call("Arc", 100, 100, 50, 0, 90);
  page.Call("LineTo", 100, 100);
  page.Call("Fill");
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 5U);
  EXPECT_THAT(operators[1], Op("l", 100, 150));
}

TEST_F(Path, ArcWithEqualAnglesBeginsThePath) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("Arc", 100, 100, 50, 90, 90);
  EXPECT_EQ(ModeOf(page), graphics_mode::kPathObject);
  page.Call("LineTo", 100, 100);
  page.Call("Draw");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 150, 100), Op("l", 100, 100), Op("S")));
}

TEST_F(Path, PieSliceOfNothingIsALineFromTheCentreAndBack) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 100, 100);
  page.Call("Arc", 100, 100, 50, 90, 90);
  page.Call("LineTo", 100, 100);
  page.Call("FillAndDraw");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 100, 100), Op("l", 150, 100), Op("l", 100, 100), Op("B")));
}

TEST_F(Path, ArcOfAFullTurnOrMoreIsReportedOnceAndDrawn) {
  for (const float end : {360.0F, 720.0F, -360.0F, 1e30F}) {
    SCOPED_TRACE(end);
    const Document document = NewDocument();
    const ScriptObject page = document.AddPage();
    page.Set("Width", 100);
    page.Set("Height", 100);
    page.Set("LineWidth", 10);
    page.Call("Arc", 50, 50, 30, 0, end);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 0}));
    EXPECT_EQ(ModeOf(page), graphics_mode::kPathObject);
    page.Call("Draw");
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
    const Rendering rendering(document.Saved());
    for (int degrees = 0; degrees < 360; degrees += 5) {
      const double radians = degrees * 3.14159265358979 / 180;
      const auto at = [&](double radius) {
        return rendering.PixelAt(static_cast<int>(50 + radius * std::sin(radians)),
                                 static_cast<int>(50 - radius * std::cos(radians)));
      };
      EXPECT_EQ(at(30), 0U) << degrees;
      EXPECT_EQ(at(22), 0xFFFFFFU) << degrees;
      EXPECT_EQ(at(38), 0xFFFFFFU) << degrees;
    }
  }
}

// A viewer turns the cap of a thick line by the direction in which its last curve ends. The arc runs from the
// top over the right side to the bottom, with ends cut off along the vertical through its centre.
TEST_F(Path, ThickHalfCirclesEndAtTheirDiameterWhateverTheRoundingOfTheirAngles) {
  std::vector<float> starts;
  for (int start = 1; start < 3600; start += 37) starts.push_back(static_cast<float>(start) / 10);
  starts.push_back(9.313F);
  constexpr int kCell = 100;
  constexpr int kColumns = 10;
  const int rows = (static_cast<int>(starts.size()) + kColumns - 1) / kColumns;
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Width", kColumns * kCell);
  page.Set("Height", rows * kCell);
  const auto cell = [&](std::size_t index) {
    return std::pair(static_cast<int>(index) % kColumns * kCell, static_cast<int>(index) / kColumns * kCell);
  };
  for (std::size_t index = 0; index < starts.size(); ++index) {
    const auto [left, top] = cell(index);
    // Turned back by its start, so that every arc is the same half.
    const double radians = static_cast<double>(starts[index]) * 3.14159265358979 / 180;
    const auto cosine = static_cast<float>(std::cos(radians));
    const auto sine = static_cast<float>(std::sin(radians));
    page.Call("SaveState");
    page.Call("ConcatMatrix", cosine, sine, -sine, cosine, left + kCell / 2, rows * kCell - top - kCell / 2);
    page.Set("LineWidth", 30);
    page.Call("Arc", 0, 0, 30, starts[index], starts[index] + 180.0F);
    page.Call("Draw");
    page.Call("RestoreState");
  }
  const Rendering rendering(document.Saved());
  for (std::size_t index = 0; index < starts.size(); ++index) {
    const auto [left, top] = cell(index);
    for (int y = 0; y < kCell; ++y) {
      SCOPED_TRACE(testing::Message() << starts[index] << " at " << y);
      EXPECT_EQ(rendering.PixelAt(left + 47, top + y), 0xFFFFFFU);
      const double distance = std::hypot(3, y - 49.5);
      if (distance > 17 && distance < 43) {
        EXPECT_EQ(rendering.PixelAt(left + 53, top + y), 0U);
      }
    }
  }
}

TEST_F(Path, RectanglesKeepNegativeExtents) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("Rectangle", 10, 20, -5, -6);
  page.Set("TransformCoordinates", true);
  const float height = page.GetSingle("Height");
  page.Call("Rectangle", 10, 20, -5, -6);
  page.Call("Draw");
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("re", 10, 20, -5, -6), Op("re", 10, height - 20.0F + 6.0F, -5, -6), Op("S")));
}

TEST_F(Path, OpenPathIsEndedWhenTheDocumentIsSaved) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 1, 2);
  page.Call("LineTo", 3, 4);
  const std::string saved = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
  EXPECT_THAT(PdfFile(saved).Operators(0), ElementsAre(Op("m", 1, 2), Op("l", 3, 4), Op("n")));
}

}  // namespace
}  // namespace quillbar::test
