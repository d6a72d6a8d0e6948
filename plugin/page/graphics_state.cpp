// SPDX-License-Identifier: MIT
#include "plugin/page/graphics_state.h"

#include "plugin/guard/library_value.h"
#include "plugin/page/coordinates.h"
#include "plugin/page/graphics_mode.h"
#include "plugin/page/saved_fonts.h"

namespace quillbar::page {

Single GetLineWidth(Page *page) { return Call<HPDF_Page_GetLineWidth>(DataOf(page).pageHandle); }

void SetLineWidth(Page *page, std::intptr_t, Single value) {
  Call<HPDF_Page_SetLineWidth>(DataOf(page).pageHandle, value);
}

LineCapType GetLineCapType(Page *page) {
  return static_cast<LineCapType>(Call<HPDF_Page_GetLineCap>(DataOf(page).pageHandle));
}

void SetLineCapType(Page *page, std::intptr_t, LineCapType value) {
  Call<HPDF_Page_SetLineCap>(DataOf(page).pageHandle, ToLibrary<HPDF_LineCap>(value));
}

LineJoinType GetLineJoinType(Page *page) {
  return static_cast<LineJoinType>(Call<HPDF_Page_GetLineJoin>(DataOf(page).pageHandle));
}

void SetLineJoinType(Page *page, std::intptr_t, LineJoinType value) {
  Call<HPDF_Page_SetLineJoin>(DataOf(page).pageHandle, ToLibrary<HPDF_LineJoin>(value));
}

GraphicsMode GetGraphicsMode(Page *page) { return static_cast<GraphicsMode>(ModeOf(DataOf(page))); }

void ConcatMatrix(Page *page, Single a, Single b, Single c, Single d, Single x, Single y) {
  const PageData &data = DataOf(page);
  Call<HPDF_Page_Concat>(data.pageHandle, a, b, c, d, x, FlipY(data, y));
}

void Clip(Page *page) { Call<HPDF_Page_Clip>(DataOf(page).pageHandle); }

void SaveState(Page *page) {
  if (Call<HPDF_Page_GSave>(DataOf(page).pageHandle) == HPDF_OK) SaveFont(page);
}

void RestoreState(Page *page) {
  Call<HPDF_Page_GRestore>(DataOf(page).pageHandle);
  RestoreFont(page);
}

}  // namespace quillbar::page
