// SPDX-License-Identifier: MIT
/// Arrays and dictionaries made as an entry of a dictionary.
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// A new, empty array as the entry `key` of `owner`, which owns it. Null when memory is short: the library frees what
/// it couldn't add, so there is nothing to go on with.
inline HPDF_Array NewArrayIn(HPDF_Dict owner, const char *key) {
  HPDF_Array array = HPDF_Array_New(owner->mmgr);
  return array != nullptr && HPDF_Dict_Add(owner, key, array) == HPDF_OK ? array : nullptr;
}

/// A new, empty dictionary as the entry `key` of `owner`, which owns it. Null when memory is short.
inline HPDF_Dict NewDictionaryIn(HPDF_Dict owner, const char *key) {
  HPDF_Dict dictionary = HPDF_Dict_New(owner->mmgr);
  return dictionary != nullptr && HPDF_Dict_Add(owner, key, dictionary) == HPDF_OK ? dictionary : nullptr;
}

}  // namespace quillbar::engine
