// SPDX-License-Identifier: MIT
#include "plugin/page/path.h"

#include "plugin/page/coordinates.h"
#include "plugin/page/graphics_mode.h"

namespace quillbar::page {

void Rectangle(Page *page, Single x, Single y, Single width, Single height) {
  const PageData &data = DataOf(page);
  Call<HPDF_Page_Rectangle>(data.pageHandle, x, FlipRectangleY(data, y, height), width, height);
}

void Ellipse(Page *page, Single x, Single y, Single xRadius, Single yRadius) {
  const PageData &data = DataOf(page);
  Call<HPDF_Page_Ellipse>(data.pageHandle, x, FlipY(data, y), xRadius, yRadius);
}

void Arc(Page *page, Single x, Single y, Single radius, Single angle1, Single angle2) {
  const PageData &data = DataOf(page);
  Call<HPDF_Page_Arc>(data.pageHandle, x, FlipY(data, y), radius, angle1, angle2);
}

void MoveTo(Page *page, Single x, Single y) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PATH_OBJECT, GraphicsMode::PAGE_DESCRIPTION)) return;
  Call<HPDF_Page_MoveTo>(data.pageHandle, x, FlipY(data, y));
}

void LineTo(Page *page, Single x, Single y) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PATH_OBJECT)) return;
  Call<HPDF_Page_LineTo>(data.pageHandle, x, FlipY(data, y));
}

void CurveTo(Page *page, Single x1, Single y1, Single x2, Single y2, Single x3, Single y3) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PATH_OBJECT)) return;
  Call<HPDF_Page_CurveTo>(data.pageHandle, x1, FlipY(data, y1), x2, FlipY(data, y2), x3, FlipY(data, y3));
}

void CurveTo2(Page *page, Single x2, Single y2, Single x3, Single y3) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PATH_OBJECT)) return;
  Call<HPDF_Page_CurveTo2>(data.pageHandle, x2, FlipY(data, y2), x3, FlipY(data, y3));
}

void CurveTo3(Page *page, Single x1, Single y1, Single x3, Single y3) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PATH_OBJECT)) return;
  Call<HPDF_Page_CurveTo3>(data.pageHandle, x1, FlipY(data, y1), x3, FlipY(data, y3));
}

}  // namespace quillbar::page
