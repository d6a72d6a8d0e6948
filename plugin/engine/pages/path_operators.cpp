// SPDX-License-Identifier: MIT
// Operators of paths: construction m l c v y re, painting S f B n, and clipping W (ISO 32000-1, tables 59 to 61).
#include "plugin/engine/pages/page_operator.h"

using namespace quillbar::engine;

namespace {

// A subpath begins at a point, which becomes the current one.
void BeginSubpath(PageAttributes &now, HPDF_REAL x, HPDF_REAL y) {
  now.cur_pos = now.str_pos = {x, y};
  now.gmode = HPDF_GMODE_PATH_OBJECT;
}

// The path ends with an operator that paints it, or only lets it clip.
template <std::size_t Size>
HPDF_STATUS EndPath(HPDF_Page page, const char (&operatorName)[Size]) {
  return PageOperator(page, kInPath | kInClippingPath).Write(operatorName).Then([](PageAttributes &now) {
    now.cur_pos = {0, 0};
    now.gmode = HPDF_GMODE_PAGE_DESCRIPTION;
  });
}

}  // namespace

extern "C" {

/// m: begins a subpath.
HPDF_STATUS HPDF_Page_MoveTo(HPDF_Page page, HPDF_REAL x, HPDF_REAL y) {
  return PageOperator(page, kInPage | kInPath).Write(x, y, "m").Then([&](PageAttributes &now) {
    BeginSubpath(now, x, y);
  });
}

/// l: a straight line to (x, y).
HPDF_STATUS HPDF_Page_LineTo(HPDF_Page page, HPDF_REAL x, HPDF_REAL y) {
  return PageOperator(page, kInPath).Write(x, y, "l").Then([&](PageAttributes &now) { now.cur_pos = {x, y}; });
}

/// c: a Bézier curve with two control points to (x3, y3).
HPDF_STATUS HPDF_Page_CurveTo(HPDF_Page page, HPDF_REAL x1, HPDF_REAL y1, HPDF_REAL x2, HPDF_REAL y2, HPDF_REAL x3,
                              HPDF_REAL y3) {
  return PageOperator(page, kInPath).Write(x1, y1, x2, y2, x3, y3, "c").Then([&](PageAttributes &now) {
    now.cur_pos = {x3, y3};
  });
}

/// v: the same with the current point as the first control point.
HPDF_STATUS HPDF_Page_CurveTo2(HPDF_Page page, HPDF_REAL x2, HPDF_REAL y2, HPDF_REAL x3, HPDF_REAL y3) {
  return PageOperator(page, kInPath).Write(x2, y2, x3, y3, "v").Then([&](PageAttributes &now) {
    now.cur_pos = {x3, y3};
  });
}

/// y: the same with the end as the second control point.
HPDF_STATUS HPDF_Page_CurveTo3(HPDF_Page page, HPDF_REAL x1, HPDF_REAL y1, HPDF_REAL x3, HPDF_REAL y3) {
  return PageOperator(page, kInPath).Write(x1, y1, x3, y3, "y").Then([&](PageAttributes &now) {
    now.cur_pos = {x3, y3};
  });
}

/// re: a rectangle with a corner in (x, y), as a subpath of its own.
HPDF_STATUS HPDF_Page_Rectangle(HPDF_Page page, HPDF_REAL x, HPDF_REAL y, HPDF_REAL width, HPDF_REAL height) {
  return PageOperator(page, kInPage | kInPath).Write(x, y, width, height, "re").Then([&](PageAttributes &now) {
    BeginSubpath(now, x, y);
  });
}

/// m and four times c: an ellipse around (x, y), clockwise from its leftmost point, as a subpath of its own.
HPDF_STATUS HPDF_Page_Ellipse(HPDF_Page page, HPDF_REAL x, HPDF_REAL y, HPDF_REAL xRadius, HPDF_REAL yRadius) {
  // Where the control points lie on the tangents, in radii.
  constexpr HPDF_REAL kReach = 0.552F;
  const HPDF_REAL left = x - xRadius, right = x + xRadius, top = y + yRadius, bottom = y - yRadius;
  const HPDF_REAL innerLeft = x - xRadius * kReach, innerRight = x + xRadius * kReach;
  const HPDF_REAL innerTop = y + yRadius * kReach, innerBottom = y - yRadius * kReach;
  return PageOperator(page, kInPage | kInPath)
      .Write(left, y, "m",                                            //
             left, innerTop, innerLeft, top, x, top, "c",             //
             innerRight, top, right, innerTop, right, y, "c",         //
             right, innerBottom, innerRight, bottom, x, bottom, "c",  //
             innerLeft, bottom, left, innerBottom, left, y, "c")
      .Then([&](PageAttributes &now) { BeginSubpath(now, left, y); });
}

/// S: strokes the path.
HPDF_STATUS HPDF_Page_Stroke(HPDF_Page page) { return EndPath(page, "S"); }

/// f: fills the path by the nonzero winding number rule.
HPDF_STATUS HPDF_Page_Fill(HPDF_Page page) { return EndPath(page, "f"); }

/// B: fills the path, then strokes it.
HPDF_STATUS HPDF_Page_FillStroke(HPDF_Page page) { return EndPath(page, "B"); }

/// n: ends the path without painting it.
HPDF_STATUS HPDF_Page_EndPath(HPDF_Page page) { return EndPath(page, "n"); }

/// W: lets the path clip what is painted after it. It is still to be ended, by one of the four operators before.
HPDF_STATUS HPDF_Page_Clip(HPDF_Page page) {
  return PageOperator(page, kInPath).Write("W").Then([](PageAttributes &now) { now.gmode = HPDF_GMODE_CLIPPING_PATH; });
}

}  // extern "C"
