// SPDX-License-Identifier: MIT
// HPDF_Page_SetDash refuses patterns and phases that it has no room for.
//
// libharu's writes a pattern of more than eight numbers beyond the graphics state's record and its own
// buffer, and prints a phase of 2^31 or more as a negative number.
#include <hpdf.h>

extern "C" {

HPDF_STATUS Libharu_HPDF_Page_SetDash(HPDF_Page page, const HPDF_UINT16 *pattern, HPDF_UINT count, HPDF_UINT phase);

HPDF_STATUS HPDF_Page_SetDash(HPDF_Page page, const HPDF_UINT16 *pattern, HPDF_UINT count, HPDF_UINT phase) {
  constexpr HPDF_UINT kMostNumbers = sizeof(HPDF_DashMode::ptn) / sizeof *HPDF_DashMode::ptn;
  const bool tooMany = count > kMostNumbers;
  if (!tooMany && phase <= HPDF_LIMIT_MAX_INT) return Libharu_HPDF_Page_SetDash(page, pattern, count, phase);

  const HPDF_STATUS state = HPDF_Page_CheckState(page, HPDF_GMODE_PAGE_DESCRIPTION | HPDF_GMODE_TEXT_OBJECT);
  if (state != HPDF_OK) return state;
  if (tooMany) return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_PARAM_COUNT, count);
  return HPDF_RaiseError(page->error, HPDF_PAGE_OUT_OF_RANGE, phase);
}

}  // extern "C"
