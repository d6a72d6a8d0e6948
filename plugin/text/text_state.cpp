// SPDX-License-Identifier: MIT
#include "plugin/text/text_state.h"

#include <cmath>

#include "plugin/page/coordinates.h"
#include "plugin/page/graphics_mode.h"
#include "plugin/script/wrapper.h"
#include "plugin/text/font_data.h"
#include "plugin/text/leading.h"

namespace quillbar::text {

namespace {

/// Pi as this interface has always had it: text that was placed by it stays where it is.
constexpr double kTruncatedPi = 3.141592;

}  // namespace

void SetFont(Page *page, Font *fontType, Single size) {
  if (fontType == nullptr) return;
  PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PAGE_DESCRIPTION, GraphicsMode::TEXT_OBJECT)) return;
  const FontData &font = DataOf(fontType);
  if (font.libraryDocument != data.libraryDocument) return;

  // What the library refuses changes nothing: text is converted for the face that the page really has.
  if (Call<HPDF_Page_SetFontAndSize>(data.pageHandle, font.fontHandle, size) != HPDF_OK) return;
  // Locked before the other one goes, so that setting the same font again never lets go of it.
  Font *kept = Retain(fontType);
  Release(data.currentFont);
  data.textEncoding = font.hostEncoding;
  data.currentFont = kept;
  data.automaticEncoding = font.automaticEncoding;
  data.fontSize = size;
}

void MoveTextPosition(Page *page, Single x, Single y) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::TEXT_OBJECT)) return;
  Call<HPDF_Page_MoveTextPos>(data.pageHandle, x, FlipY(data, y));
}

void MoveTextPositionNextLine(Page *page) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::TEXT_OBJECT)) return;
  const LeadingForOneLine leading(data.pageHandle);
  Call<HPDF_Page_MoveToNextLine>(data.pageHandle);
}

void GetCurrentTextPosition(Page *page, Single *x, Single *y) {
  const PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::TEXT_OBJECT)) return;
  const HPDF_Point position = Call<HPDF_Page_GetCurrentTextPos>(data.pageHandle);
  *x = position.x;
  *y = FlipY(data, position.y);
}

Single SuggestedTextLeading(Page *page) {
  const HPDF_Page handle = DataOf(page).pageHandle;
  return SuggestedLeading(Call<HPDF_Page_GetCurrentFont>(handle), Call<HPDF_Page_GetCurrentFontSize>(handle));
}

void SetTextMatrix(Page *page, Single a, Single b, Single c, Single d, Single x, Single y) {
  const PageData &data = DataOf(page);
  Call<HPDF_Page_SetTextMatrix>(data.pageHandle, a, b, c, d, x, FlipY(data, y));
}

void SetTextRotation(Page *page, Single angle, Single x, Single y) {
  const auto radians = static_cast<float>(static_cast<double>(angle) / 180.0 * kTruncatedPi);
  const auto cosine = static_cast<float>(std::cos(static_cast<double>(radians)));
  const auto sine = static_cast<float>(std::sin(static_cast<double>(radians)));
  SetTextMatrix(page, cosine, sine, -sine, cosine, x, y);
}

}  // namespace quillbar::text
