// SPDX-License-Identifier: MIT
// What must be true for every input, whatever it is.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace quillbar::fuzz {

/// Ends the run as a finding, with `rule` as its name, unless the rule holds.
inline void Demand(bool holds, const char *rule) {
  if (holds) return;
  std::fprintf(stderr, "Violated: %s\n", rule);
  std::abort();
}

}  // namespace quillbar::fuzz
