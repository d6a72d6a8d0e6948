// SPDX-License-Identifier: MIT
#include "plugin/engine/pages/page_object.h"

#include <hpdf_utils.h>

#include "plugin/engine/objects/compact_objects.h"
#include "plugin/engine/objects/new_entry.h"
#include "plugin/engine/pages/graphics_state_record.h"

namespace quillbar::engine {

namespace {

// Entries that a page has with its parent, and its resources with one category.
constexpr HPDF_UINT kPageEntries = 5, kResourceEntries = 2;

constexpr ConstantObject kPage = Constant("/Page");
// Obsolete, but old printers may want it. ISO 32000-1, 14.2.
constexpr ConstantObject kProcedures = Constant("[ /PDF /Text /ImageB /ImageC /ImageI ]");

void FreeAttributes(HPDF_Dict page) {
  auto *attributes = static_cast<HPDF_PageAttr>(page->attr);
  if (attributes == nullptr) return;
  // A document that is given up may have pages with saved states.
  while (attributes->gstate != nullptr) attributes->gstate = FreeGraphicsState(page->mmgr, attributes->gstate);
  HPDF_FreeMem(page->mmgr, attributes);
}

// Whether the page has its required entries now; if not, memory ran out.
bool AddEntries(HPDF_Page page) {
  const PageAttributes &attributes = AttributesOf(page);
  // A4 in whole points.
  constexpr HPDF_Box kSize{0, 0, 595, 841};
  return AddConstant(page, "Type", kPage) == HPDF_OK && AddBox(page, "MediaBox", kSize) == HPDF_OK &&
         HPDF_Dict_Add(page, "Contents", attributes.contents) == HPDF_OK;
}

// The same for its resources.
bool AddResources(HPDF_Page page) {
  const HPDF_Dict resources = NewDictionaryIn(page, "Resources");
  if (resources == nullptr) return false;
  ExpectEntries(resources, kResourceEntries);
  return AddConstant(resources, "ProcSet", kProcedures) == HPDF_OK;
}

}  // namespace

HPDF_Page NewPage(HPDF_MMgr memory, HPDF_Xref xref) {
  HPDF_Page page = HPDF_Dict_New(memory);
  if (page == nullptr) return nullptr;
  page->header.obj_class |= HPDF_OSUBCLASS_PAGE;
  page->free_fn = FreeAttributes;
  ExpectEntries(page, kPageEntries);
  auto *attributes = static_cast<HPDF_PageAttr>(HPDF_GetMem(memory, sizeof(PageAttributes)));
  if (attributes == nullptr) {
    HPDF_Dict_Free(page);
    return nullptr;
  }
  *attributes = PageAttributes{};
  attributes->gmode = HPDF_GMODE_PAGE_DESCRIPTION;
  attributes->xref = xref;
  page->attr = attributes;

  // The table of references frees what it can't take.
  if (HPDF_Xref_Add(xref, page) != HPDF_OK) return nullptr;
  attributes->gstate = NewGraphicsState(memory);
  attributes->contents = HPDF_DictStream_New(memory, xref);
  if (attributes->gstate == nullptr || attributes->contents == nullptr) return nullptr;
  attributes->stream = attributes->contents->stream;
  return AddEntries(page) && AddResources(page) ? page : nullptr;
}

}  // namespace quillbar::engine

extern "C" HPDF_BOOL HPDF_Page_Validate(HPDF_Page page) { return quillbar::engine::IsPage(page); }
