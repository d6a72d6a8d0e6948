// SPDX-License-Identifier: MIT
#include "plugin/engine/text/line_count.h"

#include <optional>
#include <string_view>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/text/text_showing.h"
#include "plugin/engine/text/text_width.h"

namespace quillbar::engine {

HPDF_STATUS CountTextLines(HPDF_Page page, const char *text, HPDF_REAL width, HPDF_UINT *lineCount, HPDF_REAL *height) {
  PageOperator count = ShowsText(page);
  if (!count.IsAllowed()) return count.Status();
  *lineCount = 0;
  *height = 0;
  std::string_view rest = text;
  count.RefuseIf(rest.size() > HPDF_LIMIT_MAX_STRING_LEN, HPDF_STRING_OUT_OF_RANGE);
  if (!count.IsAllowed() || rest.empty()) return count.Status();

  const HPDF_GState_Rec &state = *count.Now().gstate;
  if (state.text_leading == 0) {
    const HPDF_STATUS status = HPDF_Page_SetTextLeading(page, DefaultLeading(state));
    if (status != HPDF_OK) return status;
  }
  const HPDF_STATUS status = OrOutOfMemory(page->error, [&] {
    const std::optional<DirectedText> order = DirectedTextOf(state.font, AsBytes(rest));
    while (!rest.empty()) {
      const HPDF_UINT taken = LengthOfLine(state, rest, width, 0, order ? &*order : nullptr);
      if (taken == 0) break;
      ++*lineCount;
      rest.remove_prefix(taken);
    }
    return HPDF_STATUS{HPDF_OK};
  });
  if (status != HPDF_OK) return HPDF_CheckError(page->error);
  *height = static_cast<HPDF_REAL>(*lineCount) * state.text_leading;
  return HPDF_CheckError(page->error);
}

}  // namespace quillbar::engine
