// SPDX-License-Identifier: MIT
// Outline trees of any depth and size, with their counts made in one walk.
//
// libharu counts the entries below each entry anew when it writes that entry, by recursion: the time grows
// with the square of the depth (8,000 levels take seconds, 60,000 minutes) and the stack with the depth. Here
// the root, which is written first because it was made first, counts the whole tree without recursion, and
// the entries write what they were given. Titles longer than a string may be are refused before their entry
// exists; libharu leaves it in the file.
#include <hpdf.h>
#include <hpdf_outline.h>
#include <hpdf_utils.h>

#include <new>
#include <vector>

extern "C" {

HPDF_Outline Libharu_HPDF_OutlineRoot_New(HPDF_MMgr memory, HPDF_Xref xref);
HPDF_Outline Libharu_HPDF_Outline_New(HPDF_MMgr memory, HPDF_Outline parent, const char *title, HPDF_Encoder encoder,
                                      HPDF_Xref xref);

}  // extern "C"

namespace {

struct Level {
  HPDF_Outline entry;
  HPDF_Outline nextChild;
  HPDF_INT visible;  // entries below that show when this one is open
};

// The entry "Count": how many entries show below when it is open; negative while it is closed, absent for
// none.
HPDF_STATUS StoreCount(const Level &level) {
  auto *number = static_cast<HPDF_Number>(HPDF_Dict_GetItem(level.entry, "Count", HPDF_OCLASS_NUMBER));
  if (level.visible == 0) return number ? HPDF_Dict_RemoveElement(level.entry, "Count") : HPDF_OK;
  const HPDF_INT count = HPDF_Outline_GetOpened(level.entry) ? level.visible : -level.visible;
  if (number == nullptr) return HPDF_Dict_AddNumber(level.entry, "Count", count);
  number->value = count;
  return HPDF_OK;
}

HPDF_STATUS CountTree(HPDF_Outline root) {
  std::vector<Level> path{{root, HPDF_Outline_GetFirst(root), 0}};
  while (!path.empty()) {
    Level &level = path.back();
    if (HPDF_Outline child = level.nextChild) {
      level.nextChild = HPDF_Outline_GetNext(child);
      ++level.visible;
      path.push_back({child, HPDF_Outline_GetFirst(child), 0});
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

HPDF_STATUS CountBeforeWrite(HPDF_Dict root) {
  try {
    return CountTree(root);
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(root->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
}

}  // namespace

extern "C" {

HPDF_Outline HPDF_OutlineRoot_New(HPDF_MMgr memory, HPDF_Xref xref) {
  HPDF_Outline root = Libharu_HPDF_OutlineRoot_New(memory, xref);
  if (root != nullptr) root->before_write_fn = CountBeforeWrite;
  return root;
}

HPDF_Outline HPDF_Outline_New(HPDF_MMgr memory, HPDF_Outline parent, const char *title, HPDF_Encoder encoder,
                              HPDF_Xref xref) {
  if (HPDF_StrLen(title, HPDF_LIMIT_MAX_STRING_LEN + 1) > HPDF_LIMIT_MAX_STRING_LEN) {
    HPDF_SetError(memory->error, HPDF_STRING_OUT_OF_RANGE, 0);
    return nullptr;
  }
  HPDF_Outline entry = Libharu_HPDF_Outline_New(memory, parent, title, encoder, xref);
  if (entry != nullptr) entry->before_write_fn = nullptr;
  return entry;
}

}  // extern "C"
