// SPDX-License-Identifier: MIT
#include "plugin/page/extended_graphics_state.h"

#include "plugin/guard/library_call.h"
#include "plugin/guard/library_value.h"
#include "plugin/page/extended_graphics_state_data.h"
#include "plugin/page/page_data.h"
#include "plugin/script/owned_by_document.h"

namespace quillbar::extended_graphics_state {

void Initialize(Object object) { DataOf(static_cast<ExtendedGraphicsState *>(object)).document = nullptr; }

void Finalize(Object object) { Let(DataOf(static_cast<ExtendedGraphicsState *>(object)).document); }

void Constructor(ExtendedGraphicsState *state) { DataOf(state).document = nullptr; }

ExtendedGraphicsState *CreateExtendedGraphicsState(PDFDocument *document) {
  const HPDF_ExtGState handle = Call<HPDF_CreateExtGState>(DataOf(document).libraryDocument);
  ExtendedGraphicsState *state =
      NewOwnedByDocument<"QuillbarPDFWriter.ExtendedGraphicsState", ExtendedGraphicsState, ExtendedGraphicsStateData>(
          document);
  if (state != nullptr) DataOf(state).stateHandle = handle;
  return state;
}

void SetAlphaFill(ExtendedGraphicsState *state, Single value) {
  Call<HPDF_ExtGState_SetAlphaFill>(DataOf(state).stateHandle, value);
}

void SetAlphaStroke(ExtendedGraphicsState *state, Single value) {
  Call<HPDF_ExtGState_SetAlphaStroke>(DataOf(state).stateHandle, value);
}

void SetBlendMode(ExtendedGraphicsState *state, BlendMode value) {
  Call<HPDF_ExtGState_SetBlendMode>(DataOf(state).stateHandle, ToLibrary<HPDF_BlendMode>(value));
}

void SetExtendedState(Page *page, ExtendedGraphicsState *state) {
  const PageData &data = DataOf(page);
  if (state == nullptr || DataOf(state).libraryDocument != data.libraryDocument) return;
  Call<HPDF_Page_SetExtGState>(data.pageHandle, DataOf(state).stateHandle);
}

}  // namespace quillbar::extended_graphics_state
