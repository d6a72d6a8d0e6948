#include "plugin/document/discard_object.h"

#include <hpdf_utils.h>

#include "plugin/document/library_call.h"

namespace quillbar {

void DiscardObject(HPDF_Doc document, HPDF_Dict dictionary) {
  const HPDF_List entries = document->xref->entries;
  if (entries->count == 0) return;
  auto *entry = static_cast<HPDF_XrefEntry>(entries->obj[entries->count - 1]);
  if (entry->obj != dictionary) return;
  HPDF_List_Remove(entries, entry);
  HPDF_FreeMem(document->mmgr, entry);
  HPDF_Dict_Free(dictionary);
}

}  // namespace quillbar
