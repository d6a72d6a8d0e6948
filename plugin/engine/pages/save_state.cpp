// SPDX-License-Identifier: MIT
// HPDF_Page_GSave, in place of libharu's, which loses the new state when the operator can't be written.
#include <hpdf.h>
#include <hpdf_gstate.h>

extern "C" HPDF_STATUS HPDF_Page_GSave(HPDF_Page page) {
  const HPDF_STATUS status = HPDF_Page_CheckState(page, HPDF_GMODE_PAGE_DESCRIPTION);
  if (status != HPDF_OK) return status;
  auto *attributes = static_cast<HPDF_PageAttr>(page->attr);
  HPDF_GState state = HPDF_GState_New(page->mmgr, attributes->gstate);
  if (state == nullptr) return HPDF_CheckError(page->error);
  if (HPDF_Stream_WriteStr(attributes->stream, "q\n") != HPDF_OK) {
    HPDF_GState_Free(page->mmgr, state);
    return HPDF_CheckError(page->error);
  }
  attributes->gstate = state;
  return HPDF_OK;
}
