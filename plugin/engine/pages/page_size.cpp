// SPDX-License-Identifier: MIT
// HPDF_Page_SetSize, HPDF_Page_SetWidth and HPDF_Page_SetHeight refuse what they cannot do before they do
// anything.
//
// libharu's HPDF_Page_SetSize takes the size number that follows its last one and reads beyond its table of
// sizes. Its HPDF_Page_SetWidth and HPDF_Page_SetHeight report a bad value through the page before they look
// whether there is a page.
#include <hpdf.h>

#include "plugin/engine/objects/enumeration_numbers.h"

extern "C" {

HPDF_STATUS Libharu_HPDF_Page_SetSize(HPDF_Page page, HPDF_PageSizes size, HPDF_PageDirection direction);
HPDF_STATUS Libharu_HPDF_Page_SetWidth(HPDF_Page page, HPDF_REAL value);
HPDF_STATUS Libharu_HPDF_Page_SetHeight(HPDF_Page page, HPDF_REAL value);

QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_Page_SetSize(HPDF_Page page, HPDF_PageSizes size,
                                                              HPDF_PageDirection direction) {
  if (!HPDF_Page_Validate(page)) return HPDF_INVALID_PAGE;
  if (static_cast<HPDF_UINT>(size) >= HPDF_PAGE_SIZE_EOF) {
    return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_SIZE, static_cast<HPDF_STATUS>(size));
  }
  if (direction != HPDF_PAGE_PORTRAIT && direction != HPDF_PAGE_LANDSCAPE) {
    return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_DIRECTION, static_cast<HPDF_STATUS>(direction));
  }
  return Libharu_HPDF_Page_SetSize(page, size, direction);
}

HPDF_STATUS HPDF_Page_SetWidth(HPDF_Page page, HPDF_REAL value) {
  return HPDF_Page_Validate(page) ? Libharu_HPDF_Page_SetWidth(page, value) : HPDF_INVALID_PAGE;
}

HPDF_STATUS HPDF_Page_SetHeight(HPDF_Page page, HPDF_REAL value) {
  return HPDF_Page_Validate(page) ? Libharu_HPDF_Page_SetHeight(page, value) : HPDF_INVALID_PAGE;
}

}  // extern "C"
