// SPDX-License-Identifier: MIT
#include "plugin/text/measure.h"

#include <limits>

#include "plugin/guard/library_call.h"
#include "plugin/page/page_data.h"
#include "plugin/text/converted_text.h"
#include "plugin/text/fallback.h"

namespace quillbar::text {

namespace {

/// An infinite width limits nothing. The library takes finite numbers only.
Single LimitOf(Single width) {
  constexpr float kNoLimit = std::numeric_limits<float>::max();
  return width > kNoLimit ? kNoLimit : width;
}

/// `outWidth` may be null.
Integer Measure(Page *page, String text, Single width, Boolean wordWrap, Single *outWidth) {
  constexpr Integer kNothingMeasured = -1;
  const PageData &data = DataOf(page);
  if (text == nullptr || data.textEncoding == kNoFontSet || !FitFontToText(page, text)) return kNothingMeasured;
  const ConvertedText converted(text, data.textEncoding);
  if (!converted) return kNothingMeasured;
  return converted.CharactersIn(Call<HPDF_Page_MeasureText>(data.pageHandle, converted.bytes(), LimitOf(width),
                                                            HPDF_BOOL{wordWrap != 0}, outWidth));
}

}  // namespace

Integer MeasureText(Page *page, String text, Single width, Boolean wordWrap) {
  return Measure(page, text, width, wordWrap, nullptr);
}

Integer MeasureTextWidth(Page *page, String text, Single width, Boolean wordWrap, Single *outWidth) {
  return Measure(page, text, width, wordWrap, outWidth);
}

}  // namespace quillbar::text
