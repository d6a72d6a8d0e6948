// SPDX-License-Identifier: MIT
/// The order in which the characters of a line are shown, where text runs from right to left: the Unicode Bidirectional
/// Algorithm (Unicode Standard Annex 9).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillbar::engine {

/// Whether a character only says in which direction text runs, and is not to be seen: U+200E, U+200F, U+061C, U+202A to
/// U+202E and U+2066 to U+2069.
constexpr bool IsDirectionalMark(char32_t character) {
  return character == 0x200E || character == 0x200F || character == 0x061C ||
         (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

/// Whether a text has one of these marks.
bool HasDirectionalMark(std::u32string_view text);

/// What is shown for a character where text runs from right to left (rule L4): the other bracket for a bracket, the
/// character itself for most.
char32_t MirroredCharacter(char32_t character);

/// Whether a character is a digit, or is taken for a part of a number next to one, as signs, separators and currencies
/// are (classes EN, AN, ES, ET and CS).
bool IsNumberPart(char32_t character);

enum class BaseDirection {
  kAutomatic,  ///< of the first letter, or of a mark U+200E, U+200F or U+061C before it; otherwise left to right
  kLeftToRight,
  kRightToLeft,
};

/// Characters of a line that are shown side by side in one direction.
struct VisualRun {
  std::size_t start;   ///< its first character in the order of the text, counted from the start of the paragraph
  std::size_t length;  ///< characters, directional marks among them
  std::uint8_t level;  ///< of embedding: odd where the run's last character is its leftmost

  bool IsRightToLeft() const { return level % 2 == 1; }
  bool operator==(const VisualRun &) const = default;
};

/// A paragraph and its embedding levels, which are found once, in time proportional to its length; its lines are then
/// put in order one by one. A line end, or another separator of paragraphs, before the end of the text counts as a tab.
class BidirectionalParagraph {
 public:
  /// Keeps nothing of the text itself. Numbers that are no characters count as U+FFFD. Throws std::bad_alloc.
  explicit BidirectionalParagraph(std::u32string_view text, BaseDirection base = BaseDirection::kAutomatic);

  /// The direction of the paragraph as a whole: where its lines begin.
  bool IsRightToLeft() const { return baseLevel_ % 2 == 1; }

  /// The runs of the line of `length` characters from `start`, from left to right (rules L1 and L2): white space at its
  /// end is on the side where it ends. The line must be inside the text. Throws std::bad_alloc.
  std::vector<VisualRun> RunsOfLine(std::size_t start, std::size_t length) const;

 private:
  // What a character is at the end of a line.
  enum class AtEnd : std::uint8_t { kShown, kSpace, kSeparator };

  std::vector<std::uint8_t> levels_;  // by character
  std::vector<AtEnd> atEnd_;
  std::uint8_t baseLevel_ = 0;
};

}  // namespace quillbar::engine
