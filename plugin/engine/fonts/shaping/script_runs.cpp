// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/shaping/script_runs.h"

#include <hb.h>

#include <algorithm>

namespace quillbar::engine {

namespace {

// The most characters of a simple script that are shaped together: a base and its marks. Text that readers can
// normalise has at most 30 marks in a row (Unicode Standard Annex 15); what goes on is placed mark by mark.
constexpr std::uint32_t kLongestCluster = 32;

// The most characters of any script that are shaped at once, so that time stays proportional to the text.
constexpr std::uint32_t kLongestRun = 4096;

constexpr char32_t kZeroWidthJoiner = 0x200D;

hb_unicode_funcs_t *Unicode() { return hb_unicode_funcs_get_default(); }

hb_script_t ScriptOf(char32_t character) { return hb_unicode_script(Unicode(), character); }

bool IsMark(char32_t character) {
  if (character < kFirstMark) return false;
  const hb_unicode_general_category_t category = hb_unicode_general_category(Unicode(), character);
  return category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK ||
         category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK || category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK;
}

bool IsInherited(hb_script_t script) {
  return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

// Scripts whose letters stand beside each other in every font.
bool IsSimple(hb_script_t script) {
  switch (script) {
    case HB_SCRIPT_COMMON:
    case HB_SCRIPT_INHERITED:
    case HB_SCRIPT_UNKNOWN:
    case HB_SCRIPT_INVALID:
    case HB_SCRIPT_LATIN:
    case HB_SCRIPT_GREEK:
    case HB_SCRIPT_CYRILLIC:
    case HB_SCRIPT_HAN:
    case HB_SCRIPT_HIRAGANA:
    case HB_SCRIPT_KATAKANA:
    case HB_SCRIPT_HANGUL:
    case HB_SCRIPT_BOPOMOFO:
    case HB_SCRIPT_YI:
    case HB_SCRIPT_ARMENIAN:
    case HB_SCRIPT_GEORGIAN:
    case HB_SCRIPT_ETHIOPIC:
    case HB_SCRIPT_CHEROKEE:
    case HB_SCRIPT_CANADIAN_SYLLABICS:
    case HB_SCRIPT_BRAILLE:
    case HB_SCRIPT_COPTIC:
    case HB_SCRIPT_GOTHIC:
    case HB_SCRIPT_GLAGOLITIC:
    case HB_SCRIPT_OGHAM:
    case HB_SCRIPT_RUNIC:
    case HB_SCRIPT_DESERET:
    case HB_SCRIPT_SHAVIAN:
    case HB_SCRIPT_TIFINAGH:
    case HB_SCRIPT_VAI:
      return true;
    default:
      return false;
  }
}

bool IsRightToLeft(hb_script_t script) { return hb_script_get_horizontal_direction(script) == HB_DIRECTION_RTL; }

// Blocks of characters that are laid out as they are, whatever comes after them; most texts have no others. In order.
struct Block {
  char32_t first, last;
};
constexpr Block kPlainBlocks[] = {
    {0x0000, 0x02FF},    // Latin
    {0x0370, 0x0482},    // Greek, Cyrillic
    {0x048A, 0x0590},    // Cyrillic, Armenian
    {0x10A0, 0x10FF},    // Georgian
    {0x1E00, 0x1FFF},    // Latin, Greek
    {0x2000, 0x200C},    // blanks and dashes
    {0x2010, 0x2029},    // punctuation
    {0x202F, 0x2065},    // punctuation
    {0x206A, 0x20CF},    // currencies
    {0x2100, 0x2BFF},    // signs
    {0x3000, 0x3029},    // CJK punctuation
    {0x3030, 0x3098},    // kana
    {0x309B, 0x9FFF},    // kana, ideographs
    {0xAC00, 0xD7FF},    // Hangul
    {0xE000, 0xFB0F},    // private use, compatibility ideographs, Latin ligatures
    {0xFF00, 0xFFFF},    // halfwidth and fullwidth forms
    {0x20000, 0x3FFFF},  // ideographs
};

// Cuts `text` from `first` to before `end`, all of one script that is laid out by its letters alone, at the characters
// with marks.
void AppendSimpleRuns(std::u32string_view text, std::uint32_t first, std::uint32_t end, hb_script_t script,
                      std::vector<ScriptRun> &runs) {
  std::uint32_t plain = first;
  for (std::uint32_t i = first; i < end;) {
    std::uint32_t after = i + 1;
    bool isJoined = false;
    while (after < end && after - i < kLongestCluster && (IsMark(text[after]) || text[after] == kZeroWidthJoiner)) {
      isJoined |= text[after] != kZeroWidthJoiner;
      ++after;
    }
    if (!isJoined && !IsMark(text[i])) {
      i = after;
      continue;
    }
    if (plain < i) runs.push_back({plain, i - plain, script, RunLayout::kCharacters, false});
    runs.push_back({i, after - i, script, RunLayout::kMarks, false});
    plain = i = after;
  }
  if (plain < end) runs.push_back({plain, end - plain, script, RunLayout::kCharacters, false});
}

}  // namespace

bool IsBelowCombiningMarks(std::string_view utf8) {
  // The lead byte of U+0300. Those after it, and no others of well-formed text, are greater.
  constexpr unsigned char kFirstLead = 0xCC;
  unsigned char greatest = 0;
  for (const char byte : utf8) greatest = std::max(greatest, static_cast<unsigned char>(byte));
  return greatest < kFirstLead;
}

bool IsOutsidePlainBlocks(char32_t character) {
  const Block *after = std::ranges::upper_bound(kPlainBlocks, character, {}, &Block::first);
  return character > after[-1].last;
}

void AppendScriptRuns(std::u32string_view text, std::uint32_t first, std::uint32_t end, bool isOrdered,
                      bool isRightToLeft, std::vector<ScriptRun> &runs) {
  // Characters of all scripts go with those before them, or after them at the beginning.
  hb_script_t script = HB_SCRIPT_COMMON;
  for (std::uint32_t i = first; i < end && IsInherited(script); ++i) script = ScriptOf(text[i]);
  if (IsInherited(script)) script = HB_SCRIPT_COMMON;
  for (std::uint32_t i = first; i < end;) {
    std::uint32_t after = i;
    hb_script_t next = script;
    for (; after < end; ++after) {
      next = ScriptOf(text[after]);
      if (!IsInherited(next) && next != script) break;
    }
    if (isRightToLeft || (!IsSimple(script) && (isOrdered || !IsRightToLeft(script)))) {
      for (std::uint32_t part = i; part < after;) {
        std::uint32_t partEnd = std::min(after, part + kLongestRun);
        // A cluster is not cut, unless nothing else is left to cut.
        while (partEnd < after && partEnd > part + kLongestRun / 2 && IsMark(text[partEnd])) --partEnd;
        runs.push_back({part, partEnd - part, script, RunLayout::kScript, isRightToLeft});
        part = partEnd;
      }
    } else if (IsSimple(script)) {
      AppendSimpleRuns(text, i, after, script, runs);
    } else {
      runs.push_back({i, after - i, script, RunLayout::kCharacters, false});
    }
    script = next;
    i = after;
  }
}

bool IsNonspacingMark(char32_t character) {
  if (character < kFirstMark) return false;
  const hb_unicode_general_category_t category = hb_unicode_general_category(Unicode(), character);
  return category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK ||
         category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK;
}

}  // namespace quillbar::engine
