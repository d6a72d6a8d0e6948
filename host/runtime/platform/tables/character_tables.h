// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

/// The answers of the platform interfaces `charset.h` and `letter_case.h` on Linux, as tables.
/// `write_character_tables.cpp` writes them at build time, for platforms whose own services know fewer sets or other
/// characters: a script gives the same bytes everywhere.
namespace quillbar::host::platform {

/// In a table of characters: these bytes are not a character.
inline constexpr char16_t kNoCharacter = 0xFFFF;

/// The characters of the byte pairs that share one first byte.
struct CharsetRow {
  std::uint8_t firstByte;
  char16_t characters[256];  // by second byte
};

/// The code that is written for a character with several.
struct PreferredCode {
  char16_t character;
  std::uint16_t code;
};

struct CharsetTable {
  std::uint32_t encoding;  // a TextEncoding
  const char16_t *single;  // 256 characters by byte
  std::span<const CharsetRow> rows;
  std::span<const PreferredCode> preferred;
};

struct CaseMapping {
  char32_t from;
  char32_t to;
};

/// The sets in ascending order of their encodings.
extern const std::span<const CharsetTable> kCharsetTables;

/// The case mappings in ascending order of `from`, without ASCII.
extern const std::span<const CaseMapping> kUpperCaseMappings;
extern const std::span<const CaseMapping> kLowerCaseMappings;

}  // namespace quillbar::host::platform
