// SPDX-License-Identifier: MIT
#include "plugin/text/text_state.h"

#include <cmath>

#include "plugin/guard/library_value.h"
#include "plugin/page/coordinates.h"
#include "plugin/page/graphics_mode.h"
#include "plugin/script/owned_by_document.h"
#include "plugin/text/font_data.h"
#include "plugin/text/leading.h"

namespace quillbar::text {

namespace {

/// Pi as this interface has always had it: text that was placed by it stays where it is.
constexpr double kTruncatedPi = 3.141592;

}  // namespace

void BeginText(Page *page) {
  const PageData &data = DataOf(page);
  if (IsIn(data, GraphicsMode::PAGE_DESCRIPTION)) Call<HPDF_Page_BeginText>(data.pageHandle);
}

void EndText(Page *page) {
  const PageData &data = DataOf(page);
  if (IsIn(data, GraphicsMode::TEXT_OBJECT)) Call<HPDF_Page_EndText>(data.pageHandle);
}

void SetFont(Page *page, Font *fontType, Single size) {
  if (fontType == nullptr) return;
  PageData &data = DataOf(page);
  if (!IsIn(data, GraphicsMode::PAGE_DESCRIPTION, GraphicsMode::TEXT_OBJECT)) return;
  const FontData &font = DataOf(fontType);
  if (font.libraryDocument != data.libraryDocument) return;

  // What the library refuses changes nothing: text is converted for the face that the page really has.
  if (Call<HPDF_Page_SetFontAndSize>(data.pageHandle, font.fontHandle, size) != HPDF_OK) return;
  // Locked before the other one goes, so that setting the same font again never lets go of it.
  Font *kept = Keep(fontType);
  Let(data.currentFont);
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

Single GetTextLeading(Page *page) { return Call<HPDF_Page_GetTextLeading>(DataOf(page).pageHandle); }

void SetTextLeading(Page *page, std::intptr_t, Single value) {
  Call<HPDF_Page_SetTextLeading>(DataOf(page).pageHandle, value);
}

Single GetTextRise(Page *page) { return Call<HPDF_Page_GetTextRise>(DataOf(page).pageHandle); }

void SetTextRise(Page *page, std::intptr_t, Single value) {
  Call<HPDF_Page_SetTextRise>(DataOf(page).pageHandle, value);
}

Single GetWordSpace(Page *page) { return Call<HPDF_Page_GetWordSpace>(DataOf(page).pageHandle); }

void SetWordSpace(Page *page, std::intptr_t, Single value) {
  Call<HPDF_Page_SetWordSpace>(DataOf(page).pageHandle, value);
}

TextRenderingMode GetTextRenderingMode(Page *page) {
  return static_cast<TextRenderingMode>(Call<HPDF_Page_GetTextRenderingMode>(DataOf(page).pageHandle));
}

void SetTextRenderingMode(Page *page, std::intptr_t, TextRenderingMode value) {
  Call<HPDF_Page_SetTextRenderingMode>(DataOf(page).pageHandle, ToLibrary<HPDF_TextRenderingMode>(value));
}

}  // namespace quillbar::text
