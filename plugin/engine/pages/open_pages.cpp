// SPDX-License-Identifier: MIT
#include "plugin/engine/pages/open_pages.h"

#include <hpdf_utils.h>

#include <new>

#include "plugin/engine/pages/content_writer.h"

namespace quillbar::engine {

EndedPages::~EndedPages() {
  for (const MemoryStreamMark &content : contents_) content.CutBack();
}

HPDF_STATUS EndedPages::EndAll(HPDF_Xref xref) {
  try {
    for (HPDF_UINT i = 0; i < xref->entries->count; ++i) {
      auto *object = static_cast<HPDF_Dict>(HPDF_Xref_GetEntry(xref, i)->obj);
      if (!IsPage(object)) continue;
      if (const HPDF_STATUS status = End(AttributesOf(object)); status != HPDF_OK) return status;
    }
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(xref->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  return HPDF_OK;
}

HPDF_STATUS EndedPages::End(const PageAttributes &page) {
  const bool hasSavedStates = page.gstate != nullptr && page.gstate->prev != nullptr;
  if (page.gmode == HPDF_GMODE_PAGE_DESCRIPTION && !hasSavedStates) return HPDF_OK;
  contents_.emplace_back(page.stream);
  ContentWriter content(page.stream);
  if ((page.gmode & (HPDF_GMODE_PATH_OBJECT | HPDF_GMODE_CLIPPING_PATH)) != 0) content.Append("n");
  if (page.gmode == HPDF_GMODE_TEXT_OBJECT) content.Append("ET");
  for (const HPDF_GState_Rec *state = page.gstate; state->prev != nullptr; state = state->prev) content.Append("Q");
  return content.Finish();
}

}  // namespace quillbar::engine
