// SPDX-License-Identifier: MIT
/// Writing text to a page.
#pragma once

#include <string_view>

#include "plugin/engine/pages/page_operator.h"

namespace quillbar::engine {

/// Where a text is shown.
enum class ShownAt {
  kPosition,  ///< at the text position: Tj
  kNextLine,  ///< at the beginning of the next line: '
};

/// Begins a call that shows text: the page must be in a text object and have a font.
PageOperator ShowsText(HPDF_Page page);

/// Shows `text`, which is not empty, in the codes of the page's font, and moves the text position to its end. Ends the
/// call, which is refused with HPDF_STRING_OUT_OF_RANGE if the text has more than 65,535 bytes.
HPDF_STATUS ShowText(PageOperator &call, std::string_view text, ShownAt place);

}  // namespace quillbar::engine
