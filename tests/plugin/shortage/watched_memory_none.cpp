// SPDX-License-Identifier: MIT
// Libraries of other systems are bound to their C library whatever functions the program has, and the sanitizers of other
// compilers than GCC have theirs in the program itself.
#include "tests/plugin/shortage/watched_memory.h"

namespace quillbar::test::watched_memory {

bool IsPossible() { return false; }
void Watch(const std::vector<std::string_view> &) {}
void RefuseAfter(long, bool) {}
bool GrantAll() { return false; }
long AskedCount() { return 0; }
std::size_t BlockCount() { return 0; }

}  // namespace quillbar::test::watched_memory
