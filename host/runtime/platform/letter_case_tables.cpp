// SPDX-License-Identifier: MIT
#include <algorithm>

#include "host/runtime/platform/letter_case.h"
#include "host/runtime/platform/tables/character_tables.h"

namespace quillbar::host::platform {
namespace {

char32_t Mapped(char32_t character, std::span<const CaseMapping> mappings) {
  const auto mapping = std::ranges::lower_bound(mappings, character, {}, &CaseMapping::from);
  return mapping != mappings.end() && mapping->from == character ? mapping->to : character;
}

}  // namespace

char32_t UpperCase(char32_t character) {
  if (character < 0x80) return character >= 'a' && character <= 'z' ? character - 32 : character;
  return Mapped(character, kUpperCaseMappings);
}

char32_t LowerCase(char32_t character) {
  if (character < 0x80) return character >= 'A' && character <= 'Z' ? character + 32 : character;
  return Mapped(character, kLowerCaseMappings);
}

}  // namespace quillbar::host::platform
