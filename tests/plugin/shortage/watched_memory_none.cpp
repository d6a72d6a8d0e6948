// SPDX-License-Identifier: MIT
// Libraries of other systems are bound to their C library whatever functions the program has, and a sanitizer has its own
// in their place.
#include "tests/plugin/shortage/watched_memory.h"

namespace quillbar::test::watched_memory {

bool IsPossible() { return false; }
void Watch(const std::vector<std::string_view> &) {}
void RefuseAfter(long, bool) {}
bool GrantAll() { return false; }
std::size_t BlockCount() { return 0; }

}  // namespace quillbar::test::watched_memory
