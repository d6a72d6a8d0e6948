// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <string_view>

namespace quillbar {

/// A string literal that can be a template argument: the declarations, service names and class names
/// of the host's interface are written once, as literals, and the compiler works with them.
template <std::size_t Size>
struct FixedString {
  char text[Size]{};

  // Implicit on purpose: a literal in a template argument list becomes a FixedString by itself.
  consteval FixedString(const char (&literal)[Size]) { std::copy_n(literal, Size, text); }

  /// The text without its nul.
  constexpr std::string_view View() const { return {text, Size - 1}; }
  constexpr const char *CString() const { return text; }
  constexpr auto operator<=>(const FixedString &) const = default;
};

}  // namespace quillbar
