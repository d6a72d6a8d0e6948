// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// `PageData::textEncoding` of a page that no font was set on yet.
inline constexpr std::uint32_t kNoFontSet = 123456;

/// The private data of a `Page`. The order of the fields is fixed.
struct PageData {
  HPDF_Page pageHandle;  // null for a page that no document made
  std::uint32_t textEncoding;
  HPDF_Doc *libraryDocument;  // the document's own field: identifies the document as well
  PDFDocument *document;      // locked while kept
  Font *currentFont;          // locked while kept
  float fontSize;
  std::uint8_t automaticEncoding;
  std::uint8_t transformCoordinates;
  float cachedHeight;  // in points; what the flip works with

  static ClassRecord definition;
};

static_assert(offsetof(PageData, textEncoding) == sizeof(void *));
static_assert(offsetof(PageData, libraryDocument) == 2 * sizeof(void *));
static_assert(offsetof(PageData, fontSize) == 5 * sizeof(void *));
static_assert(offsetof(PageData, transformCoordinates) == 5 * sizeof(void *) + 5);
static_assert(offsetof(PageData, cachedHeight) == 5 * sizeof(void *) + 8);

inline PageData &DataOf(Page *page) { return *ClassData<PageData>(page); }
inline HPDF_Page HandleOf(Page *page) { return DataOf(page).pageHandle; }

}  // namespace quillbar
