// SPDX-License-Identifier: MIT
#include "plugin/page/size.h"

#include "plugin/guard/library_call.h"
#include "plugin/page/page_data.h"

namespace quillbar::page {

namespace {

/// One beyond the last size: that number reaches the library.
constexpr std::uint32_t kLastSizeHandedOver = 12;

void CacheHeight(PageData &data) { data.cachedHeight = Call<HPDF_Page_GetHeight>(data.pageHandle); }

void RenewHeight(PageData &data) {
  if (data.transformCoordinates != 0) CacheHeight(data);
}

}  // namespace

void SetSize(Page *page, PageSize size, PageDirection direction) {
  const auto sizeNumber = static_cast<std::uint32_t>(size);
  const auto directionNumber = static_cast<std::uint32_t>(direction);
  if (sizeNumber > kLastSizeHandedOver || directionNumber > 1) return;
  PageData &data = DataOf(page);
  Call<HPDF_Page_SetSize>(data.pageHandle, static_cast<HPDF_PageSizes>(sizeNumber),
                          static_cast<HPDF_PageDirection>(directionNumber));
  RenewHeight(data);
}

void SetHeight(Page *page, std::intptr_t, Single value) {
  PageData &data = DataOf(page);
  Call<HPDF_Page_SetHeight>(data.pageHandle, value);
  RenewHeight(data);
}

Boolean GetTransformCoordinates(Page *page) { return DataOf(page).transformCoordinates != 0 ? 1 : 0; }

void SetTransformCoordinates(Page *page, std::intptr_t, Boolean value) {
  PageData &data = DataOf(page);
  const bool on = value != 0;
  if (on == (data.transformCoordinates != 0)) return;
  data.transformCoordinates = on;
  if (on) CacheHeight(data);
}

}  // namespace quillbar::page
