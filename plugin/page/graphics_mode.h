// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/engine/pages/page_object.h"
#include "plugin/guard/library_call.h"
#include "plugin/page/page_data.h"

namespace quillbar {

/// The page's graphics mode; 0 for a page without a library page.
inline std::uint16_t ModeOf(const PageData &page) { return engine::ModeOf(page.pageHandle); }

/// Whether the page is in one of these graphics modes. Members with a guard do nothing otherwise.
template <class... Modes>
bool IsIn(const PageData &page, Modes... modes) {
  const std::uint16_t current = ModeOf(page);
  return ((current == static_cast<std::uint16_t>(modes)) || ...);
}

/// The same as the condition of a line that forwards (script/forward.h).
template <GraphicsMode... modes>
struct In {
  static bool Holds(Page *page) { return IsIn(DataOf(page), modes...); }
};

}  // namespace quillbar
