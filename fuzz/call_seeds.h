// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillbar::fuzz {

/// Calls `take` with sequences of calls that use every member, in an order that makes sense of some, with careful
/// arguments and with hostile ones.
void ForEachCallSeed(const std::function<void(const std::string &name, std::string_view sequence)> &take);

}  // namespace quillbar::fuzz
