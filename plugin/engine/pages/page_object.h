// SPDX-License-Identifier: MIT
/// Pages: what one is, and what it is made of.
#pragma once

#include <hpdf.h>
#include <hpdf_pages.h>

namespace quillbar::engine {

/// What the library knows of a page: its modes, positions, states, resources and content.
using PageAttributes = HPDF_PageAttr_Rec;

/// Whether `page` is a page's dictionary; null is not.
inline bool IsPage(const HPDF_Dict_Rec *page) {
  return page != nullptr && page->header.obj_class == (HPDF_OSUBCLASS_PAGE | HPDF_OCLASS_DICT);
}

/// The attributes of a page, which must be one; they live as long as it.
inline PageAttributes &AttributesOf(HPDF_Page page) { return *static_cast<HPDF_PageAttr>(page->attr); }

/// The mode of a page between operators; 0 for what is not a page.
inline HPDF_UINT16 ModeOf(HPDF_Page page) { return IsPage(page) ? AttributesOf(page).gmode : HPDF_UINT16{0}; }

/// A new page of 595 by 841 points without content, listed in `xref`, which owns it; it has no parent yet. Null when
/// memory ran out, and then the library's error record says so.
HPDF_Page NewPage(HPDF_MMgr memory, HPDF_Xref xref);

}  // namespace quillbar::engine
