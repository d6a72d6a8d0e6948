// SPDX-License-Identifier: MIT
// The library sets a text box (HPDF_Page_TextRect) but cannot say beforehand how high it will be.
#include "plugin/engine/text/line_count.h"

#include <cstring>

namespace quillbar::engine {

HPDF_STATUS CountTextLines(HPDF_Page page, const char *text, HPDF_REAL width, HPDF_UINT *lineCount, HPDF_REAL *height) {
  HPDF_STATUS status = HPDF_Page_CheckState(page, HPDF_GMODE_TEXT_OBJECT);
  if (status != HPDF_OK) return status;
  HPDF_GState state = static_cast<HPDF_PageAttr>(page->attr)->gstate;
  if (state->font == nullptr) return HPDF_RaiseError(page->error, HPDF_PAGE_FONT_NOT_FOUND, 0);

  *lineCount = 0;
  *height = 0;
  const std::size_t length = std::strlen(text);
  if (length >= 0x7FFFFFFF) return HPDF_RaiseError(page->error, HPDF_STRING_OUT_OF_RANGE, 0);
  if (length == 0) return HPDF_OK;

  if (state->text_leading == 0) {
    const HPDF_Box extent = HPDF_Font_GetBBox(state->font);
    status = HPDF_Page_SetTextLeading(page, (extent.top - extent.bottom) / 1000 * state->font_size);
    if (status != HPDF_OK) return status;
  }

  auto rest = static_cast<HPDF_UINT>(length);
  while (rest > 0) {
    // Lines are counted as if characters were not spaced out; the page is not told, since nothing is written.
    state->char_space = 0;
    // What HPDF_Page_MeasureText does, without looking for the text's end again on each line.
    const HPDF_UINT taken =
        HPDF_Font_MeasureText(state->font, reinterpret_cast<const HPDF_BYTE *>(text), rest, width, state->font_size,
                              state->char_space, state->word_space, HPDF_TRUE, nullptr);
    if (taken == 0) break;
    ++*lineCount;
    rest -= taken;
    text += taken;
  }
  *height = static_cast<HPDF_REAL>(*lineCount) * state->text_leading;
  return HPDF_CheckError(page->error);
}

}  // namespace quillbar::engine
