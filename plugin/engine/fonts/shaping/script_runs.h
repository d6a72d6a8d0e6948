// SPDX-License-Identifier: MIT
/// Which parts of a text need shaping.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillbar::engine {

/// How a run of text is laid out.
enum class RunLayout : std::uint8_t {
  kCharacters,  ///< one glyph for each character, at its advance width
  kMarks,       ///< a character with its combining marks, which are placed; without kerning and ligatures
  kScript,      ///< by all that the font says about the script
};

/// A part of a text that is laid out in one way.
struct ScriptRun {
  std::uint32_t first;  // of its characters
  std::uint32_t count;
  std::uint32_t script;  // the script's ISO 15924 tag, as HarfBuzz has it
  RunLayout layout;
  bool isRightToLeft;
};

/// The first combining mark. Every character before it is laid out as it is.
inline constexpr char32_t kFirstMark = 0x0300;

/// Whether a character is of no block of simple scripts without marks.
bool IsOutsidePlainBlocks(char32_t character);

/// Whether a text with this character can have runs that are not RunLayout::kCharacters. Asked of every character that
/// is shown.
inline bool MayNeedShaping(char32_t character) { return character >= kFirstMark && IsOutsidePlainBlocks(character); }

/// Whether UTF-8 text has no character of U+0300 and above, before which there is nothing to shape.
bool IsBelowCombiningMarks(std::string_view utf8);

/// Appends the runs of `text` from `first` to before `end`, in their order.
///
/// Text in a script with its own rules of shaping is one run each. In other scripts only characters with combining
/// marks need any. Scripts that run from right to left are laid out character by character unless the text is ordered
/// by direction (`isOrdered`): until then applications order such text, and choose its letters' forms, themselves.
/// All text of a right-to-left part (`isRightToLeft`) is shaped, which mirrors its brackets. Throws std::bad_alloc.
void AppendScriptRuns(std::u32string_view text, std::uint32_t first, std::uint32_t end, bool isOrdered,
                      bool isRightToLeft, std::vector<ScriptRun> &runs);

/// Whether a character is a mark without a width of its own: nonspacing or enclosing (Mn, Me).
bool IsNonspacingMark(char32_t character);

}  // namespace quillbar::engine
