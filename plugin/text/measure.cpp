// SPDX-License-Identifier: MIT
#include "plugin/text/measure.h"

#include <limits>

#include "binding/owned.h"
#include "plugin/engine/text/line_count.h"
#include "plugin/page/coordinates.h"
#include "plugin/page/graphics_mode.h"
#include "plugin/text/fallback.h"
#include "plugin/text/font.h"
#include "plugin/text/leading.h"

namespace quillbar::text {

namespace {

/// How many characters the first `byteCount` bytes of a converted text are.
Integer CharacterCount(const StringData &text, HPDF_UINT byteCount, std::uint32_t hostEncoding) {
  const OwnedString part(
      CallHost<service::BuildStringWithEncoding>(text.bytes(), static_cast<int>(byteCount), hostEncoding));
  return CallHost<global_method::Len>(part.get());
}

/// Text is aligned left for a number that is no member of the enumeration.
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

bool IsInTextObjectWithFont(const PageData &data) {
  return IsIn(data, GraphicsMode::TEXT_OBJECT) && data.textEncoding != kNoFontSet;
}

/// An infinite width is no limit. The library takes finite numbers only.
Single LimitOf(Single width) {
  constexpr float kNoLimit = std::numeric_limits<float>::max();
  return width > kNoLimit ? kNoLimit : width;
}

/// `outWidth` may be null.
Integer Measure(Page *page, String text, Single width, Boolean wordWrap, Single *outWidth) {
  constexpr Integer kNothingMeasured = -1;
  const PageData &data = DataOf(page);
  if (text == nullptr || data.textEncoding == kNoFontSet || !FitFontToText(page, text)) return kNothingMeasured;
  // A failing call raises ErrorLog, whose handler may set another font: what was converted is counted in the
  // encoding in which it was.
  const std::uint32_t encoding = data.textEncoding;
  const StringData bytes(text, encoding);
  if (!bytes) return kNothingMeasured;
  const HPDF_UINT count =
      Call<HPDF_Page_MeasureText>(data.pageHandle, bytes.bytes(), LimitOf(width), HPDF_BOOL{wordWrap != 0}, outWidth);
  return CharacterCount(bytes, count, encoding);
}

}  // namespace

Integer MeasureText(Page *page, String text, Single width, Boolean wordWrap) {
  return Measure(page, text, width, wordWrap, nullptr);
}

Integer MeasureTextWidth(Page *page, String text, Single width, Boolean wordWrap, Single *outWidth) {
  return Measure(page, text, width, wordWrap, outWidth);
}

Single TextRectMeasure(Page *page, String text, Single width, Integer *outLineCount) {
  const PageData &data = DataOf(page);
  if (!IsInTextObjectWithFont(data) || text == nullptr) {
    *outLineCount = 0;
    return 0;
  }
  const StringData bytes(text, data.textEncoding);
  if (!bytes) return 0;
  const RestoredLeading leading(data.pageHandle);
  HPDF_UINT lineCount = 0;
  HPDF_REAL height = 0;
  Call<engine::CountTextLines>(data.pageHandle, bytes.bytes(), width, &lineCount, &height);
  *outLineCount = static_cast<Integer>(lineCount);
  return height;
}

void TextRect(Page *page, String text, Single left, Single top, Single right, Single bottom, TextAlignment alignment,
              Integer *length) {
  *length = 0;
  const PageData &data = DataOf(page);
  if (!IsInTextObjectWithFont(data) || !FitFontToText(page, text)) return;
  const std::uint32_t encoding = data.textEncoding;
  const StringData bytes(text, encoding);
  if (!bytes) return;
  const RestoredLeading leading(data.pageHandle);
  HPDF_UINT count = 0;
  Call<HPDF_Page_TextRect>(data.pageHandle, left, FlipY(data, top), right, FlipY(data, bottom), bytes.bytes(),
                           LibraryAlignment(alignment), &count);
  *length = CharacterCount(bytes, count, encoding);
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
