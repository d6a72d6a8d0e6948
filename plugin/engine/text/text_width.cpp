// SPDX-License-Identifier: MIT
#include "plugin/engine/text/text_width.h"

#include <hpdf_utils.h>

#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/pages/page_object.h"

namespace quillbar::engine {

HPDF_TextWidth CountedWidth(const HPDF_GState_Rec &state, std::string_view text, const DirectedText *whole) {
  return WidthOfText(state.font, AsBytes(text), whole);
}

HPDF_REAL WidthInState(const HPDF_GState_Rec &state, const HPDF_TextWidth &width) {
  return state.word_space * static_cast<HPDF_REAL>(width.numspace) +
         static_cast<HPDF_REAL>(width.width) * state.font_size / 1000 +
         state.char_space * static_cast<HPDF_REAL>(width.numchars);
}

HPDF_UINT LengthOfLine(const HPDF_GState_Rec &state, std::string_view text, HPDF_REAL width, HPDF_REAL characterSpace,
                       const DirectedText *whole) {
  const LineSettings line{width, state.font_size, characterSpace, state.word_space, true};
  return FittingLengthOfText(state.font, AsBytes(text), line, nullptr, whole);
}

bool HoldsTogether(const HPDF_GState_Rec &state, std::string_view text, const DirectedText *whole) {
  return FontObjectOf(state.font).HoldsTogether(AsBytes(text), whole);
}

HPDF_REAL DefaultLeading(const HPDF_GState_Rec &state) {
  const HPDF_Box extent = HPDF_Font_GetBBox(state.font);
  return (extent.top - extent.bottom) / 1000 * state.font_size;
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" HPDF_UINT HPDF_Page_MeasureText(HPDF_Page page, const char *text, HPDF_REAL width, HPDF_BOOL breaksAtWords,
                                           HPDF_REAL *takenWidth) {
  if (!IsPage(page) || text == nullptr || *text == '\0') return 0;
  const HPDF_GState_Rec &state = *AttributesOf(page).gstate;
  if (state.font == nullptr) {
    HPDF_RaiseError(page->error, HPDF_PAGE_FONT_NOT_FOUND, 0);
    return 0;
  }
  // A longer text than the library takes is refused there, which needs no more of its length.
  const HPDF_UINT length = HPDF_StrLen(text, HPDF_LIMIT_MAX_STRING_LEN + 1);
  const HPDF_UINT taken =
      HPDF_Font_MeasureText(state.font, reinterpret_cast<const HPDF_BYTE *>(text), length, width, state.font_size,
                            state.char_space, state.word_space, breaksAtWords, takenWidth);
  HPDF_CheckError(page->error);
  return taken;
}
