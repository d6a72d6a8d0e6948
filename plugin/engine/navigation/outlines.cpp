// SPDX-License-Identifier: MIT
// The outline of a document: a tree of entries that viewers show as bookmarks (ISO 32000-1, 12.3.3).
//
// Every entry says how many entries show below it. These counts are made in one walk without recursion before the
// tree's root is written, which is the first of them that is, so trees of any depth and size are saved in time
// proportional to their number. libharu counts what is below each entry anew when it writes that one: 60,000 levels
// take minutes and a stack as deep.
#include <hpdf.h>
#include <hpdf_destination.h>
#include <hpdf_outline.h>

#include <new>
#include <utility>
#include <vector>

#include "plugin/engine/objects/unfinished_object.h"

namespace {

using quillbar::engine::EnteredIn;
using quillbar::engine::UnfinishedDictionary;

// An entry that is not written: whether what is below shows.
constexpr const char *kOpen = "_OPENED";

HPDF_Number NumberOf(HPDF_Outline entry, const char *key) {
  return static_cast<HPDF_Number>(HPDF_Dict_GetItem(entry, key, HPDF_OCLASS_NUMBER));
}

HPDF_Outline EntryOf(HPDF_Outline entry, const char *key) {
  return static_cast<HPDF_Outline>(HPDF_Dict_GetItem(entry, key, HPDF_OCLASS_DICT));
}

struct Level {
  HPDF_Outline entry;
  HPDF_Outline nextChild;
  HPDF_INT visible;  // entries below that show when this one is open
};

// The entry "Count": how many entries show below when it is open; negative while it is closed, absent for none.
HPDF_STATUS StoreCount(const Level &level) {
  HPDF_Number number = NumberOf(level.entry, "Count");
  if (level.visible == 0) return number ? HPDF_Dict_RemoveElement(level.entry, "Count") : HPDF_OK;
  const HPDF_INT count = HPDF_Outline_GetOpened(level.entry) ? level.visible : -level.visible;
  if (number == nullptr) return HPDF_Dict_AddNumber(level.entry, "Count", count);
  number->value = count;
  return HPDF_OK;
}

HPDF_STATUS CountTree(HPDF_Outline root) {
  std::vector<Level> path{{root, EntryOf(root, "First"), 0}};
  while (!path.empty()) {
    Level &level = path.back();
    if (HPDF_Outline child = level.nextChild) {
      level.nextChild = EntryOf(child, "Next");
      ++level.visible;
      path.push_back({child, EntryOf(child, "First"), 0});
      continue;
    }
    const HPDF_STATUS status = StoreCount(level);
    if (status != HPDF_OK) return status;
    const HPDF_INT shown = HPDF_Outline_GetOpened(level.entry) ? level.visible : 0;
    path.pop_back();
    if (!path.empty()) path.back().visible += shown;
  }
  return HPDF_OK;
}

HPDF_STATUS CountBeforeWriting(HPDF_Dict root) {
  try {
    return CountTree(root);
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(root->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
}

// Makes a dictionary an open outline. Null, with the failure marked, when memory is short, and for null.
UnfinishedDictionary AsOutline(UnfinishedDictionary dictionary) {
  if (dictionary == nullptr) return nullptr;
  HPDF_Number open = HPDF_Number_New(dictionary->mmgr, 1);
  if (open == nullptr) return nullptr;
  open->header.obj_id |= HPDF_OTYPE_HIDDEN;
  if (HPDF_Dict_Add(dictionary.get(), kOpen, open) != HPDF_OK) return nullptr;
  if (HPDF_Dict_AddName(dictionary.get(), "Type", "Outlines") != HPDF_OK) return nullptr;
  dictionary->header.obj_class |= HPDF_OSUBCLASS_OUTLINE;
  return dictionary;
}

// Makes an entry the last one below `parent`. The tree stays as it was when memory is short: what could fail comes
// before what is replaced.
bool Append(HPDF_Outline parent, HPDF_Outline entry) {
  HPDF_Outline before = EntryOf(parent, "Last");
  if (before != nullptr && HPDF_Dict_Add(entry, "Prev", before) != HPDF_OK) return false;
  if (HPDF_Dict_Add(entry, "Parent", parent) != HPDF_OK) return false;

  HPDF_Outline neighbour = before != nullptr ? before : parent;
  const char *const key = before != nullptr ? "Next" : "First";
  HPDF_Proxy last = HPDF_Proxy_New(parent->mmgr, entry);
  if (last == nullptr) return false;
  if (HPDF_Dict_Add(neighbour, key, entry) != HPDF_OK) {
    HPDF_FreeMem(parent->mmgr, last);
    return false;
  }
  if (HPDF_Dict_Add(parent, "Last", last) == HPDF_OK) return true;
  HPDF_Dict_RemoveElement(neighbour, key);
  return false;
}

}  // namespace

extern "C" {

/// The root of a document's outline, which no viewer shows. Null, with the failure marked, when memory is short.
HPDF_Outline HPDF_OutlineRoot_New(HPDF_MMgr memory, HPDF_Xref xref) {
  UnfinishedDictionary root = AsOutline(UnfinishedDictionary(HPDF_Dict_New(memory)));
  if (root == nullptr) return nullptr;
  root->before_write_fn = CountBeforeWriting;
  return EnteredIn(xref, std::move(root));
}

/// A new entry, the last one below `parent`. `encoder` turns `title` into Unicode. Null, with the failure marked, for a
/// title that is too long (HPDF_STRING_OUT_OF_RANGE) and when memory is short.
HPDF_Outline HPDF_Outline_New(HPDF_MMgr memory, HPDF_Outline parent, const char *title, HPDF_Encoder encoder,
                              HPDF_Xref xref) {
  HPDF_String text = HPDF_String_New(memory, title, encoder);
  if (text == nullptr) return nullptr;
  UnfinishedDictionary titled(HPDF_Dict_New(memory));
  if (titled == nullptr) {
    HPDF_String_Free(text);
    return nullptr;
  }
  if (HPDF_Dict_Add(titled.get(), "Title", text) != HPDF_OK) return nullptr;
  UnfinishedDictionary outline = AsOutline(std::move(titled));
  HPDF_Outline entry = outline != nullptr ? EnteredIn(xref, std::move(outline)) : nullptr;
  return entry != nullptr && Append(parent, entry) ? entry : nullptr;
}

HPDF_BOOL HPDF_Outline_Validate(HPDF_Outline entry) {
  return entry != nullptr && entry->header.obj_class == (HPDF_OSUBCLASS_OUTLINE | HPDF_OCLASS_DICT);
}

/// Sets where a click on the entry leads. HPDF_INVALID_DESTINATION for what is not a destination.
HPDF_STATUS HPDF_Outline_SetDestination(HPDF_Outline entry, HPDF_Destination destination) {
  if (!HPDF_Outline_Validate(entry)) return HPDF_INVALID_OUTLINE;
  if (!HPDF_Destination_Validate(destination)) return HPDF_RaiseError(entry->error, HPDF_INVALID_DESTINATION, 0);
  if (HPDF_Dict_Add(entry, "Dest", destination) != HPDF_OK) return HPDF_CheckError(entry->error);
  return HPDF_OK;
}

/// Whether viewers show the entries below this one at first: 1 until something else is set, and 0 for what isn't an
/// entry.
HPDF_BOOL HPDF_Outline_GetOpened(HPDF_Outline entry) {
  return HPDF_Outline_Validate(entry) ? static_cast<HPDF_BOOL>(NumberOf(entry, kOpen)->value) : HPDF_FALSE;
}

/// Sets it.
HPDF_STATUS HPDF_Outline_SetOpened(HPDF_Outline entry, HPDF_BOOL isOpen) {
  if (!HPDF_Outline_Validate(entry)) return HPDF_INVALID_OUTLINE;
  NumberOf(entry, kOpen)->value = static_cast<HPDF_INT32>(isOpen);
  return HPDF_OK;
}

}  // extern "C"
