// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

/// What the platform seams `charset.h` and `letter_case.h` answer on Linux, as tables. They are written at
/// build time by `write_character_tables.cpp`, for platforms whose own services know fewer sets or other
/// characters: a script gives the same bytes everywhere.
namespace quillbar::host::platform {

/// In a table of characters: these bytes stand for none.
inline constexpr char16_t kNoCharacter = 0xFFFF;

/// What the pairs of bytes with one first byte stand for.
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

/// In ascending order of encodings.
extern const std::span<const CharsetTable> kCharsetTables;

/// In ascending order of `from`, without ASCII.
extern const std::span<const CaseMapping> kUpperCaseMappings;
extern const std::span<const CaseMapping> kLowerCaseMappings;

}  // namespace quillbar::host::platform
