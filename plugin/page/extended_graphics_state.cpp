// SPDX-License-Identifier: MIT
#include "plugin/page/extended_graphics_state.h"

#include "plugin/guard/library_call.h"
#include "plugin/page/extended_graphics_state_data.h"
#include "plugin/page/page_data.h"
#include "plugin/script/wrapper.h"

namespace quillbar::extended_graphics_state {

ExtendedGraphicsState *CreateExtendedGraphicsState(PDFDocument *document) {
  const HPDF_ExtGState handle = Call<HPDF_CreateExtGState>(DataOf(document).libraryDocument);
  ExtendedGraphicsState *state =
      NewOwnedByDocument<"QuillbarPDFWriter.ExtendedGraphicsState", ExtendedGraphicsState, ExtendedGraphicsStateData>(
          document);
  if (state != nullptr) DataOf(state).stateHandle = handle;
  return state;
}

void SetExtendedState(Page *page, ExtendedGraphicsState *state) {
  const PageData &data = DataOf(page);
  if (state == nullptr || DataOf(state).libraryDocument != data.libraryDocument) return;
  Call<HPDF_Page_SetExtGState>(data.pageHandle, DataOf(state).stateHandle);
}

}  // namespace quillbar::extended_graphics_state
