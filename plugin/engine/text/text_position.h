// SPDX-License-Identifier: MIT
/// Where the next text is shown: what operators do to the library's own notion of the text position.
#pragma once

#include "plugin/engine/pages/page_object.h"

namespace quillbar::engine {

/// The page's next line becomes the current one, as with T* and '.
inline void BeginNextLine(PageAttributes &page) {
  HPDF_TransMatrix &matrix = page.text_matrix;
  matrix.x -= page.gstate->text_leading * matrix.c;
  matrix.y -= page.gstate->text_leading * matrix.d;
  page.text_pos = {matrix.x, matrix.y};
}

/// Moves the text position by the width of what was shown, in text space units.
inline void Advance(PageAttributes &page, HPDF_REAL width) {
  const HPDF_TransMatrix &matrix = page.text_matrix;
  if (page.gstate->writing_mode == HPDF_WMODE_HORIZONTAL) {
    page.text_pos.x += width * matrix.a;
    page.text_pos.y += width * matrix.b;
  } else {
    page.text_pos.x -= width * matrix.b;
    page.text_pos.y -= width * matrix.a;
  }
}

}  // namespace quillbar::engine
