// SPDX-License-Identifier: MIT
#include "plugin/text/show_text.h"

#include "binding/owned.h"
#include "plugin/page/graphics_mode.h"
#include "plugin/text/fallback.h"
#include "plugin/text/leading.h"

namespace quillbar::text {

bool CanShowText(const PageData &page) {
  return page.textEncoding != kNoFontSet && IsIn(page, GraphicsMode::TEXT_OBJECT);
}

void ShowText(Page *page, String text) {
  const PageData &data = DataOf(page);
  if (!CanShowText(data) || !FitFontToText(page, text)) return;
  const StringData bytes(text, data.textEncoding);
  if (bytes) Call<HPDF_Page_ShowText>(data.pageHandle, bytes.bytes());
}

void ShowTextNextLine(Page *page, String text) {
  const PageData &data = DataOf(page);
  if (!CanShowText(data) || !FitFontToText(page, text)) return;
  const LeadingForOneLine leading(data.pageHandle);
  const StringData bytes(text, data.textEncoding);
  if (bytes) Call<HPDF_Page_ShowTextNextLine>(data.pageHandle, bytes.bytes());
}

}  // namespace quillbar::text
