// SPDX-License-Identifier: MIT
#include "plugin/text/script_detection.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "binding/owned.h"

namespace quillbar::text {

namespace {

using enum LanguageScript;

struct Range {
  std::intptr_t first, last;
  LanguageScript script;
};

// Blocks of Unicode, in order. The whole block of halfwidth and fullwidth forms counts as Korean.
constexpr Range kRanges[] = {
    {0x0370, 0x03FF, LANGUAGE_SCRIPT_GREEK},
    {0x0400, 0x04FF, LANGUAGE_SCRIPT_CYRILLIC},
    {0x0590, 0x05FF, LANGUAGE_SCRIPT_HEBREW},
    {0x0900, 0x097F, LANGUAGE_SCRIPT_DEVANAGARI},
    {0x0E00, 0x0E7F, LANGUAGE_SCRIPT_THAI},
    {0x1100, 0x11FF, LANGUAGE_SCRIPT_KOREAN},
    {0x1F00, 0x1FFF, LANGUAGE_SCRIPT_GREEK},
    {0x3040, 0x30FF, LANGUAGE_SCRIPT_JAPANESE},
    {0x3130, 0x318F, LANGUAGE_SCRIPT_KOREAN},
    {0x3200, 0x32FF, LANGUAGE_SCRIPT_KOREAN},
    {0x3400, 0x4DBF, LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS},
    {0x4E00, 0x9FFF, LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS},
    {0xA960, 0xA97F, LANGUAGE_SCRIPT_KOREAN},
    {0xAC00, 0xD7FF, LANGUAGE_SCRIPT_KOREAN},
    {0xF900, 0xFAFF, LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS},
    {0xFF00, 0xFFEF, LANGUAGE_SCRIPT_KOREAN},
    {0x20000, 0x2A6DF, LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS},
    {0x2F800, 0x2FA1F, LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS},
};
static_assert(std::ranges::is_sorted(kRanges, {}, &Range::first));

// Ideographs up to here count as Japanese as well, so that a text of nothing else is Japanese by the tie
// rule.
constexpr std::intptr_t kFirstSharedIdeograph = 0x4E00;
constexpr std::intptr_t kLastSharedIdeograph = 0x9FBF;

LanguageScript ScriptOf(std::intptr_t codePoint) {
  const Range *after = std::ranges::upper_bound(kRanges, codePoint, {}, &Range::first);
  if (after == kRanges) return LANGUAGE_SCRIPT_UNKNOWN;
  const Range &range = *std::prev(after);
  return codePoint <= range.last ? range.script : LANGUAGE_SCRIPT_UNKNOWN;
}

}  // namespace

LanguageScript DetectScript(String text) {
  std::array<std::size_t, 9> counts{};
  const auto countOf = [&](LanguageScript script) -> std::size_t & { return counts[static_cast<std::size_t>(script)]; };
  const std::intptr_t length = CallHost<global_method::Len>(text);
  for (std::intptr_t position = 1; position <= length; ++position) {
    const OwnedString character(CallHost<global_method::Mid>(text, position, std::intptr_t{1}));
    const std::intptr_t codePoint = CallHost<global_method::Asc>(character.get());
    ++countOf(ScriptOf(codePoint));
    if (codePoint >= kFirstSharedIdeograph && codePoint <= kLastSharedIdeograph) ++countOf(LANGUAGE_SCRIPT_JAPANESE);
  }
  return static_cast<LanguageScript>(std::distance(counts.begin(), std::ranges::max_element(counts)));
}

}  // namespace quillbar::text
