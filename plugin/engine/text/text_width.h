// SPDX-License-Identifier: MIT
/// The widths of texts, and where they are broken into lines.
#pragma once

#include <hpdf.h>
#include <hpdf_gstate.h>

#include <string_view>

namespace quillbar::engine {

/// What `text`, of at most 65,535 bytes, counts in a state's font, which there must be: characters, spaces, and a width
/// in 1/1000 of the font size. Counts can be added up and subtracted without loss.
HPDF_TextWidth CountedWidth(const HPDF_GState_Rec &state, std::string_view text);

/// What a count is in a text state, in text space units.
HPDF_REAL WidthInState(const HPDF_GState_Rec &state, const HPDF_TextWidth &width);

/// How many bytes of `text` make the first line of at most `width` text space units, with the white space after its
/// last word: lines are broken at white space, at line ends, and as LineBreaker says. 0 if the first word is too wide, and for texts of more
/// than 65,535 bytes, which are reported with HPDF_STRING_OUT_OF_RANGE. The state's font, which there must be, its size
/// and the word space count, and `characterSpace` between two characters.
HPDF_UINT LengthOfLine(const HPDF_GState_Rec &state, std::string_view text, HPDF_REAL width, HPDF_REAL characterSpace);

/// The distance of lines if the state has none: the height of the bounding box of its font, in text space units.
HPDF_REAL DefaultLeading(const HPDF_GState_Rec &state);

}  // namespace quillbar::engine
