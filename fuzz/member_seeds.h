// SPDX-License-Identifier: MIT
// Scripts that use every member of every class, made from what the host has registered.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillbar::fuzz {

/// Calls `take` with the name of each class, of the plugins and of the host, and a script about it. Members
/// that take files are left out.
void ForEachMemberSeed(const std::function<void(const std::string &name, std::string_view script)> &take);

}  // namespace quillbar::fuzz
