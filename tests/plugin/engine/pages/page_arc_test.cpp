// SPDX-License-Identifier: MIT
// Arcs: every pair of angles ends, and what is written lies on the circle.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <sstream>

#include "plugin/engine/pages/page_object.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Operation {
  std::string name;
  std::vector<double> operands;
};

std::vector<Operation> OperationsOf(HPDF_Page page) {
  std::vector<Operation> operations;
  std::istringstream lines(ContentOf(page));
  for (std::string line; std::getline(lines, line);) {
    Operation operation;
    std::istringstream words(line);
    for (std::string word; words >> word;) {
      char *end = nullptr;
      const double number = std::strtod(word.c_str(), &end);
      if (*end == '\0') {
        operation.operands.push_back(number);
      } else {
        operation.name = word;
      }
    }
    operations.push_back(operation);
  }
  return operations;
}

class PageArc : public testing::Test {
 protected:
  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
};

TEST_F(PageArc, QuarterStartsAtTheTopAndRunsClockwise) {
  EXPECT_EQ(Call<HPDF_Page_Arc>(page_, 100, 200, 50, 0, 90), HPDF_OK);
  const std::vector<Operation> operations = OperationsOf(page_);
  ASSERT_EQ(operations.size(), 2U);
  EXPECT_EQ(operations[0].name, "m");
  EXPECT_THAT(operations[0].operands, ElementsAre(100, 250));
  EXPECT_EQ(operations[1].name, "c");
  ASSERT_EQ(operations[1].operands.size(), 6U);
  EXPECT_NEAR(operations[1].operands[0], 100 + 50 * 0.5522847, 1e-3);
  EXPECT_NEAR(operations[1].operands[1], 250, 1e-3);
  EXPECT_NEAR(operations[1].operands[4], 150, 1e-3);
  EXPECT_NEAR(operations[1].operands[5], 200, 1e-3);
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(page_), HPDF_GMODE_PATH_OBJECT);
  EXPECT_NEAR(engine::AttributesOf(page_).cur_pos.x, 150, 1e-3);
}

TEST_F(PageArc, ContinuesAnOpenPathWithALine) {
  Call<HPDF_Page_MoveTo>(page_, 1.0F, 2.0F);
  Call<HPDF_Page_Arc>(page_, 100, 200, 50, 0, 90);
  EXPECT_EQ(OperationsOf(page_).at(1).name, "l");
}

TEST_F(PageArc, AnglesBeyondOneTurnMeanThoseWithinIt) {
  for (const float turns : {-720.0F, -360.0F, 360.0F, 3600.0F, 3.6e6F}) {
    LibraryDocument other;
    HPDF_Page page = Call<engine::AddPage>(other.document);
    Call<HPDF_Page_Arc>(page, 100, 100, 50, turns + 30, turns + 200);
    HPDF_Page expected = Call<engine::AddPage>(other.document);
    Call<HPDF_Page_Arc>(expected, 100, 100, 50, 30, 200);
    EXPECT_EQ(ContentOf(page), ContentOf(expected)) << turns;
  }
}

TEST_F(PageArc, EqualAnglesBeginThePathAndAddNoCurve) {
  EXPECT_EQ(Call<HPDF_Page_Arc>(page_, 100, 100, 50, 90, 90), HPDF_OK);
  ASSERT_EQ(ContentOf(page_), "150 100 m\n");
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(page_), HPDF_GMODE_PATH_OBJECT);
  EXPECT_EQ(engine::AttributesOf(page_).cur_pos.x, 150);
  EXPECT_EQ(engine::AttributesOf(page_).cur_pos.y, 100);
  EXPECT_EQ(Call<HPDF_Page_Arc>(page_, 100, 100, 50, 360, 360), HPDF_OK);
  EXPECT_EQ(ContentOf(page_), "150 100 m\n100 150 l\n");
  for (const float angle : {45.0F, -1e30F, 1e9F}) {
    EXPECT_EQ(Call<HPDF_Page_Arc>(page_, 100, 100, 50, angle, angle), HPDF_OK);
    EXPECT_EQ(OperationsOf(page_).back().name, "l") << angle;
  }
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

// The event tells of it, and the picture is what was meant.
TEST_F(PageArc, ASweepOfAWholeTurnOrMoreIsReportedOnceAndDrawn) {
  for (const float angle :
       {360.0F, -360.0F, 400.0F, 720.0F, -719.5F, 1e9F, -1e30F, std::numeric_limits<float>::max()}) {
    SCOPED_TRACE(angle);
    HPDF_Page page = Call<engine::AddPage>(document_.document);
    EXPECT_EQ(Call<HPDF_Page_Arc>(page, 100, 100, 50, 0, angle), HPDF_STATUS{HPDF_PAGE_OUT_OF_RANGE});
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_PAGE_OUT_OF_RANGE));
    const std::vector<Operation> operations = OperationsOf(page);
    ASSERT_GE(operations.size(), 5U);
    EXPECT_LE(operations.size(), 9U) << "one turn, and what is left behind the last one";
    const double ends[4][2] = {{150, 100}, {100, 50}, {50, 100}, {100, 150}};
    for (std::size_t quarter = 0; quarter < 4; ++quarter) {
      const std::vector<double> &operands = operations[quarter + 1].operands;
      const double *const end = ends[angle > 0 || quarter % 2 != 0 ? quarter : 2 - quarter];
      EXPECT_NEAR(operands[4], end[0], 1e-3) << quarter;
      EXPECT_NEAR(operands[5], end[1], 1e-3) << quarter;
    }
    const double last = std::remainder(static_cast<double>(angle), 360) * (std::numbers::pi / 180);
    EXPECT_NEAR(operations.back().operands[4], 100 + 50 * std::sin(last), 1e-3);
    EXPECT_NEAR(operations.back().operands[5], 100 + 50 * std::cos(last), 1e-3);
    EXPECT_EQ(Call<HPDF_Page_GetGMode>(page), HPDF_GMODE_PATH_OBJECT);
  }
}

// Angles in tenths of a degree are seldom exact in single precision, so most sweeps are a little more or less
// than the tenths say. A curve for a sweep that only rounding made would have no direction of its own.
TEST_F(PageArc, HasOneCurveForEachQuarterWhateverTheRoundingOfItsAngles) {
  // The numbers of curves of arcs that are drawn one by one.
  const auto curvesOf = [](const std::vector<std::pair<float, float>> &arcs) {
    LibraryDocument document;
    HPDF_Page page = Call<engine::AddPage>(document.document);
    for (const auto &[angle1, angle2] : arcs) {
      EXPECT_EQ(Call<HPDF_Page_Arc>(page, 300, 400, 100, angle1, angle2), HPDF_OK);
      EXPECT_EQ(Call<HPDF_Page_EndPath>(page), HPDF_OK);
    }
    std::vector<int> curves;
    std::istringstream lines(ContentOf(page));
    for (std::string line; std::getline(lines, line);) {
      if (line.back() == 'm') curves.push_back(0);
      if (line.back() == 'c') ++curves.back();
    }
    return curves;
  };
  for (const int sweep : {900, 1800, 2700, 450, 899, 902, 1799, 1802, 3599, 1234}) {
    std::vector<std::pair<float, float>> arcs;
    for (int start = 0; start < 3600; ++start) {
      const float angle1 = static_cast<float>(start) / 10;
      const float angle2 = static_cast<float>(start + sweep) / 10;
      arcs.emplace_back(angle1, angle2);
      arcs.emplace_back(angle2, angle1);
    }
    EXPECT_EQ(curvesOf(arcs), std::vector<int>(arcs.size(), (sweep + 899) / 900)) << sweep;
  }
  EXPECT_THAT(curvesOf({{9.313F, 189.313F}, {9.313F, 99.313F}}), ElementsAre(2, 1));
}

// What is too little for a curve of its own is not lost: the last quarter takes it.
TEST_F(PageArc, EndsAtItsAngleWithoutACurveForTheLastTwentiethOfADegree) {
  ASSERT_EQ(Call<HPDF_Page_Arc>(page_, 0, 0, 1000, 0, 180.05F), HPDF_OK);
  const std::vector<Operation> operations = OperationsOf(page_);
  ASSERT_EQ(operations.size(), 3U);
  EXPECT_NEAR(operations[2].operands[4], 1000 * std::sin(180.05 * std::numbers::pi / 180), 1e-2);
  EXPECT_NEAR(operations[2].operands[5], 1000 * std::cos(180.05 * std::numbers::pi / 180), 1e-2);
}

// Past the guard, as no caller should: it ends all the same.
TEST_F(PageArc, AnglesThatAreNotFiniteEnd) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
  EXPECT_NE(HPDF_Page_Arc(page_, 100, 100, 50, 0, kInfinity), HPDF_OK);
  EXPECT_NE(HPDF_Page_Arc(page_, 100, 100, 50, kInfinity, kInfinity), HPDF_OK);
  EXPECT_NE(HPDF_Page_Arc(page_, 100, 100, 50, -kInfinity, 3), HPDF_OK);
  EXPECT_NE(HPDF_Page_Arc(page_, 100, 100, 50, kNaN, 3), HPDF_OK);
  EXPECT_EQ(ContentOf(page_), "");
}

TEST_F(PageArc, ARadiusOfZeroIsThePointOfTheCentre) {
  EXPECT_EQ(Call<HPDF_Page_Arc>(page_, 100, 100, 0, 0, 90), HPDF_OK);
  EXPECT_EQ(ContentOf(page_), "100 100 m\n100 100 100 100 100 100 c\n");
}

// Ends of segments lie on the circle, at the angles asked for; the middle of each curve does too, within the
// error of a cubic curve (0.03 % of the radius).
TEST_F(PageArc, LiesOnItsCircle) {
  constexpr double kDegree = std::numbers::pi / 180;
  for (const auto &[angle1, angle2] : std::vector<std::pair<float, float>>{
           {0, 359.99F}, {10, 20}, {270, -80}, {-200, -20}, {1, 0}, {45, 404}, {1e7F, 1e7F + 100}, {0, 0.01F}}) {
    HPDF_Page page = Call<engine::AddPage>(document_.document);
    ASSERT_EQ(Call<HPDF_Page_Arc>(page, 300, 400, 100, angle1, angle2), HPDF_OK);
    std::vector<double> from;
    for (const Operation &operation : OperationsOf(page)) {
      const std::vector<double> &o = operation.operands;
      const double x = o[o.size() - 2];
      const double y = o[o.size() - 1];
      EXPECT_NEAR(std::hypot(x - 300, y - 400), 100, 1e-3);
      if (operation.name == "c") {
        const double middleX = (from[0] + 3 * o[0] + 3 * o[2] + x) / 8;
        const double middleY = (from[1] + 3 * o[1] + 3 * o[3] + y) / 8;
        EXPECT_NEAR(std::hypot(middleX - 300, middleY - 400), 100, 0.03);
      } else {
        EXPECT_NEAR(x, 300 + 100 * std::sin(static_cast<double>(angle1) * kDegree), 1e-3);
        EXPECT_NEAR(y, 400 + 100 * std::cos(static_cast<double>(angle1) * kDegree), 1e-3);
      }
      from = {x, y};
    }
    EXPECT_NEAR(from[0], 300 + 100 * std::sin(static_cast<double>(angle2) * kDegree), 1e-3);
    EXPECT_NEAR(from[1], 400 + 100 * std::cos(static_cast<double>(angle2) * kDegree), 1e-3);
    EXPECT_LE(OperationsOf(page).size(), 5U);
  }
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(PageArc, IsRefusedInsideATextObject) {
  Call<HPDF_Page_BeginText>(page_);
  EXPECT_EQ(Call<HPDF_Page_Arc>(page_, 100, 100, 50, 30, 30), HPDF_STATUS{HPDF_PAGE_INVALID_GMODE});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_PAGE_INVALID_GMODE));
}

}  // namespace
}  // namespace quillbar
