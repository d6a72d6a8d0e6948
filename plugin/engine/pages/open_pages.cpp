// SPDX-License-Identifier: MIT
// What is open on a page when its document is saved. libharu's save ends it on the page: what a script shows after it has
// saved in the middle of a text object is refused, and the states that it wants to restore are gone.
#include "plugin/engine/pages/open_pages.h"

#include <hpdf_utils.h>

#include <new>
#include <string>

namespace quillbar::engine {

namespace {

// The operators that end what is open on a page; empty for most pages.
std::string EndingOf(const HPDF_PageAttr_Rec &page) {
  std::string ending;
  if ((page.gmode & (HPDF_GMODE_PATH_OBJECT | HPDF_GMODE_CLIPPING_PATH)) != 0) ending += "n\n";
  if (page.gmode == HPDF_GMODE_TEXT_OBJECT) ending += "ET\n";
  if (page.gstate != nullptr) {
    for (HPDF_GState state = page.gstate; state->prev != nullptr; state = state->prev) ending += "Q\n";
  }
  return ending;
}

}  // namespace

EndedPages::~EndedPages() {
  for (const MemoryStreamMark &mark : marks_) mark.CutBack();
}

HPDF_STATUS EndedPages::EndAll(HPDF_Xref xref) {
  try {
    for (HPDF_UINT i = 0; i < xref->entries->count; ++i) {
      const void *object = HPDF_Xref_GetEntry(xref, i)->obj;
      if (object == nullptr ||
          static_cast<const HPDF_Obj_Header *>(object)->obj_class != (HPDF_OSUBCLASS_PAGE | HPDF_OCLASS_DICT)) {
        continue;
      }
      const HPDF_STATUS status = End(*static_cast<HPDF_PageAttr>(static_cast<const HPDF_Dict_Rec *>(object)->attr));
      if (status != HPDF_OK) return status;
    }
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(xref->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  return HPDF_OK;
}

HPDF_STATUS EndedPages::End(const HPDF_PageAttr_Rec &page) {
  const std::string ending = EndingOf(page);
  if (ending.empty()) return HPDF_OK;
  marks_.emplace_back(page.stream);
  return HPDF_Stream_WriteStr(page.stream, ending.c_str());
}

}  // namespace quillbar::engine
