// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>
#include <variant>

namespace quillbar::language {

/// What a constant can be that #If knows.
using TargetValue = std::variant<bool, double, std::string_view>;

/// A constant that says for what a program is compiled.
struct TargetConstant {
  std::string_view name;
  TargetValue value;
};

/// The constants of this host: `TargetLinux`, `Target64Bit`, `DebugBuild` and the like.
std::span<const TargetConstant> TargetConstants();

}  // namespace quillbar::language
