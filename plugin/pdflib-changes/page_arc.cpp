// HPDF_Page_Arc for every pair of angles, in place of libharu's.
//
// libharu divides by the sine of half the sweep, so that equal angles (and a radius of 0) print no numbers;
// it shifts the angles by whole turns in single precision until they are positive and then walks from one to
// the other in steps of 90 degrees, which never ends once 90 is lost in the rounding of a large angle; a
// sweep of 360 degrees or more is reported, and drawn all the same.
#include <hpdf.h>

#include <cmath>
#include <numbers>

#include "plugin/pdflib-changes/operator_text.h"

namespace {

using quillbar::pdflib::OperatorText;

struct PolarPoint {
  double sine, cosine;
};

// Degrees count clockwise from the top.
PolarPoint AtAngle(double degrees) {
  const double radians = degrees * (std::numbers::pi / 180);
  return {std::sin(radians), std::cos(radians)};
}

}  // namespace

extern "C" HPDF_STATUS HPDF_Page_Arc(HPDF_Page page, HPDF_REAL x, HPDF_REAL y, HPDF_REAL radius,
                                     HPDF_REAL angle1, HPDF_REAL angle2) {
  const HPDF_STATUS state = HPDF_Page_CheckState(page, HPDF_GMODE_PAGE_DESCRIPTION | HPDF_GMODE_PATH_OBJECT);
  if (state != HPDF_OK) return state;

  const double sweep = static_cast<double>(angle2) - static_cast<double>(angle1);
  // Written so that NaN is refused too.
  if (!(std::fabs(sweep) < 360)) return HPDF_RaiseError(page->error, HPDF_PAGE_OUT_OF_RANGE, 0);
  if (sweep == 0) return HPDF_OK;

  auto *attributes = static_cast<HPDF_PageAttr>(page->attr);
  const bool continuesPath = attributes->gmode == HPDF_GMODE_PATH_OBJECT;
  // Exact for every angle, however large: the remainder of a division is.
  const double start = std::remainder(static_cast<double>(angle1), 360.0);

  const auto pointX = [&](double sine) { return static_cast<HPDF_REAL>(x + radius * sine); };
  const auto pointY = [&](double cosine) { return static_cast<HPDF_REAL>(y + radius * cosine); };

  OperatorText text;
  PolarPoint from = AtAngle(start);
  text.Operand(pointX(from.sine)).Operand(pointY(from.cosine)).Operator(continuesPath ? 'l' : 'm');
  if (!continuesPath) attributes->str_pos = {pointX(from.sine), pointY(from.cosine)};

  // Whole quarters first, then the rest. The control points lie on the tangents, at 4/3 tan(a/4) radii for an
  // arc of a.
  const double quarter = std::copysign(90.0, sweep);
  for (double done = 0; done != sweep;) {
    const double next = std::fabs(sweep - done) > 90 ? done + quarter : sweep;
    const double reach = std::tan((next - done) * (std::numbers::pi / 720)) * 4 / 3;
    const PolarPoint to = AtAngle(start + next);
    text.Operand(pointX(from.sine + reach * from.cosine)).Operand(pointY(from.cosine - reach * from.sine));
    text.Operand(pointX(to.sine - reach * to.cosine)).Operand(pointY(to.cosine + reach * to.sine));
    text.Operand(pointX(to.sine)).Operand(pointY(to.cosine)).Operator('c');
    from = to;
    done = next;
  }

  if (text.WriteTo(attributes->stream) != HPDF_OK) return HPDF_CheckError(page->error);
  attributes->cur_pos = {pointX(from.sine), pointY(from.cosine)};
  attributes->gmode = HPDF_GMODE_PATH_OBJECT;
  return HPDF_OK;
}
