// SPDX-License-Identifier: MIT
// ICU has the classes and brackets of characters. Its own levels are not taken: it follows an older state of rule N0, so
// that some cases of Unicode's test come out otherwise, and its time for brackets grows with the square of their number.
#include "plugin/engine/layout/embedding_levels.h"

#include <ubidi_props.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace quillbar::engine {

namespace {

using Class = UCharDirection;

constexpr std::uint8_t kDeepest = 125;  // "max_depth" of the standard
constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

constexpr bool IsOneOf(Class c, std::uint32_t set) { return (set >> c & 1) != 0; }
constexpr std::uint32_t SetOf(std::initializer_list<Class> classes) {
  std::uint32_t set = 0;
  for (const Class c : classes) set |= std::uint32_t{1} << c;
  return set;
}

constexpr std::uint32_t kIsolateStarts =
    SetOf({U_LEFT_TO_RIGHT_ISOLATE, U_RIGHT_TO_LEFT_ISOLATE, U_FIRST_STRONG_ISOLATE});
constexpr std::uint32_t kIsolateMarks = kIsolateStarts | SetOf({U_POP_DIRECTIONAL_ISOLATE});
// Rule X9.
constexpr std::uint32_t kRemoved =
    SetOf({U_LEFT_TO_RIGHT_EMBEDDING, U_RIGHT_TO_LEFT_EMBEDDING, U_LEFT_TO_RIGHT_OVERRIDE, U_RIGHT_TO_LEFT_OVERRIDE,
           U_POP_DIRECTIONAL_FORMAT, U_BOUNDARY_NEUTRAL});
constexpr std::uint32_t kLetters = SetOf({U_LEFT_TO_RIGHT, U_RIGHT_TO_LEFT, U_RIGHT_TO_LEFT_ARABIC});
constexpr std::uint32_t kNumbers = SetOf({U_EUROPEAN_NUMBER, U_ARABIC_NUMBER});
constexpr std::uint32_t kNumberMarks =
    SetOf({U_EUROPEAN_NUMBER_SEPARATOR, U_EUROPEAN_NUMBER_TERMINATOR, U_COMMON_NUMBER_SEPARATOR});
// In a paragraph from right to left these are all of its level: without a letter from left to right, a number or a mark
// that changes the direction, there is nothing that neutrals could take another direction from.
constexpr std::uint32_t kRightToLeftAlone = SetOf({U_RIGHT_TO_LEFT, U_RIGHT_TO_LEFT_ARABIC, U_DIR_NON_SPACING_MARK,
                                                   U_WHITE_SPACE_NEUTRAL, U_OTHER_NEUTRAL, U_BOUNDARY_NEUTRAL}) |
                                            kNumberMarks;
// "NI" of the standard.
constexpr std::uint32_t kNeutrals =
    kIsolateMarks | SetOf({U_BLOCK_SEPARATOR, U_SEGMENT_SEPARATOR, U_WHITE_SPACE_NEUTRAL, U_OTHER_NEUTRAL});

Class DirectionOf(int level) { return level % 2 == 1 ? U_RIGHT_TO_LEFT : U_LEFT_TO_RIGHT; }

// What a letter or number counts as among neutrals.
Class DirectionOf(Class c) { return c == U_LEFT_TO_RIGHT ? U_LEFT_TO_RIGHT : U_RIGHT_TO_LEFT; }

// The isolates of a paragraph.
struct Isolates {
  Class first = U_OTHER_NEUTRAL;      // of the paragraph's letters outside of them; neutral if there is none
  std::vector<std::size_t> partners;  // of each start and end, the other; kNone if there is none
  std::vector<bool> isRightToLeft;    // by the first letter inside, for each start

  // Rules BD9, P2 and P3.
  explicit Isolates(std::span<const Class> classes)
      : partners(classes.size(), kNone), isRightToLeft(classes.size(), false) {
    struct Open {
      std::size_t start;
      bool hasLetter;
    };
    std::vector<Open> open;
    bool hasLetter = false;
    for (std::size_t i = 0; i < classes.size(); ++i) {
      if (IsOneOf(classes[i], kIsolateStarts)) {
        open.push_back({i, false});
      } else if (classes[i] == U_POP_DIRECTIONAL_ISOLATE && !open.empty()) {
        partners[i] = open.back().start;
        partners[open.back().start] = i;
        open.pop_back();
      } else if (IsOneOf(classes[i], kLetters)) {
        bool &isDecided = open.empty() ? hasLetter : open.back().hasLetter;
        if (isDecided) continue;
        isDecided = true;
        if (open.empty()) {
          first = DirectionOf(classes[i]);
        } else {
          isRightToLeft[open.back().start] = classes[i] != U_LEFT_TO_RIGHT;
        }
      }
    }
  }
};

// Rules X1 to X8: marks set levels, and overrides change classes.
class ExplicitLevels {
 public:
  explicit ExplicitLevels(std::uint8_t base) { entries_[0] = {base, false, false}; }

  std::uint8_t Level() const { return entries_[last_].level; }

  // Takes a character, whose class an override replaces. Its level is the one before it for starts, after it for ends.
  std::uint8_t Take(Class &itsClass, bool isRightToLeftByFirstLetter) {
    const std::uint8_t before = Level();
    switch (itsClass) {
      case U_LEFT_TO_RIGHT_EMBEDDING:
      case U_RIGHT_TO_LEFT_EMBEDDING:
      case U_LEFT_TO_RIGHT_OVERRIDE:
      case U_RIGHT_TO_LEFT_OVERRIDE: {
        const bool isOverride = itsClass == U_LEFT_TO_RIGHT_OVERRIDE || itsClass == U_RIGHT_TO_LEFT_OVERRIDE;
        const bool isRightToLeft = itsClass == U_RIGHT_TO_LEFT_EMBEDDING || itsClass == U_RIGHT_TO_LEFT_OVERRIDE;
        if (!Begin(isRightToLeft, isOverride, false) && tooDeepIsolates_ == 0) ++tooDeepEmbeddings_;
        return before;
      }
      case U_LEFT_TO_RIGHT_ISOLATE:
      case U_RIGHT_TO_LEFT_ISOLATE:
      case U_FIRST_STRONG_ISOLATE: {
        const bool isRightToLeft =
            itsClass == U_FIRST_STRONG_ISOLATE ? isRightToLeftByFirstLetter : itsClass == U_RIGHT_TO_LEFT_ISOLATE;
        Override(itsClass);
        if (!Begin(isRightToLeft, false, true)) ++tooDeepIsolates_;
        return before;
      }
      case U_POP_DIRECTIONAL_ISOLATE:
        EndIsolate();
        Override(itsClass);
        return Level();
      case U_POP_DIRECTIONAL_FORMAT:
        EndEmbedding();
        return Level();
      case U_BOUNDARY_NEUTRAL:
        return before;
      case U_BLOCK_SEPARATOR:
        return entries_[0].level;
      default:
        Override(itsClass);
        return before;
    }
  }

 private:
  struct Entry {
    std::uint8_t level;
    bool isOverride;
    bool isIsolate;
  };

  void Override(Class &itsClass) const {
    if (entries_[last_].isOverride) itsClass = DirectionOf(Level());
  }

  bool Begin(bool isRightToLeft, bool isOverride, bool isIsolate) {
    const auto next = static_cast<std::uint8_t>(isRightToLeft ? (Level() + 1) | 1 : (Level() + 2) & ~1);
    if (next > kDeepest || tooDeepIsolates_ > 0 || tooDeepEmbeddings_ > 0) return false;
    entries_[++last_] = {next, isOverride, isIsolate};
    if (isIsolate) ++isolates_;
    return true;
  }

  void EndIsolate() {
    if (tooDeepIsolates_ > 0) {
      --tooDeepIsolates_;
    } else if (isolates_ > 0) {
      tooDeepEmbeddings_ = 0;
      while (!entries_[last_].isIsolate) --last_;
      --last_;
      --isolates_;
    }
  }

  void EndEmbedding() {
    if (tooDeepIsolates_ > 0) return;
    if (tooDeepEmbeddings_ > 0) {
      --tooDeepEmbeddings_;
    } else if (last_ > 0 && !entries_[last_].isIsolate) {
      --last_;
    }
  }

  std::array<Entry, kDeepest + 2> entries_{};
  std::size_t last_ = 0;
  std::size_t tooDeepIsolates_ = 0;
  std::size_t tooDeepEmbeddings_ = 0;
  std::size_t isolates_ = 0;
};

// A bracket, by the closing one of its pair.
struct Bracket {
  UBidiPairedBracketType type;
  UChar32 closing;
};

Bracket BracketOf(char32_t character) {
  const auto c = static_cast<UChar32>(character);
  const UBidiPairedBracketType type = character > 0x10FFFF ? U_BPT_NONE : ubidi_getPairedBracketType(c);
  if (type == U_BPT_NONE) return {type, 0};
  const UChar32 closing = type == U_BPT_OPEN ? u_getBidiPairedBracket(c) : c;
  return {type, closing == 0x232A ? 0x3009 : closing};  // two codes for one
}

// An isolating run sequence (BD13): rules W1 to N2 change its classes.
class RunSequence {
 public:
  // `level` is that of all of it; `before` and `after` are those beside it.
  void Begin(int level, int before) {
    direction_ = DirectionOf(level);
    start_ = DirectionOf(std::max(level, before));
    characters_.clear();
    classes_.clear();
  }
  void Add(char32_t character, Class itsClass) {
    characters_.push_back(character);
    classes_.push_back(itsClass);
  }
  void End(int level, int after) {
    end_ = DirectionOf(std::max(level, after));
    isMark_.assign(classes_.size(), false);
    for (std::size_t i = 0; i < classes_.size(); ++i) isMark_[i] = classes_[i] == U_DIR_NON_SPACING_MARK;
    ResolveMarks();
    ResolveNumbers();
    ResolveBrackets();
    ResolveNeutrals();
  }

  const std::vector<Class> &Classes() const { return classes_; }

 private:
  void ResolveMarks();
  void ResolveNumbers();
  void ResolveBrackets();
  void ResolveNeutrals();
  std::vector<std::size_t> ClosingBrackets() const;
  void SetBracket(std::size_t position, Class direction);

  Class direction_{}, start_{}, end_{};
  std::vector<char32_t> characters_;
  std::vector<Class> classes_;
  std::vector<bool> isMark_;  // nonspacing, before rule W1
};

// Rule W1.
void RunSequence::ResolveMarks() {
  Class before = start_;
  for (Class &c : classes_) {
    if (c == U_DIR_NON_SPACING_MARK) c = IsOneOf(before, kIsolateMarks) ? U_OTHER_NEUTRAL : before;
    before = c;
  }
}

// Rules W2 to W7.
void RunSequence::ResolveNumbers() {
  Class letter = start_;
  for (Class &c : classes_) {
    if (IsOneOf(c, kLetters)) letter = c;
    if (c == U_EUROPEAN_NUMBER && letter == U_RIGHT_TO_LEFT_ARABIC) c = U_ARABIC_NUMBER;
    if (c == U_RIGHT_TO_LEFT_ARABIC) c = U_RIGHT_TO_LEFT;
  }
  for (std::size_t i = 1; i + 1 < classes_.size(); ++i) {
    const Class number = classes_[i - 1];
    if (classes_[i + 1] != number) continue;
    const bool isEuropean = number == U_EUROPEAN_NUMBER && classes_[i] == U_EUROPEAN_NUMBER_SEPARATOR;
    const bool isCommon = IsOneOf(number, kNumbers) && classes_[i] == U_COMMON_NUMBER_SEPARATOR;
    if (isEuropean || isCommon) classes_[i] = number;
  }
  const auto spread = [](auto first, auto last) {
    for (bool isBeside = false; first != last; ++first) {
      if (isBeside && *first == U_EUROPEAN_NUMBER_TERMINATOR) *first = U_EUROPEAN_NUMBER;
      isBeside = *first == U_EUROPEAN_NUMBER;
    }
  };
  spread(classes_.begin(), classes_.end());
  spread(classes_.rbegin(), classes_.rend());
  letter = start_;
  for (Class &c : classes_) {
    if (IsOneOf(c, kNumberMarks)) c = U_OTHER_NEUTRAL;
    if (IsOneOf(c, kLetters)) letter = c;
    if (c == U_EUROPEAN_NUMBER && letter == U_LEFT_TO_RIGHT) c = U_LEFT_TO_RIGHT;
  }
}

// Rule BD16: of each opening bracket of a pair, where the closing one is; otherwise kNone.
std::vector<std::size_t> RunSequence::ClosingBrackets() const {
  struct Open {
    std::size_t position;
    UChar32 closing;
  };
  std::array<Open, 63> open;
  std::size_t count = 0;
  std::vector<std::size_t> closing;
  for (std::size_t i = 0; i < classes_.size(); ++i) {
    if (classes_[i] != U_OTHER_NEUTRAL) continue;
    const Bracket bracket = BracketOf(characters_[i]);
    if (bracket.type == U_BPT_OPEN) {
      if (count == open.size()) break;
      open[count++] = {i, bracket.closing};
    } else if (bracket.type == U_BPT_CLOSE) {
      for (std::size_t j = count; j-- > 0;) {
        if (open[j].closing != bracket.closing) continue;
        if (closing.empty()) closing.assign(classes_.size(), kNone);
        closing[open[j].position] = i;
        count = j;
        break;
      }
    }
  }
  return closing;
}

void RunSequence::SetBracket(std::size_t position, Class direction) {
  classes_[position] = direction;
  while (++position < classes_.size() && isMark_[position]) classes_[position] = direction;
}

// Rule N0. What is inside a pair isn't changed by pairs that open before it.
void RunSequence::ResolveBrackets() {
  const std::vector<std::size_t> closing = ClosingBrackets();
  if (closing.empty()) return;
  // Up to each character, how many are of the direction of the embedding, and how many of the other.
  std::vector<std::size_t> same(classes_.size() + 1), other(classes_.size() + 1);
  for (std::size_t i = 0; i < classes_.size(); ++i) {
    const bool isStrong = IsOneOf(classes_[i], kLetters | kNumbers);
    const bool isSame = DirectionOf(classes_[i]) == direction_;
    same[i + 1] = same[i] + (isStrong && isSame ? 1 : 0);
    other[i + 1] = other[i] + (isStrong && !isSame ? 1 : 0);
  }
  Class before = start_;
  for (std::size_t i = 0; i < classes_.size(); ++i) {
    if (const std::size_t end = closing[i]; end != kNone) {
      if (same[end] > same[i + 1]) {
        SetBracket(i, direction_);
        SetBracket(end, direction_);
      } else if (other[end] > other[i + 1]) {
        const Class direction = before;  // the embedding's own, or the other one
        SetBracket(i, direction);
        SetBracket(end, direction);
      }
    }
    if (IsOneOf(classes_[i], kLetters | kNumbers)) before = DirectionOf(classes_[i]);
  }
}

// Rules N1 and N2.
void RunSequence::ResolveNeutrals() {
  Class before = start_;
  for (std::size_t i = 0; i < classes_.size();) {
    if (!IsOneOf(classes_[i], kNeutrals)) {
      before = DirectionOf(classes_[i++]);
      continue;
    }
    std::size_t last = i;
    while (last < classes_.size() && IsOneOf(classes_[last], kNeutrals)) ++last;
    const Class after = last < classes_.size() ? DirectionOf(classes_[last]) : end_;
    for (; i < last; ++i) classes_[i] = before == after ? before : direction_;
  }
}

// Rules I1 and I2.
std::uint8_t ImplicitLevel(std::uint8_t level, Class itsClass) {
  if (itsClass == DirectionOf(level)) return level;
  const bool isNumber = IsOneOf(itsClass, kNumbers);
  return static_cast<std::uint8_t>(level + (isNumber && level % 2 == 0 ? 2 : 1));
}

// Characters side by side at one level, without those that rule X9 removes.
struct LevelRun {
  std::size_t first, end;  // among what is not removed
  std::size_t next;        // the run that goes on where the isolate at the end of this one ends; kNone if there is none
  bool isContinued;        // whether it is another one's next
};

}  // namespace

UCharDirection BidirectionalClass(char32_t character) {
  constexpr char32_t kReplacement = 0xFFFD;
  const bool isCharacter = character <= 0x10FFFF && !(character >= 0xD800 && character <= 0xDFFF);
  return u_charDirection(static_cast<UChar32>(isCharacter ? character : kReplacement));
}

EmbeddingLevels EmbeddingLevelsOf(std::u32string_view text, std::span<const UCharDirection> classes, int base) {
  const auto isRightToLeft = [](Class c) { return c == U_RIGHT_TO_LEFT || c == U_RIGHT_TO_LEFT_ARABIC; };
  if ((base == 1 || (base < 0 && std::ranges::any_of(classes, isRightToLeft))) &&
      std::ranges::all_of(classes, [](Class c) { return IsOneOf(c, kRightToLeftAlone); }))
    return {1, std::vector<std::uint8_t>(text.size(), 1)};

  const Isolates isolates(classes);
  if (base < 0) base = isolates.first == U_RIGHT_TO_LEFT ? 1 : 0;
  EmbeddingLevels result{static_cast<std::uint8_t>(base), std::vector<std::uint8_t>(text.size())};

  std::vector<Class> overridden(classes.begin(), classes.end());
  std::vector<std::uint8_t> levels(text.size());
  std::vector<std::size_t> kept;  // what rule X9 doesn't remove
  kept.reserve(text.size());
  ExplicitLevels marks(result.base);
  for (std::size_t i = 0; i < text.size(); ++i) {
    levels[i] = marks.Take(overridden[i], isolates.isRightToLeft[i]);
    if (!IsOneOf(classes[i], kRemoved)) kept.push_back(i);
  }

  // Rule X10.
  std::vector<LevelRun> runs;
  std::vector<std::size_t> runOf(text.size(), kNone);
  for (std::size_t k = 0; k < kept.size(); ++k) {
    if (k == 0 || levels[kept[k]] != levels[kept[k - 1]]) runs.push_back({k, k, kNone, false});
    runs.back().end = k + 1;
    runOf[kept[k]] = runs.size() - 1;
  }
  for (LevelRun &run : runs) {
    const std::size_t last = kept[run.end - 1];
    if (!IsOneOf(classes[last], kIsolateStarts) || isolates.partners[last] == kNone) continue;
    run.next = runOf[isolates.partners[last]];
    runs[run.next].isContinued = true;
  }

  RunSequence sequence;
  for (const LevelRun &first : runs) {
    if (first.isContinued) continue;
    const std::uint8_t level = levels[kept[first.first]];
    sequence.Begin(level, first.first > 0 ? levels[kept[first.first - 1]] : base);
    const LevelRun *last = &first;
    for (const LevelRun *run = &first;; run = &runs[run->next]) {
      for (std::size_t k = run->first; k < run->end; ++k) sequence.Add(text[kept[k]], overridden[kept[k]]);
      last = run;
      if (run->next == kNone) break;
    }
    const bool endsInIsolate = IsOneOf(classes[kept[last->end - 1]], kIsolateStarts);
    sequence.End(level, last->end < kept.size() && !endsInIsolate ? levels[kept[last->end]] : base);
    std::size_t position = 0;
    for (const LevelRun *run = &first;; run = &runs[run->next]) {
      for (std::size_t k = run->first; k < run->end; ++k) {
        result.levels[kept[k]] = ImplicitLevel(level, sequence.Classes()[position++]);
      }
      if (run->next == kNone) break;
    }
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsOneOf(classes[i], kRemoved)) result.levels[i] = i > 0 ? result.levels[i - 1] : result.base;
  }
  return result;
}

}  // namespace quillbar::engine
