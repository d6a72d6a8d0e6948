// SPDX-License-Identifier: MIT
#include "plugin/engine/layout/bidirectional.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <limits>

#include "plugin/engine/layout/embedding_levels.h"

namespace quillbar::engine {

bool HasDirectionalMark(std::u32string_view text) { return std::any_of(text.begin(), text.end(), IsDirectionalMark); }

char32_t MirroredCharacter(char32_t character) {
  return character <= 0x10FFFF ? static_cast<char32_t>(u_charMirror(static_cast<UChar32>(character))) : character;
}

bool IsNumberPart(char32_t character) {
  switch (BidirectionalClass(character)) {
    case U_EUROPEAN_NUMBER:
    case U_ARABIC_NUMBER:
    case U_EUROPEAN_NUMBER_SEPARATOR:
    case U_EUROPEAN_NUMBER_TERMINATOR:
    case U_COMMON_NUMBER_SEPARATOR:
      return true;
    default:
      return false;
  }
}

BidirectionalParagraph::BidirectionalParagraph(std::u32string_view text, BaseDirection base) {
  std::vector<UCharDirection> classes(text.size());
  std::transform(text.begin(), text.end(), classes.begin(), BidirectionalClass);
  atEnd_.resize(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (classes[i] == U_BLOCK_SEPARATOR && i + 1 < text.size()) classes[i] = U_SEGMENT_SEPARATOR;
    switch (classes[i]) {
      case U_SEGMENT_SEPARATOR:
      case U_BLOCK_SEPARATOR:
        atEnd_[i] = AtEnd::kSeparator;
        break;
      case U_WHITE_SPACE_NEUTRAL:
      case U_LEFT_TO_RIGHT_ISOLATE:
      case U_RIGHT_TO_LEFT_ISOLATE:
      case U_FIRST_STRONG_ISOLATE:
      case U_POP_DIRECTIONAL_ISOLATE:
      case U_LEFT_TO_RIGHT_EMBEDDING:
      case U_RIGHT_TO_LEFT_EMBEDDING:
      case U_LEFT_TO_RIGHT_OVERRIDE:
      case U_RIGHT_TO_LEFT_OVERRIDE:
      case U_POP_DIRECTIONAL_FORMAT:
      case U_BOUNDARY_NEUTRAL:
        atEnd_[i] = AtEnd::kSpace;
        break;
      default:
        atEnd_[i] = AtEnd::kShown;
    }
  }
  const int level = base == BaseDirection::kAutomatic ? -1 : base == BaseDirection::kRightToLeft ? 1 : 0;
  EmbeddingLevels found = EmbeddingLevelsOf(text, classes, level);
  baseLevel_ = found.base;
  levels_ = std::move(found.levels);
}

std::vector<VisualRun> BidirectionalParagraph::RunsOfLine(std::size_t start, std::size_t length) const {
  // Rule L1, from the end of the line: white space there and before separators is as the paragraph is.
  std::vector<VisualRun> runs;
  bool isAtEnd = true;
  std::uint8_t highest = 0, lowestOdd = std::numeric_limits<std::uint8_t>::max();
  for (std::size_t i = start + length; i-- > start;) {
    if (atEnd_[i] != AtEnd::kSpace) isAtEnd = atEnd_[i] == AtEnd::kSeparator;
    const std::uint8_t level = isAtEnd ? baseLevel_ : levels_[i];
    if (runs.empty() || runs.back().level != level) {
      runs.push_back({i, 0, level});
      highest = std::max(highest, level);
      if (level % 2 == 1) lowestOdd = std::min(lowestOdd, level);
    }
    runs.back().start = i;
    ++runs.back().length;
  }
  std::reverse(runs.begin(), runs.end());

  // Rule L2.
  for (int level = highest; level >= lowestOdd; --level) {
    const auto isBelow = [level](const VisualRun &run) { return run.level < level; };
    for (auto first = runs.begin(); first != runs.end();) {
      first = std::find_if_not(first, runs.end(), isBelow);
      const auto last = std::find_if(first, runs.end(), isBelow);
      std::reverse(first, last);
      first = last;
    }
  }
  return runs;
}

}  // namespace quillbar::engine
