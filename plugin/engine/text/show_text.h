// SPDX-License-Identifier: MIT
// Writing text to a page (show_text.cpp).
#pragma once

#include <hpdf.h>

#include <string_view>

namespace quillbar::engine {

// The operators that show text, with the white space around.
inline constexpr std::string_view kShow = " Tj\n";
inline constexpr std::string_view kShowOnNextLine = " '\n";

// Writes `text` in the codes of the page's current font, of which there must be one, so that one of the
// operators above shows it. An embedded TrueType font with a word space takes other operators that do the
// same.
HPDF_STATUS WriteShownText(HPDF_PageAttr page, std::string_view text, std::string_view showOperator);

// The page's next line becomes the current one: what T* and ' do to the library's own notion of the position.
void BeginNextLine(HPDF_PageAttr page);

// Moves the text position by the width of shown text, in text space units.
void Advance(HPDF_PageAttr page, HPDF_REAL width);

// What `text` counts in a state's font, to be added up and taken apart without loss; and what a count is in
// the text state, in text space units.
HPDF_TextWidth CountedWidth(const HPDF_GState_Rec &state, std::string_view text);
HPDF_REAL WidthInState(const HPDF_GState_Rec &state, const HPDF_TextWidth &width);

// The width of `text` in the page's current text state, in text space units.
HPDF_REAL WidthOfText(HPDF_PageAttr page, std::string_view text);

}  // namespace quillbar::engine
