// SPDX-License-Identifier: MIT
// HPDF_Page_Arc for every pair of angles.
//
// libharu divides by the sine of half the sweep, so that equal angles (and a radius of 0) print no numbers;
// it shifts the angles by whole turns in single precision until they are positive and then walks from one to
// the other in steps of 90 degrees, which never ends once 90 is lost in the rounding of a large angle.
//
// Here equal angles begin the path, or continue it with a line to the point at that angle, and add no curve.
// A sweep of 360 degrees or more is reported, and drawn nevertheless, as libharu does.
#include <cmath>
#include <numbers>

#include "plugin/engine/pages/page_operator.h"

namespace {

using namespace quillbar::engine;

constexpr double kTurn = 360;
constexpr double kQuarter = 90;

// What is left of a sweep after whole quarters is a curve of its own from here on, in degrees; less is added
// to the last quarter. The difference of two singles such as 9.313 and 189.313 is not quite 180: a curve for
// the rest would be shorter than the rounding of its points, and viewers take the direction of a line's end
// from it.
constexpr double kLeastCurve = 0.1;

struct PolarPoint {
  double sine, cosine;
};

// Degrees count clockwise from the top.
PolarPoint AtAngle(double degrees) {
  const double radians = degrees * (std::numbers::pi / 180);
  return {std::sin(radians), std::cos(radians)};
}

}  // namespace

extern "C" HPDF_STATUS HPDF_Page_Arc(HPDF_Page page, HPDF_REAL x, HPDF_REAL y, HPDF_REAL radius, HPDF_REAL angle1,
                                     HPDF_REAL angle2) {
  const double asked = static_cast<double>(angle2) - static_cast<double>(angle1);
  PageOperator arc(page, kInPage | kInPath);
  if (!arc.RefuseIf(!std::isfinite(asked)).IsAllowed()) return arc.Status();
  // Turns after the first one add nothing to see.
  const double sweep = std::fabs(asked) < kTurn ? asked : std::copysign(kTurn, asked) + std::fmod(asked, kTurn);

  const bool continuesPath = AttributesOf(page).gmode == HPDF_GMODE_PATH_OBJECT;
  // Exact for every angle, however large: the remainder of a division is.
  const double start = std::remainder(static_cast<double>(angle1), kTurn);

  const auto pointX = [&](double sine) { return static_cast<HPDF_REAL>(x + radius * sine); };
  const auto pointY = [&](double cosine) { return static_cast<HPDF_REAL>(y + radius * cosine); };

  PolarPoint from = AtAngle(start);
  const HPDF_Point first{pointX(from.sine), pointY(from.cosine)};
  const auto write = [&](ContentWriter &content) {
    content.Write(first.x, first.y, continuesPath ? "l" : "m");
    // Whole quarters first, then the rest. The control points of an arc of a are on its tangents, 4/3 tan(a/4) radii
    // from its ends.
    for (double done = 0; done != sweep;) {
      const bool isLast = std::fabs(sweep - done) < kQuarter + kLeastCurve;
      const double next = isLast ? sweep : done + std::copysign(kQuarter, sweep);
      const double reach = std::tan((next - done) * (std::numbers::pi / 720)) * 4 / 3;
      const PolarPoint to = AtAngle(start + next);
      content.Write(pointX(from.sine + reach * from.cosine), pointY(from.cosine - reach * from.sine),
                    pointX(to.sine - reach * to.cosine), pointY(to.cosine + reach * to.sine), pointX(to.sine),
                    pointY(to.cosine), "c");
      from = to;
      done = next;
    }
  };
  arc.WriteBy(write).Then([&](PageAttributes &now) {
    if (!continuesPath) now.str_pos = first;
    now.cur_pos = {pointX(from.sine), pointY(from.cosine)};
    now.gmode = HPDF_GMODE_PATH_OBJECT;
  });
  // libharu looks at the difference of the singles, rounded to one.
  const bool isWholeTurn = std::fabs(static_cast<HPDF_REAL>(angle2 - angle1)) >= kTurn;
  return arc.RefuseIf(isWholeTurn).Status();
}
