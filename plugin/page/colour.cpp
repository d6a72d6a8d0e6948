// SPDX-License-Identifier: MIT
#include "plugin/page/colour.h"

#include "plugin/page/graphics_mode.h"
#include "plugin/script/colour_conversion.h"

namespace quillbar::page {

namespace {

/// Sets a colour with one library call, in the modes in which PDF lets colours change.
template <auto LibraryFunction, class... Components>
void SetComponents(Page *page, Components... components) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PAGE_DESCRIPTION, GraphicsMode::TEXT_OBJECT)) return;
  Call<LibraryFunction>(data.pageHandle, components...);
}

}  // namespace

Color GetFillColor(Page *page) { return ToScriptColor(Call<HPDF_Page_GetRGBFill>(DataOf(page).pageHandle)); }

void SetFillColor(Page *page, std::intptr_t, Color value) {
  const HPDF_RGBColor color = ToLibraryColor(value);
  SetRGBFill(page, color.r, color.g, color.b);
}

Color GetStrokeColor(Page *page) { return ToScriptColor(Call<HPDF_Page_GetRGBStroke>(DataOf(page).pageHandle)); }

void SetStrokeColor(Page *page, std::intptr_t, Color value) {
  const HPDF_RGBColor color = ToLibraryColor(value);
  SetRGBStroke(page, color.r, color.g, color.b);
}

void SetRGBFill(Page *page, Single r, Single g, Single b) { SetComponents<HPDF_Page_SetRGBFill>(page, r, g, b); }

void SetRGBStroke(Page *page, Single r, Single g, Single b) { SetComponents<HPDF_Page_SetRGBStroke>(page, r, g, b); }

void SetCMYKFill(Page *page, Single c, Single m, Single y, Single k) {
  SetComponents<HPDF_Page_SetCMYKFill>(page, c, m, y, k);
}

void SetCMYKStroke(Page *page, Single c, Single m, Single y, Single k) {
  SetComponents<HPDF_Page_SetCMYKStroke>(page, c, m, y, k);
}

}  // namespace quillbar::page
