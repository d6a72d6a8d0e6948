// SPDX-License-Identifier: MIT
#include "plugin/engine/objects/new_entry.h"

#include <hpdf_conf.h>
#include <hpdf_utils.h>

#include <cstddef>
#include <cstring>
#include <new>

namespace quillbar::engine {

const char *AppendEntry(HPDF_Dict dictionary, const char *key, void *value) {
  if (dictionary->list->count >= HPDF_LIMIT_MAX_DICT_ELEMENT) {
    HPDF_SetError(dictionary->error, HPDF_DICT_COUNT_ERR, 0);
    return nullptr;
  }
  // The key comes after its element, in one block, as in all dictionaries here.
  const std::size_t length = std::strlen(key) + 1;
  void *const block = HPDF_GetMem(dictionary->mmgr, static_cast<HPDF_UINT>(sizeof(HPDF_DictElement_Rec) + length));
  if (block == nullptr) return nullptr;
  char *const text = static_cast<char *>(block) + sizeof(HPDF_DictElement_Rec);
  std::memcpy(text, key, length);
  if (HPDF_List_Add(dictionary->list, new (block) HPDF_DictElement_Rec{text, value}) == HPDF_OK) return text;
  HPDF_FreeMem(dictionary->mmgr, block);
  return nullptr;
}

}  // namespace quillbar::engine
