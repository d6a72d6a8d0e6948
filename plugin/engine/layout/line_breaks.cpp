// SPDX-License-Identifier: MIT
// libunibreak tells where Unicode Standard Annex 14 allows a break. Letters of the South East Asian scripts, whose words
// only a dictionary divides, are handed to it as ideographs, and their vowels and signs as what keeps its place beside
// an ideograph in the same way.
#include "plugin/engine/layout/line_breaks.h"

#include <linebreak.h>
#include <unibreakdef.h>

#include <algorithm>
#include <new>
#include <span>
#include <type_traits>

// Unlike the others it doesn't say that it is C.
extern "C" {
#include <linebreakdef.h>
}

namespace quillbar::engine {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// Blocks of ideographs, kana, Hangul, and the syllables, signs and punctuation that are set with them.
constexpr auto kEastAsian = std::to_array<Range>({
    {0x1100, 0x11FF},    // Hangul letters
    {0x2E80, 0xA4CF},    // radicals, punctuation, kana, Bopomofo, ideographs, Yi
    {0xA960, 0xA97F},    // Hangul letters
    {0xAC00, 0xD7FF},    // Hangul syllables and letters
    {0xF900, 0xFAFF},    // ideographs for compatibility
    {0xFE10, 0xFE1F},    // vertical forms
    {0xFE30, 0xFE6F},    // forms for compatibility, small forms
    {0xFF00, 0xFFEF},    // full and half width
    {0x16FE0, 0x18DFF},  // Tangut, Khitan
    {0x1AFF0, 0x1B2FF},  // kana, Nushu
    {0x1F200, 0x1F2FF},  // enclosed ideographs
    {0x20000, 0x3FFFD},  // ideographs
});

// Thai and Lao, Myanmar, Khmer.
constexpr auto kSouthEastAsian =
    std::to_array<Range>({{0x0E00, 0x0EFF}, {0x1000, 0x109F}, {0x1780, 0x17FF}, {0xA9E0, 0xA9FF}, {0xAA60, 0xAA7F}});

// Of these, what is written on, below or after the letter before it: the marks (of general category M), and vowels of
// Thai and Lao that are letters to Unicode.
constexpr auto kAttached = std::to_array<Range>({{0x0E30, 0x0E3A},
                                                 {0x0E45, 0x0E45},
                                                 {0x0E47, 0x0E4E},
                                                 {0x0EB0, 0x0EBD},
                                                 {0x0EC8, 0x0ECE},
                                                 {0x102B, 0x103E},
                                                 {0x1056, 0x1059},
                                                 {0x105E, 0x1060},
                                                 {0x1062, 0x1064},
                                                 {0x1067, 0x106D},
                                                 {0x1071, 0x1074},
                                                 {0x1082, 0x108D},
                                                 {0x108F, 0x108F},
                                                 {0x109A, 0x109D},
                                                 {0x17B4, 0x17D3},
                                                 {0x17DD, 0x17DD},
                                                 {0xA9E5, 0xA9E5},
                                                 {0xAA7B, 0xAA7D}});

// Vowels that are written before the letter after which they are spoken.
constexpr auto kLeadingVowels = std::to_array<Range>({{0x0E40, 0x0E44}, {0x0EC0, 0x0EC4}});

// Signs of repetition and abbreviation, which follow a word.
constexpr auto kFollowers = std::to_array<Range>(
    {{0x0E2F, 0x0E2F}, {0x0E46, 0x0E46}, {0x0EAF, 0x0EAF}, {0x0EC6, 0x0EC6}, {0x17D7, 0x17D7}, {0xAA70, 0xAA70}});

constexpr char32_t kZeroWidthSpace = 0x200B;

// By stricter rules, which keep small kana and the prolonged sound mark off the start of a line.
constexpr const char *kRules = "-strict";

bool IsIn(std::span<const Range> ranges, char32_t character) {
  const auto range =
      std::lower_bound(ranges.begin(), ranges.end(), character, [](const Range &r, char32_t c) { return r.last < c; });
  return range != ranges.end() && range->first <= character;
}

// As Unicode's data have it, in whatever language.
LineBreakClass ClassOf(char32_t character) {
  static constexpr LineBreakContext kAnyLanguage{};
  return lb_get_char_class(&kAnyLanguage, character);
}

bool IsWhiteSpace(char32_t c) { return c == 0 || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' '; }

// Whether the consonant after it is written below the one before it: the signs coeng and virama.
bool JoinsConsonants(char32_t c) { return c == 0x17D2 || c == 0x1039; }

// What the library is handed for a character that follows `previous`.
char32_t StandInFor(char32_t character, char32_t previous) {
  constexpr char32_t kMark = 0x0301, kOpening = 0x3008, kNonStarter = 0x3005, kIdeograph = 0x4E00;
  if (!IsIn(kSouthEastAsian, character) || ClassOf(character) != LBP_SA) return character;
  if (IsIn(kAttached, character) || JoinsConsonants(previous)) return kMark;
  if (IsIn(kLeadingVowels, character)) return kOpening;
  if (IsIn(kFollowers, character)) return kNonStarter;
  return kIdeograph;
}

}  // namespace

// How many of the last characters matter: those after the last white space.
std::size_t LineBreaker::Remembered() const {
  const std::size_t most = std::min(count_, recent_.size());
  std::size_t number = 0;
  while (number < most && !IsWhiteSpace(Recent(number + 1))) ++number;
  return number;
}

LineBreaker::Script LineBreaker::ScriptOf(char32_t character) const {
  if (IsIn(kEastAsian, character)) return Script::kEastAsian;
  if (IsIn(kSouthEastAsian, character)) return Script::kSouthEastAsian;
  if (script_ == Script::kOther) return Script::kOther;
  // A mark belongs to what it is on, and so does a division of words to the word that it ends.
  const LineBreakClass itsClass = ClassOf(character);
  const bool belongs = itsClass == LBP_CM || itsClass == LBP_ZWJ || itsClass == LBP_ZW;
  return belongs ? script_ : Script::kOther;
}

bool LineBreaker::MayBreakBefore(char32_t character) {
  static_assert(sizeof(LineBreakContext) <= sizeof(context_) && std::is_trivially_copyable_v<LineBreakContext>);
  auto *context = std::launder(reinterpret_cast<LineBreakContext *>(context_.data()));
  const bool hasSeenAll = seen_ == count_ && count_ > 0;
  seen_ = count_ + 1;
  if (!hasSeenAll) {
    std::size_t unseen = Remembered();
    char32_t previous = unseen > 0 ? Recent(unseen) : character;
    context = new (context_.data()) LineBreakContext;
    lb_init_break_context(context, StandInFor(previous, 0), kRules);
    if (unseen == 0) return false;
    while (--unseen > 0) {
      const char32_t next = Recent(unseen);
      lb_process_next_char(context, StandInFor(next, previous));
      previous = next;
    }
  }
  const char32_t previous = Recent(1);
  return lb_process_next_char(context, StandInFor(character, previous)) != LINEBREAK_NOBREAK;
}

LineBreak LineBreaker::Decide(char32_t character) {
  const Script before = script_;
  script_ = IsWhiteSpace(character) ? Script::kOther : ScriptOf(character);
  LineBreak result = LineBreak::kNone;
  const bool isOfInterest = before != Script::kOther || script_ != Script::kOther;
  if (isOfInterest && !IsWhiteSpace(character) && MayBreakBefore(character)) {
    const bool isDivided = Recent(1) == kZeroWidthSpace;
    const bool isEastAsian = before == Script::kEastAsian || script_ == Script::kEastAsian;
    result = isDivided || isEastAsian ? LineBreak::kAllowed : LineBreak::kEmergency;
  }
  Remember(character);
  return result;
}

}  // namespace quillbar::engine
