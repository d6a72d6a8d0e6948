// SPDX-License-Identifier: MIT
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "plugin/engine/memory/large_pages.h"

namespace quillbar::engine {

#if defined(MADV_HUGEPAGE)

bool OffersLargePages() { return sizeof(void *) > 4; }

void PreferLargePages(void *memory, std::size_t size) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t before = (page - reinterpret_cast<std::uintptr_t>(memory) % page) % page;
  if (size < before + page) return;
  madvise(static_cast<std::byte *>(memory) + before, (size - before) / page * page, MADV_HUGEPAGE);
}

#else

bool OffersLargePages() { return false; }
void PreferLargePages(void *, std::size_t) {}

#endif

}  // namespace quillbar::engine
