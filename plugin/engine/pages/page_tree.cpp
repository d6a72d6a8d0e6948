// SPDX-License-Identifier: MIT
// Page trees of any size.
//
// libharu hangs every page below the root of the page tree, whose array of kids may have 32,767 items; the
// next page is an error. Here the root's pages move below a node of their own then, and further nodes follow,
// each as full. Smaller documents keep the flat tree. ISO 32000-1, 7.7.3.
#include <hpdf.h>
#include <hpdf_doc.h>
#include <hpdf_pages.h>
#include <hpdf_utils.h>

#include <utility>

extern "C" HPDF_Page Libharu_HPDF_AddPage(HPDF_Doc document);

namespace {

HPDF_Array KidsOf(HPDF_Pages node) {
  return static_cast<HPDF_Array>(HPDF_Dict_GetItem(node, "Kids", HPDF_OCLASS_ARRAY));
}

bool IsFull(HPDF_Pages node) {
  const HPDF_Array kids = KidsOf(node);
  return kids != nullptr && kids->list->count >= HPDF_LIMIT_MAX_ARRAY;
}

// The reference under a key, which leads to an object with a number.
HPDF_Proxy ReferenceIn(HPDF_Dict dictionary, const char *key) {
  for (HPDF_UINT i = 0; i < dictionary->list->count; ++i) {
    const auto *entry = static_cast<HPDF_DictElement>(HPDF_List_ItemAt(dictionary->list, i));
    const auto *header = static_cast<HPDF_Obj_Header *>(entry->value);
    const bool isReference = header->obj_class == HPDF_OCLASS_PROXY;
    if (isReference && HPDF_StrCmp(entry->key, key) == 0) return static_cast<HPDF_Proxy>(entry->value);
  }
  return nullptr;
}

void SetParent(HPDF_Page page, HPDF_Pages parent) {
  if (const HPDF_Proxy reference = ReferenceIn(page, "Parent")) reference->obj = parent;
  static_cast<HPDF_PageAttr>(page->attr)->parent = parent;
}

// Puts a node between the root and its pages. Whether memory sufficed; otherwise the tree is as it was.
bool MovePagesDown(HPDF_Doc document) {
  const HPDF_Pages root = document->root_pages;
  const HPDF_Pages node = HPDF_Pages_New(document->mmgr, nullptr, document->xref);
  if (node == nullptr) return false;
  // What can fail comes first: the array in which the node is the only kid becomes the root's.
  const HPDF_Array rootKids = KidsOf(root), nodeKids = KidsOf(node);
  if (nodeKids == nullptr || HPDF_Dict_Add(node, "Parent", root) != HPDF_OK ||
      HPDF_Array_Add(nodeKids, node) != HPDF_OK) {
    return false;
  }
  std::swap(rootKids->list, nodeKids->list);
  for (HPDF_UINT i = 0; i < nodeKids->list->count; ++i) {
    SetParent(static_cast<HPDF_Page>(HPDF_Array_GetItem(nodeKids, i, HPDF_OCLASS_DICT)), node);
  }
  return true;
}

// Whether the document's current node has room for another page.
bool MakeRoom(HPDF_Doc document) {
  if (!IsFull(document->cur_pages)) return true;
  if (document->cur_pages == document->root_pages && !MovePagesDown(document)) return false;
  return HPDF_Doc_AddPagesTo(document, document->root_pages) != nullptr;
}

}  // namespace

extern "C" HPDF_Page HPDF_AddPage(HPDF_Doc document) {
  if (HPDF_HasDoc(document) && !MakeRoom(document)) {
    HPDF_CheckError(&document->error);
    return nullptr;
  }
  return Libharu_HPDF_AddPage(document);
}
