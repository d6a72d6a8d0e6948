// SPDX-License-Identifier: MIT
#include "plugin/engine/document/discard_stream.h"

#include <hpdf_utils.h>

namespace quillbar::engine {

namespace {

void DiscardLastObject(HPDF_Doc document) {
  const HPDF_List entries = document->xref->entries;
  auto *entry = static_cast<HPDF_XrefEntry>(HPDF_List_RemoveByIndex(entries, entries->count - 1));
  HPDF_Obj_ForceFree(document->mmgr, entry->obj);
  HPDF_FreeMem(document->mmgr, entry);
}

}  // namespace

void DiscardStream(HPDF_Doc document, HPDF_Dict stream) {
  const HPDF_List entries = document->xref->entries;
  const auto *entry = static_cast<HPDF_XrefEntry>(entries->obj[entries->count - 2]);
  if (entry->obj != stream) return;
  DiscardLastObject(document);
  DiscardLastObject(document);
}

}  // namespace quillbar::engine
