// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbar::language {

/// A character as messages show it.
struct VisibleCharacter {
  std::string text;         // the character itself, or an escape: "\x1B", "\u200B"
  std::size_t bytes = 1;    // of the source
  std::size_t columns = 1;  // on a terminal
};

/// The first character of a text that isn't empty. Characters that can't be seen or that change how others are shown
/// (control characters, marks of direction, spaces without a width), and bytes that aren't UTF-8, become escapes.
VisibleCharacter FirstVisible(std::string_view text);

/// The whole text in this form; line feeds and tabs stay.
std::string VisibleText(std::string_view text);

}  // namespace quillbar::language
