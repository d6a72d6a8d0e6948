// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/truetype/truetype_name.h"

#include <cstdint>
#include <cstdio>

namespace quillbar::engine {

namespace {

// FNV-1a: the same on every platform.
std::uint64_t Hash(Bytes bytes) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const std::uint8_t byte : bytes) hash = (hash ^ byte) * 0x100000001B3;
  return hash;
}

std::string WithoutBlanks(std::string text) {
  std::erase(text, ' ');
  return text;
}

struct NameParts {
  std::string name;
  std::string style;  // with its comma
};

NameParts PartsOfName(const TrueTypeFile &font) {
  NameParts parts{WithoutBlanks(font.PostScriptName()), {}};
  const std::string style = font.SubfamilyName();
  // A style that begins with a blank has an empty first word.
  if (!style.empty() && !style.starts_with("Regular")) parts.style = "," + style.substr(0, style.find(' '));
  return parts;
}

std::string DigitsOf(std::uint64_t hash) {
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08X", static_cast<unsigned>(hash & 0xFFFFFFFF));
  return digits;
}

}  // namespace

std::string LibraryNameOf(const TrueTypeFile &font, std::size_t longest) {
  NameParts parts = PartsOfName(font);
  if (parts.name.empty()) parts.name = "TrueTypeFont-" + DigitsOf(Hash(font.Whole()));
  return (parts.name + parts.style).substr(0, longest);
}

std::string LibraryNameWithSuffix(const TrueTypeFile &font, std::size_t longest, unsigned attempt) {
  NameParts parts = PartsOfName(font);
  if (parts.name.empty()) parts.name = "TrueTypeFont";
  const std::string end = "-" + DigitsOf(Hash(font.Whole()) + attempt) + parts.style.substr(0, longest / 2);
  return parts.name.substr(0, longest - end.size()) + end;
}

std::vector<std::string> OwnNamesOf(const TrueTypeFile &font) {
  const std::string own = WithoutBlanks(font.PostScriptName());
  if (own.empty()) return {};
  return {own, own + "," + WithoutBlanks(font.SubfamilyName())};
}

std::string SubsetTag(Bytes program) {
  std::string tag;
  for (std::uint64_t hash = Hash(program); tag.size() < 6; hash /= 26)
    tag.push_back(static_cast<char>('A' + hash % 26));
  return tag;
}

}  // namespace quillbar::engine
