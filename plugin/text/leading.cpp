// SPDX-License-Identifier: MIT
#include "plugin/text/leading.h"

#include "plugin/guard/library_call.h"

namespace quillbar {

float SuggestedLeading(HPDF_Font font, float size) {
  if (font == nullptr) return 0.0F;
  const HPDF_Box box = Call<HPDF_Font_GetBBox>(font);
  const float height = box.top - box.bottom;
  return height / 1000.0F * size;
}

RestoredLeading::RestoredLeading(HPDF_Page page) : page_(page), before_(Call<HPDF_Page_GetTextLeading>(page)) {}

RestoredLeading::~RestoredLeading() {
  if (Call<HPDF_Page_GetTextLeading>(page_) != before_) Call<HPDF_Page_SetTextLeading>(page_, before_);
}

LeadingForOneLine::LeadingForOneLine(HPDF_Page page) : RestoredLeading(page) {
  if (before_ != 0.0F) return;
  const float suggested =
      SuggestedLeading(Call<HPDF_Page_GetCurrentFont>(page), Call<HPDF_Page_GetCurrentFontSize>(page));
  Call<HPDF_Page_SetTextLeading>(page, suggested);
}

}  // namespace quillbar
