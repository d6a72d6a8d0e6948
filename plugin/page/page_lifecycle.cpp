// SPDX-License-Identifier: MIT
#include "plugin/page/page_lifecycle.h"

#include "plugin/page/page_data.h"
#include "plugin/page/saved_fonts.h"
#include "plugin/script/wrapper.h"

namespace quillbar::page {

void Initialize(Object object) {
  PageData &data = DataOf(static_cast<Page *>(object));
  data.document = nullptr;
  data.textEncoding = kNoFontSet;
  data.currentFont = nullptr;
  data.automaticEncoding = 0;
  data.transformCoordinates = 0;
}

void Finalize(Object object) {
  auto *page = static_cast<Page *>(object);
  PageData &data = DataOf(page);
  Release(data.document);
  Release(data.currentFont);
  ForgetSavedFonts(page);
}

}  // namespace quillbar::page
