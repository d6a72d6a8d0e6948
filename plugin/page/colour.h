// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/page/graphics_mode.h"
#include "plugin/script/forward.h"

namespace quillbar::page {

/// The modes in which PDF lets colours change.
using WhereColoursChange = In<GraphicsMode::PAGE_DESCRIPTION, GraphicsMode::TEXT_OBJECT>;

/// `FillColor` and `StrokeColor`: sets a script's colour with the library's function for three components. Page
/// description or text object.
template <auto SetComponents>
void SetColor(Page *page, std::intptr_t, Color value) {
  const HPDF_RGBColor color = ToLibraryColor(value);
  Forwarded<Page, SetComponents, WhereColoursChange>::Run(page, color.r, color.g, color.b);
}

}  // namespace quillbar::page
