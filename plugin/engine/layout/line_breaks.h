// SPDX-License-Identifier: MIT
/// Where a line may be broken besides at white space: in writing without blanks between words.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quillbar::engine {

enum class LineBreak {
  kNone,
  kAllowed,    ///< a line may be broken here
  kEmergency,  ///< only where a run without blanks or breaks that are allowed is longer than a line
};

/// Takes a text, or a line of one, character by character, and tells where it may be broken besides at white space:
///
/// - around ideographs, kana, Hangul and their punctuation as Unicode Standard Annex 14 has it, with small kana and the
///   prolonged sound mark kept off the start of a line: allowed.
/// - in Thai, Lao, Khmer and Myanmar before a letter with its marks: in an emergency. Vowels stay with the letter
///   before or after which they are written, consonants with the one below which they are. Where a zero width space
///   (U+200B) divides words of these scripts, a break is allowed.
/// - nowhere else: words of other scripts have the breaks of white space alone, also at hyphens.
///
/// Time and memory for a character don't depend on those before it. Nothing is thrown.
class LineBreaker {
 public:
  /// Whether a line may be broken before `character`, the next one of the text. kNone for the first one, for white
  /// space, and after it: what follows white space may begin a line anyway.
  LineBreak Before(char32_t character) {
    // Most text is in scripts below, and of no interest here.
    if (character >= kFirstOfInterest || script_ != Script::kOther) return Decide(character);
    Remember(character);
    return LineBreak::kNone;
  }

 private:
  enum class Script : std::uint8_t { kOther, kEastAsian, kSouthEastAsian };

  static constexpr char32_t kFirstOfInterest = 0x0E00;

  LineBreak Decide(char32_t character);
  void Remember(char32_t character) { recent_[count_++ % recent_.size()] = character; }
  char32_t Recent(std::size_t age) const { return recent_[(count_ - age) % recent_.size()]; }
  std::size_t Remembered() const;
  Script ScriptOf(char32_t character) const;
  bool MayBreakBefore(char32_t character);

  // The library's state; its type stays with the source that knows the library.
  alignas(void *) std::array<std::byte, 40> context_{};
  std::size_t seen_ = 0;              // the characters that are in it, if these are all so far
  Script script_ = Script::kOther;    // of the last character
  std::array<char32_t, 8> recent_{};  // the last characters, from which the state is made anew
  std::size_t count_ = 0;             // of all characters
};

}  // namespace quillbar::engine
