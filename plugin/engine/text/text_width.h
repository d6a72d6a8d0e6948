// SPDX-License-Identifier: MIT
/// The widths of texts, and where they are broken into lines.
#pragma once

#include <hpdf.h>
#include <hpdf_gstate.h>

#include <span>
#include <string_view>

#include "plugin/engine/fonts/shaping/directed_text.h"

namespace quillbar::engine {

/// A text's bytes, in the encoding of the font that it is for.
inline std::span<const HPDF_BYTE> AsBytes(std::string_view text) {
  return {reinterpret_cast<const HPDF_BYTE *>(text.data()), text.size()};
}

/// What `text`, of at most 65,535 bytes, counts in a state's font, which there must be: characters, spaces, and a width
/// in 1/1000 of the font size. Counts of parts that are shown apart can be added up and subtracted without loss. `whole`,
/// if not null, is the text of which `text` is a part.
HPDF_TextWidth CountedWidth(const HPDF_GState_Rec &state, std::string_view text, const DirectedText *whole = nullptr);

/// What a count is in a text state, in text space units.
HPDF_REAL WidthInState(const HPDF_GState_Rec &state, const HPDF_TextWidth &width);

/// How many bytes of `text` make the first line of at most `width` text space units, with the white space after its
/// last word: lines are broken at white space, at line ends, and as LineBreaker says. 0 if the first word is too wide, and for texts of more
/// than 65,535 bytes, which are reported with HPDF_STRING_OUT_OF_RANGE. The state's font, which there must be, its size
/// and the word space count, and `characterSpace` between two characters.
HPDF_UINT LengthOfLine(const HPDF_GState_Rec &state, std::string_view text, HPDF_REAL width, HPDF_REAL characterSpace,
                       const DirectedText *whole = nullptr);

/// Whether letters of `text` belong together in ways that space between them would break up. `whole` as above. Throws
/// std::bad_alloc.
bool HoldsTogether(const HPDF_GState_Rec &state, std::string_view text, const DirectedText *whole);

/// The distance of lines if the state has none: the height of the bounding box of its font, in text space units.
HPDF_REAL DefaultLeading(const HPDF_GState_Rec &state);

}  // namespace quillbar::engine
