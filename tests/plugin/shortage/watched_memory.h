// SPDX-License-Identifier: MIT
// The memory of loaded plugins: each block that their code asks the C library for can be refused, and is counted.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillbar::test::watched_memory {

/// Whether this platform's C library lets a program stand before its functions.
bool IsPossible();

/// Watches the plugins of these file names that are loaded now, and no others from before.
void Watch(const std::vector<std::string_view> &fileNames);

/// Refuses the block that is asked for after `granted` others; with `forGood` all after it too.
void RefuseAfter(long granted, bool forGood);
/// Grants all. Tells whether any block was refused since `RefuseAfter`.
bool GrantAll();

/// Blocks that were asked for since `RefuseAfter`.
long AskedCount();

/// Blocks that the plugins have and have not given back.
std::size_t BlockCount();

}  // namespace quillbar::test::watched_memory
