// SPDX-License-Identifier: MIT
// Page trees of any size (ISO 32000-1, 7.7.3.2).
//
// The array of a node's kids may have 32,767 items. Up to as many pages hang below the root; the next one moves the
// root's pages below a node of their own, and further nodes follow, each as full.
#include "plugin/engine/pages/page_tree.h"

#include <hpdf_doc.h>
#include <hpdf_utils.h>

#include <utility>

#include "plugin/engine/objects/new_entry.h"
#include "plugin/engine/objects/unfinished_object.h"
#include "plugin/engine/pages/page_object.h"
#include "plugin/engine/streams/memory_stream.h"

namespace quillbar::engine {

namespace {

bool IsNode(const HPDF_Obj_Header &object) { return object.obj_class == (HPDF_OSUBCLASS_PAGES | HPDF_OCLASS_DICT); }

// Every node has them: one is entered in the document only when it is whole.
HPDF_Array KidsOf(HPDF_Pages node) {
  return static_cast<HPDF_Array>(HPDF_Dict_GetItem(node, "Kids", HPDF_OCLASS_ARRAY));
}

HPDF_Dict KidAt(HPDF_Array kids, HPDF_UINT index) {
  return static_cast<HPDF_Dict>(HPDF_Array_GetItem(kids, index, HPDF_OCLASS_DICT));
}

HPDF_UINT CountPagesBelow(HPDF_Pages node) {
  HPDF_Array kids = KidsOf(node);
  HPDF_UINT count = 0;
  for (HPDF_UINT i = 0; i < kids->list->count; ++i) {
    HPDF_Dict kid = KidAt(kids, i);
    if (IsNode(kid->header)) {
      count += CountPagesBelow(kid);
    } else if (IsPage(kid)) {
      ++count;
    }
  }
  return count;
}

// A node states how many pages are below it when it is written.
HPDF_STATUS UpdateCount(HPDF_Dict node) {
  static_cast<HPDF_Number>(HPDF_Dict_GetItem(node, "Count", HPDF_OCLASS_NUMBER))->value =
      static_cast<HPDF_INT32>(CountPagesBelow(node));
  return HPDF_OK;
}

HPDF_STATUS AddKid(HPDF_Pages parent, HPDF_Dict kid) {
  HPDF_STATUS status = HPDF_Dict_Add(kid, "Parent", parent);
  if (status != HPDF_OK) return status;
  if (IsPage(kid)) AttributesOf(kid).parent = parent;
  return HPDF_Array_Add(KidsOf(parent), kid);
}

bool IsFull(HPDF_Pages node) { return KidsOf(node)->list->count >= HPDF_LIMIT_MAX_ARRAY; }

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
  AttributesOf(page).parent = parent;
}

// Puts a node between the root and its pages. Whether memory sufficed; otherwise the tree is as it was.
bool MovePagesDown(HPDF_Doc document) {
  const HPDF_Pages root = document->root_pages;
  const HPDF_Pages node = HPDF_Pages_New(document->mmgr, nullptr, document->xref);
  if (node == nullptr) return false;
  // What can fail comes first: the array in which the node is the only kid becomes the root's.
  const HPDF_Array rootKids = KidsOf(root), nodeKids = KidsOf(node);
  if (HPDF_Dict_Add(node, "Parent", root) != HPDF_OK || HPDF_Array_Add(nodeKids, node) != HPDF_OK) return false;
  std::swap(rootKids->list, nodeKids->list);
  for (HPDF_UINT i = 0; i < nodeKids->list->count; ++i) SetParent(KidAt(nodeKids, i), node);
  return true;
}

// Whether the document's current node has room for another page.
bool MakeRoom(HPDF_Doc document) {
  if (!IsFull(document->cur_pages)) return true;
  if (document->cur_pages == document->root_pages && !MovePagesDown(document)) return false;
  const HPDF_Pages node = HPDF_Pages_New(document->mmgr, document->root_pages, document->xref);
  if (node != nullptr) document->cur_pages = node;
  return node != nullptr;
}

// The new page in the tree; null with the reason in the error record.
HPDF_Page AddedPage(HPDF_Doc document) {
  if (!MakeRoom(document)) return nullptr;
  // Whoever begins a page has mostly ended the one before.
  if (document->cur_page != nullptr) AsMemoryStream(AttributesOf(document->cur_page).stream).GiveBackSpareRoom();
  HPDF_Page page = NewPage(document->mmgr, document->xref);
  if (page == nullptr || HPDF_List_Add(document->page_list, page) != HPDF_OK) return nullptr;
  if (AddKid(document->cur_pages, page) == HPDF_OK) return page;
  // It is in both or in neither.
  HPDF_List_Remove(document->page_list, page);
  return nullptr;
}

}  // namespace

HPDF_Page AddPage(HPDF_Doc document) {
  if (!HPDF_HasDoc(document)) return nullptr;
  HPDF_Page page = AddedPage(document);
  if (page == nullptr) {
    HPDF_CheckError(&document->error);
    return nullptr;
  }
  if ((document->compression_mode & HPDF_COMP_TEXT) != 0)
    AttributesOf(page).contents->filter = HPDF_STREAM_FILTER_FLATE_DECODE;
  document->cur_page = page;
  return page;
}

}  // namespace quillbar::engine

// The library's catalogue makes the root with this.
extern "C" HPDF_Pages HPDF_Pages_New(HPDF_MMgr memory, HPDF_Pages parent, HPDF_Xref xref) {
  using namespace quillbar::engine;
  UnfinishedDictionary node(HPDF_Dict_New(memory));
  if (node == nullptr) return nullptr;
  node->header.obj_class |= HPDF_OSUBCLASS_PAGES;
  node->before_write_fn = UpdateCount;
  if (HPDF_Dict_AddName(node.get(), "Type", "Pages") != HPDF_OK || NewArrayIn(node.get(), "Kids") == nullptr ||
      HPDF_Dict_AddNumber(node.get(), "Count", 0) != HPDF_OK) {
    return nullptr;
  }
  const HPDF_Pages entered = EnteredIn(xref, std::move(node));
  const bool isInTree = entered != nullptr && (parent == nullptr || AddKid(parent, entered) == HPDF_OK);
  return isInTree ? entered : nullptr;
}
