// SPDX-License-Identifier: MIT
/// The levels of embedding of a paragraph's characters: rules P2 to I2 of the Unicode Bidirectional Algorithm (Unicode
/// Standard Annex 9).
#pragma once

#include <unicode/uchar.h>

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace quillbar::engine {

/// A character's bidirectional class. What is no character has that of U+FFFD.
UCharDirection BidirectionalClass(char32_t character);

struct EmbeddingLevels {
  std::uint8_t base;                 ///< of the paragraph
  std::vector<std::uint8_t> levels;  ///< by character; one that rule X9 removes has that of the character before it
};

/// The levels of a text of one paragraph, in time proportional to its length. `classes` are those of its characters;
/// separators of paragraphs are the end of it, whatever follows. `base` is the level of the paragraph; if it is
/// negative, the first letter decides. Throws std::bad_alloc.
EmbeddingLevels EmbeddingLevelsOf(std::u32string_view text, std::span<const UCharDirection> classes, int base);

}  // namespace quillbar::engine
