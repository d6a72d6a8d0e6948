// SPDX-License-Identifier: MIT
#include "tests/shaping/script_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <utility>

namespace quillbar::test {
namespace {

// ASCII other than letters, the signs of Latin 1, general punctuation. Neither direction marks nor the soft hyphen,
// which is shown.
bool IsCommon(char32_t c) {
  if (c < 0x80) return (c | 0x20) < 'a' || (c | 0x20) > 'z';
  if (c == 0xAA || c == 0xAD || c == 0xBA || c == 0x200E || c == 0x200F) return false;
  return (c >= 0xA0 && c < 0xC0) || (c >= 0x200C && c <= 0x2027) || c == 0x25CC;
}

// Digits and some signs run from left to right in right-to-left text; what orders them is judged elsewhere.
bool HasOwnDirection(char32_t c) {
  return (c >= '0' && c <= '9') || (c >= 0x660 && c <= 0x669) || (c >= 0x6F0 && c <= 0x6F9) || c == '+' || c == '-' ||
         c == '%' || c == '#' || c == '$';
}

bool IsIn(const std::vector<WritingSystem::Block> &blocks, char32_t character) {
  return std::ranges::any_of(blocks,
                             [&](const auto &block) { return block.first <= character && character <= block.last; });
}

// Those that have a letter of the writing system, each once. Files have the names with characters of 256 each
// (translated_names.py).
std::vector<std::string> NamesWithLettersOf(const WritingSystem &system) {
  std::set<char32_t> pages;
  for (const auto &[first, last] : system.blocks) {
    for (char32_t page = first >> 8; page <= last >> 8; ++page) pages.insert(page);
  }
  std::set<std::string> names;
  for (const char32_t page : pages) {
    std::ifstream file(std::filesystem::path(QUILLBAR_TRANSLATED_NAMES) /
                       fmt::format("{:02X}.txt", static_cast<std::uint32_t>(page)));
    for (std::string name; std::getline(file, name);) {
      if (std::ranges::any_of(CharactersOf(name), [&](char32_t c) { return IsIn(system.blocks, c); }))
        names.insert(std::move(name));
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace

bool WritingSystem::Has(char32_t character) const {
  return IsIn(blocks, character) || IsIn(companions, character) ||
         (IsCommon(character) && !(isRightToLeft && HasOwnDirection(character)));
}

std::u32string CharactersOf(const std::string &utf8) {
  std::u32string characters;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k)
      character = character << 6 | (static_cast<unsigned char>(utf8.at(i + k)) & 0x3FU);
    characters += character;
    i += length;
  }
  return characters;
}

std::vector<std::string> EvenlyChosen(std::vector<std::string> names, std::size_t most) {
  if (names.size() <= most) return names;
  std::vector<std::string> some;
  for (std::size_t i = 0; i < most; ++i) some.push_back(names[i * names.size() / most]);
  return some;
}

std::string ReasonForNoNames() {
  return std::filesystem::exists(QUILLBAR_TRANSLATED_NAMES)
             ? ""
             : "needs Debian's package iso-codes, where the build is configured";
}

std::vector<std::string> NamesIn(const WritingSystem &system, const std::function<bool(char32_t)> &isCovered) {
  std::vector<std::string> names = NamesWithLettersOf(system);
  std::erase_if(names, [&](const std::string &name) {
    return !std::ranges::all_of(CharactersOf(name), [&](char32_t c) { return system.Has(c) && isCovered(c); });
  });
  return names;
}

}  // namespace quillbar::test
