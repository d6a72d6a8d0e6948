// SPDX-License-Identifier: MIT
#include "plugin/page/graphics_state.h"

#include "plugin/page/coordinates.h"
#include "plugin/page/graphics_mode.h"
#include "plugin/page/saved_fonts.h"

namespace quillbar::page {

GraphicsMode GetGraphicsMode(Page *page) { return static_cast<GraphicsMode>(ModeOf(DataOf(page))); }

void ConcatMatrix(Page *page, Single a, Single b, Single c, Single d, Single x, Single y) {
  const PageData &data = DataOf(page);
  Call<HPDF_Page_Concat>(data.pageHandle, a, b, c, d, x, FlipY(data, y));
}

void SaveState(Page *page) {
  MakeRoomForFont(page);
  if (Call<HPDF_Page_GSave>(HandleOf(page)) == HPDF_OK) SaveFont(page);
}

void RestoreState(Page *page) {
  Call<HPDF_Page_GRestore>(HandleOf(page));
  RestoreFont(page);
}

}  // namespace quillbar::page
