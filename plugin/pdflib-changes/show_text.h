// Writing text to a page (show_text.cpp).
#pragma once

#include <hpdf.h>

#include <string_view>

namespace quillbar::pdflib {

// Writes `text` as a string operand in the codes of the page's current font, of which there must be one, and
// the operator behind it with the white space around.
HPDF_STATUS WriteShownText(HPDF_PageAttr page, std::string_view text, std::string_view showOperator);

// The page's next line becomes the current one: what T* and ' do to the library's own notion of the position.
void BeginNextLine(HPDF_PageAttr page);

// Moves the text position by the width of shown text, in text space units.
void Advance(HPDF_PageAttr page, HPDF_REAL width);

// The width of `text` in the page's current text state, in text space units.
HPDF_REAL WidthOfText(HPDF_PageAttr page, std::string_view text);

}  // namespace quillbar::pdflib
