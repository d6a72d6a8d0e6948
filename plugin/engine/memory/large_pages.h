// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace quillbar::engine {

/// Whether the system can be asked for large pages, and there are addresses to spare for slabs that consist of them.
bool OffersLargePages();

/// Asks the system to back this memory, of `size` bytes, with pages of some megabytes where whole ones fit. It then hands
/// out new memory in fewer steps, and the processor translates addresses from fewer entries. Only a wish: nothing is
/// reported.
void PreferLargePages(void *memory, std::size_t size);

}  // namespace quillbar::engine
