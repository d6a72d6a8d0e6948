// SPDX-License-Identifier: MIT
// Libraries of other systems are bound to their C library whatever functions the program has.
#include "tests/plugin/shortage/watched_files.h"

namespace quillbar::test::watched_files {

bool IsPossible() { return false; }
void Begin(Watch *) {}

}  // namespace quillbar::test::watched_files
