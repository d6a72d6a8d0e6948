// SPDX-License-Identifier: MIT
/// Arrays, dictionaries and other direct objects made as an entry of a dictionary.
#pragma once

#include <hpdf.h>
#include <hpdf_objects.h>

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

/// Room for `count` entries at first in `dictionary`, which must have none yet and takes more all the same.
inline void ExpectEntries(HPDF_Dict dictionary, HPDF_UINT count) { dictionary->list->items_per_block = count; }

/// Enters `value`, a direct object, under a key that `dictionary` doesn't have yet: unlike HPDF_Dict_Add this doesn't
/// look for it. Returns the dictionary's copy of the key; null with the reason in the error record, and then `value` is
/// still the caller's.
const char *AppendEntry(HPDF_Dict dictionary, const char *key, void *value);

}  // namespace quillbar::engine
