// SPDX-License-Identifier: MIT
#include "plugin/text/font_metrics.h"

#include <algorithm>

#include "binding/host_strings.h"
#include "plugin/guard/library_call.h"
#include "plugin/text/font_data.h"

namespace quillbar::text {

namespace {

/// The face that the font was made with, also while text in another script has put another one in its place.
HPDF_Font InitialFont(const FontData &data) {
  const HPDF_Font parked = data.fallbackFonts[static_cast<std::size_t>(data.initialScriptKind)];
  return parked != nullptr ? parked : data.fontHandle;
}

}  // namespace

void Initialize(Object object) {
  FontData &data = DataOf(static_cast<Font *>(object));
  data.document = nullptr;
  data.automaticEncoding = 0;
  std::ranges::fill(data.fallbackFonts, nullptr);
}

Integer GetAscent(Font *font) { return Call<HPDF_Font_GetAscent>(InitialFont(DataOf(font))); }

Integer GetDescent(Font *font) { return Call<HPDF_Font_GetDescent>(InitialFont(DataOf(font))); }

String GetName(Font *font) { return BuildText(Call<HPDF_Font_GetFontName>(InitialFont(DataOf(font)))); }

const HPDF_Rect &BoundingBoxOf(Font *font) {
  FontData &data = DataOf(font);
  if (data.document != nullptr && data.boundingBoxCached == 0) {
    data.boundingBox = Call<HPDF_Font_GetBBox>(data.fontHandle);
    data.boundingBoxCached = 1;
  }
  return data.boundingBox;
}

}  // namespace quillbar::text
