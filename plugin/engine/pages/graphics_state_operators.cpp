// SPDX-License-Identifier: MIT
// General and special graphics state operators: w J j M d gs, q Q cm (ISO 32000-1, table 57).
#include <algorithm>

#include "plugin/engine/objects/enumeration_numbers.h"
#include "plugin/engine/pages/graphics_state_record.h"
#include "plugin/engine/pages/page_operator.h"

using namespace quillbar::engine;

extern "C" {

/// w: the width of lines in user space units; not negative.
HPDF_STATUS HPDF_Page_SetLineWidth(HPDF_Page page, HPDF_REAL width) {
  return PageOperator(page, kInPage | kInText).RefuseIf(width < 0).Write(width, "w").Then([&](PageAttributes &now) {
    now.gstate->line_width = width;
  });
}

/// J: the shape of the ends of lines.
QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_Page_SetLineCap(HPDF_Page page, HPDF_LineCap cap) {
  const auto number = static_cast<HPDF_UINT>(cap);
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(number >= HPDF_LINECAP_EOF, HPDF_PAGE_OUT_OF_RANGE, number)
      .Write(number, "J")
      .Then([&](PageAttributes &now) { now.gstate->line_cap = cap; });
}

/// j: the shape of the corners of lines.
QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_Page_SetLineJoin(HPDF_Page page, HPDF_LineJoin join) {
  const auto number = static_cast<HPDF_UINT>(join);
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(number >= HPDF_LINEJOIN_EOF, HPDF_PAGE_OUT_OF_RANGE, number)
      .Write(number, "j")
      .Then([&](PageAttributes &now) { now.gstate->line_join = join; });
}

/// d: dashes and gaps in turn, one number or an even count of at most eight, each from 1 to 100 user space units; none,
/// with phase 0, for solid lines. `phase` is where in the pattern a line begins, at most 2147483647 units. `lengths`
/// are `count` numbers, null for none.
HPDF_STATUS HPDF_Page_SetDash(HPDF_Page page, const HPDF_UINT16 *lengths, HPDF_UINT count, HPDF_UINT phase) {
  HPDF_DashMode dash{};
  const bool isTooLong = count > std::size(dash.ptn);
  const bool isUneven = count != 1 && count % 2 != 0;
  const std::span pattern(lengths, lengths == nullptr || isTooLong ? 0 : count);
  const auto isBadLength = [](HPDF_UINT16 length) { return length == 0 || length > HPDF_MAX_DASH_PATTERN; };
  std::copy(pattern.begin(), pattern.end(), dash.ptn);
  dash.num_ptn = count;
  dash.phase = phase;
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(isTooLong, HPDF_PAGE_INVALID_PARAM_COUNT, count)
      .RefuseIf(phase > HPDF_LIMIT_MAX_INT, HPDF_PAGE_OUT_OF_RANGE, phase)
      .RefuseIf(isUneven, HPDF_PAGE_INVALID_PARAM_COUNT, count)
      .RefuseIf(count == 0 && phase > 0, HPDF_PAGE_OUT_OF_RANGE, phase)
      .RefuseIf(count > 0 && lengths == nullptr, HPDF_INVALID_PARAMETER, phase)
      .RefuseIf(std::any_of(pattern.begin(), pattern.end(), isBadLength))
      .Write(pattern, phase, "d")
      .Then([&](PageAttributes &now) { now.gstate->dash_mode = dash; });
}

/// gs: sets the parameters of `state`, which belongs to the same document and can no longer be changed then.
HPDF_STATUS HPDF_Page_SetExtGState(HPDF_Page page, HPDF_ExtGState state) {
  PageOperator set(page, kInPage);
  set.RefuseIf(!HPDF_ExtGState_Validate(state), HPDF_INVALID_OBJECT)
      .RefuseIf([&](const PageAttributes &) { return page->mmgr != state->mmgr; }, HPDF_INVALID_EXT_GSTATE);
  const ResourceName name = set.NameOf(kGraphicsStates, state, HPDF_OK);
  return set.Write(name, "gs").Then([&](PageAttributes &) {
    // It is shared by all pages that use it, so it can't be changed any more.
    state->header.obj_class = HPDF_OSUBCLASS_EXT_GSTATE_R | HPDF_OCLASS_DICT;
  });
}

/// q: saves the graphics state; at most 27 can be saved.
HPDF_STATUS HPDF_Page_GSave(HPDF_Page page) {
  PageOperator save(page, kInPage);
  save.RefuseIf([](const PageAttributes &now) { return IsDeepest(*now.gstate); }, HPDF_EXCEED_GSTATE_LIMIT);
  if (!save.IsAllowed()) return save.Status();
  // What can fail comes first.
  HPDF_GState copy = CopyOfGraphicsState(page->mmgr, AttributesOf(page).gstate);
  if (copy == nullptr) return HPDF_CheckError(page->error);
  if (!save.Write("q").IsAllowed()) FreeGraphicsState(page->mmgr, copy);
  return save.Then([&](PageAttributes &now) { now.gstate = copy; });
}

/// Q: restores the state that was saved last.
HPDF_STATUS HPDF_Page_GRestore(HPDF_Page page) {
  const auto hasNoneSaved = [](const PageAttributes &now) { return now.gstate->prev == nullptr; };
  return PageOperator(page, kInPage)
      .RefuseIf(hasNoneSaved, HPDF_PAGE_CANNOT_RESTORE_GSTATE)
      .Write("Q")
      .Then([&](PageAttributes &now) { now.gstate = FreeGraphicsState(page->mmgr, now.gstate); });
}

/// cm: multiplies the transformation matrix by (a, b, c, d, x, y) from the left.
HPDF_STATUS HPDF_Page_Concat(HPDF_Page page, HPDF_REAL a, HPDF_REAL b, HPDF_REAL c, HPDF_REAL d, HPDF_REAL x,
                             HPDF_REAL y) {
  return PageOperator(page, kInPage).Write(a, b, c, d, x, y, "cm").Then([&](PageAttributes &now) {
    HPDF_TransMatrix &matrix = now.gstate->trans_matrix;
    const HPDF_TransMatrix old = matrix;
    matrix.a = old.a * a + old.b * c;
    matrix.b = old.a * b + old.b * d;
    matrix.c = old.c * a + old.d * c;
    matrix.d = old.c * b + old.d * d;
    matrix.x = old.x + x * old.a + y * old.c;
    matrix.y = old.y + x * old.b + y * old.d;
  });
}

}  // extern "C"
