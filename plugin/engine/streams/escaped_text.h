// SPDX-License-Identifier: MIT
/// The text of strings in a PDF file (ISO 32000-1, 7.3.4).
#pragma once

#include <cstddef>
#include <string_view>

namespace quillbar::engine {

/// Bytes that an escape takes in a literal string.
inline constexpr std::size_t kLongestEscape = 4;

/// Whether a byte can't stand for itself in a literal string or a name.
bool NeedsEscape(char byte);

/// Writes `text` to `end` as in a literal string, with an escape for each byte that needs one and without the
/// parentheses. There must be room for nothing but escapes. Returns where the text ends.
char *EscapeText(std::string_view text, char *end);

/// Writes `bytes` to `end`, where there must be room, as in a hexadecimal string without its angle brackets. Returns
/// where the text ends.
char *WriteHexDigits(std::string_view bytes, char *end);

}  // namespace quillbar::engine
