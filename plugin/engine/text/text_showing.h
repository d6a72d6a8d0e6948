// SPDX-License-Identifier: MIT
/// Writing text to a page.
#pragma once

#include <string_view>

#include "plugin/engine/fonts/shaping/directed_text.h"
#include "plugin/engine/pages/page_operator.h"

namespace quillbar::engine {

/// Where a text is shown.
enum class ShownAt {
  kPosition,  ///< at the text position: Tj
  kNextLine,  ///< at the beginning of the next line: '
};

/// What a text that is part of another one takes from there.
struct PartOfText {
  const DirectedText *whole = nullptr;  ///< the order of the whole text; null if it is not ordered
  HPDF_REAL gap = 0;                    ///< in text space units, added after each white space in a font file's text
};

/// Begins a call that shows text: the page must be in a text object and have a font.
PageOperator ShowsText(HPDF_Page page);

/// Shows `text`, which is not empty, in the codes of the page's font, and moves the text position to its end. Ends the
/// call, which is refused with HPDF_STRING_OUT_OF_RANGE if the text has more than 65,535 bytes.
HPDF_STATUS ShowText(PageOperator &call, std::string_view text, ShownAt place, const PartOfText &part = {});

}  // namespace quillbar::engine
