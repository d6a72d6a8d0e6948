// SPDX-License-Identifier: MIT
// What must be true for every input, whatever it is.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/sanitizers.h"

namespace quillbar::fuzz {

/// Ends the run as a finding, with `rule` as its name, unless the rule holds.
inline void Demand(bool holds, const char *rule) {
  if (holds) return;
  std::fprintf(stderr, "Violated: %s\n", rule);
  std::abort();
}

/// Under MemorySanitizer, ends the run at a byte that nobody has set; it only reports by itself what a branch depends on.
inline void DemandSet([[maybe_unused]] std::string_view bytes) {
#if QUILLBAR_WATCHES_VALUES
  __msan_check_mem_is_initialized(bytes.data(), bytes.size());
#endif
}

}  // namespace quillbar::fuzz
