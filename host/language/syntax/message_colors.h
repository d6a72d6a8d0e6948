// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>
#include <string_view>

namespace quillbar::language {

/// What messages are written with around their parts: nothing, or the control sequences of a terminal (ECMA-48, SGR).
struct MessageColors {
  std::string_view place;   // before file, line and column
  std::string_view kind;    // before "error" or the name of an exception
  std::string_view caret;   // before the row of carets
  std::string_view normal;  // after each of them
};

inline constexpr MessageColors kNoColors;
inline constexpr MessageColors kTerminalColors{"\x1B[1m", "\x1B[1;31m", "\x1B[1;31m", "\x1B[0m"};

namespace detail {
inline int ColorsSlot() {
  static const int slot = std::ios_base::xalloc();
  return slot;
}
}  // namespace detail

/// Says that messages into this stream have colors.
inline void UseColors(std::ostream &stream) { stream.iword(detail::ColorsSlot()) = 1; }

/// The colors of messages into this stream.
inline const MessageColors &ColorsOf(std::ostream &stream) {
  return stream.iword(detail::ColorsSlot()) != 0 ? kTerminalColors : kNoColors;
}

}  // namespace quillbar::language
