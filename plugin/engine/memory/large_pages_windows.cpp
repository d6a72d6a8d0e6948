// SPDX-License-Identifier: MIT
// Windows gives large pages only to accounts with a right that few have.
#include "plugin/engine/memory/large_pages.h"

namespace quillbar::engine {

bool OffersLargePages() { return false; }
void PreferLargePages(void *, std::size_t) {}

}  // namespace quillbar::engine
