// SPDX-License-Identifier: MIT
#include <array>

#include "plugin/guard/library_call.h"
#include "plugin/page/graphics_state.h"
#include "plugin/page/page_data.h"
#include "plugin/script/uint16_array.h"

namespace quillbar::page {

namespace {

constexpr std::size_t kMostDashes = 8;

/// How many of `count` numbers the library takes: 1, or an even count up to 8.
constexpr std::size_t UsableCount(std::size_t count) {
  if (count >= kMostDashes) return kMostDashes;
  return count > 1 && count % 2 != 0 ? count - 1 : count;
}

}  // namespace

void SetDashPattern(Page *page, ArrayOf<std::uint16_t> *dashPattern, std::uint32_t phase) {
  const UInt16Array numbers(dashPattern);
  if (numbers.size() == 0) {
    ResetDashPattern(page);
    return;
  }
  if (!numbers.IsReadable()) return;
  std::array<HPDF_UINT16, kMostDashes> dashes{};
  const std::size_t count = UsableCount(numbers.size());
  for (std::size_t i = 0; i < count; ++i) dashes[i] = numbers[i];
  Call<HPDF_Page_SetDash>(DataOf(page).pageHandle, dashes.data(), static_cast<HPDF_UINT>(count), phase);
}

void ResetDashPattern(Page *page) { Call<HPDF_Page_SetDash>(DataOf(page).pageHandle, nullptr, 0U, 0U); }

}  // namespace quillbar::page
