// SPDX-License-Identifier: MIT
#include "plugin/text/text_rect.h"

#include "plugin/engine/text/line_count.h"
#include "plugin/guard/library_call.h"
#include "plugin/page/coordinates.h"
#include "plugin/text/converted_text.h"
#include "plugin/text/fallback.h"
#include "plugin/text/font_metrics.h"
#include "plugin/text/leading.h"
#include "plugin/text/show_text.h"

namespace quillbar::text {

namespace {

/// Text is aligned left for a number that the enumeration doesn't have.
HPDF_TextAlignment LibraryAlignment(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::RIGHT:
      return HPDF_TALIGN_RIGHT;
    case TextAlignment::CENTER:
      return HPDF_TALIGN_CENTER;
    case TextAlignment::JUSTIFY:
      return HPDF_TALIGN_JUSTIFY;
    default:
      return HPDF_TALIGN_LEFT;
  }
}

}  // namespace

Single TextRectMeasure(Page *page, String text, Single width, Integer *outLineCount) {
  const PageData &data = DataOf(page);
  if (!CanShowText(data) || text == nullptr) {
    *outLineCount = 0;
    return 0;
  }
  const ConvertedText converted(text, data.textEncoding);
  if (!converted) return 0;
  const RestoredLeading leading(data.pageHandle);
  HPDF_UINT lineCount = 0;
  HPDF_REAL height = 0;
  Call<engine::CountTextLines>(data.pageHandle, converted.bytes(), width, &lineCount, &height);
  *outLineCount = static_cast<Integer>(lineCount);
  return height;
}

void TextRect(Page *page, String text, Single left, Single top, Single right, Single bottom, TextAlignment alignment,
              Integer *length) {
  *length = 0;
  const PageData &data = DataOf(page);
  if (!CanShowText(data) || !FitFontToText(page, text)) return;
  const ConvertedText converted(text, data.textEncoding);
  if (!converted) return;
  const RestoredLeading leading(data.pageHandle);
  HPDF_UINT count = 0;
  Call<HPDF_Page_TextRect>(data.pageHandle, left, FlipY(data, top), right, FlipY(data, bottom), converted.bytes(),
                           LibraryAlignment(alignment), &count);
  *length = converted.CharactersIn(count);
}

void TextRectBaseline(Page *page, String text, Single left, Single baseline, Single width, Single height,
                      TextAlignment alignment, Integer *length) {
  const PageData &data = DataOf(page);
  *length = 0;
  if (data.currentFont == nullptr) return;
  const float above = data.fontSize * (BoundingBoxOf(data.currentFont).top / 1000.0F);
  TextRect(page, text, left, baseline + above, left + width, (baseline - height) + above, alignment, length);
}

}  // namespace quillbar::text
