// SPDX-License-Identifier: MIT
#include "host/language/syntax/visible_text.h"

#include <fmt/format.h>
#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace quillbar::language {
namespace {

struct Range {
  char32_t first, last;
};

template <std::size_t Count>
bool IsIn(char32_t character, const Range (&ranges)[Count]) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [&](const Range &range) { return character >= range.first && character <= range.last; });
}

// Control characters, and the format characters (Unicode, category Cf) that are met in texts.
constexpr Range kInvisible[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},  {0x200B, 0x200F},
                                {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}};
// Twice as wide as others on terminals (Unicode, East_Asian_Width W and F), without the rare ones.
constexpr Range kWide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},  {0xAC00, 0xD7A3},
                           {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},  {0xFFE0, 0xFFE6},
                           {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

VisibleCharacter Escape(std::string text, std::size_t bytes) {
  const std::size_t columns = text.size();
  return {std::move(text), bytes, columns};
}

}  // namespace

VisibleCharacter FirstVisible(std::string_view text) {
  constexpr std::size_t kLongest = 4;
  const std::string_view start = text.substr(0, kLongest);
  auto next = start.begin();
  char32_t character = 0;
  try {
    character = utf8::next(next, start.end());
  } catch (const utf8::exception &) {
    return Escape(fmt::format("\\x{:02X}", static_cast<unsigned char>(start.front())), 1);
  }
  const auto bytes = static_cast<std::size_t>(next - start.begin());
  if (IsIn(character, kInvisible)) {
    const auto number = static_cast<std::uint32_t>(character);
    return Escape(number < 0x80 ? fmt::format("\\x{:02X}", number) : fmt::format("\\u{:04X}", number), bytes);
  }
  return {std::string(start.substr(0, bytes)), bytes, IsIn(character, kWide) ? 2U : 1U};
}

std::string VisibleText(std::string_view text) {
  std::string visible;
  while (!text.empty()) {
    const VisibleCharacter character = FirstVisible(text);
    const bool stays = text.front() == '\n' || text.front() == '\t';
    visible += stays ? std::string(1, text.front()) : character.text;
    text.remove_prefix(character.bytes);
  }
  return visible;
}

}  // namespace quillbar::language
