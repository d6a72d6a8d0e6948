// SPDX-License-Identifier: MIT
#include "plugin/engine/pages/page_resources.h"

#include <hpdf_objects.h>

#include <charconv>
#include <iterator>

#include "plugin/engine/objects/new_entry.h"

namespace quillbar::engine {

namespace {

// The page's dictionary of the category; null when memory ran out.
HPDF_Dict DictionaryOf(HPDF_Page page, const ResourceCategory &category) {
  HPDF_Dict &dictionary = AttributesOf(page).*category.dictionary;
  if (dictionary == nullptr) {
    auto *resources = static_cast<HPDF_Dict>(HPDF_Dict_GetItem(page, "Resources", HPDF_OCLASS_DICT));
    if (resources != nullptr) dictionary = NewDictionaryIn(resources, category.key);
    // Most pages have one of a kind.
    if (dictionary != nullptr) ExpectEntries(dictionary, 1);
  }
  return dictionary;
}

HPDF_DictElement_Rec &ElementAt(HPDF_Dict dictionary, HPDF_UINT index) {
  return *static_cast<HPDF_DictElement>(dictionary->list->obj[index]);
}

// The key of a resource; null if it isn't listed. A dictionary here has indirect objects only.
const char *KeyOf(HPDF_Dict dictionary, const HPDF_Dict_Rec *resource) {
  for (HPDF_UINT i = 0; i < dictionary->list->count; ++i) {
    const HPDF_DictElement_Rec &element = ElementAt(dictionary, i);
    if (static_cast<HPDF_Proxy>(element.value)->obj == resource) return element.key;
  }
  return nullptr;
}

// Appends an indirect object and gives its key; null for a failure. Keys are numbered, so the new one is none of the
// others.
const char *Append(HPDF_Dict dictionary, const char *key, HPDF_Dict resource) {
  const HPDF_Proxy proxy = HPDF_Proxy_New(dictionary->mmgr, resource);
  if (proxy == nullptr) return nullptr;
  proxy->header.obj_id |= HPDF_OTYPE_DIRECT;
  const char *const ownKey = AppendEntry(dictionary, key, proxy);
  if (ownKey == nullptr) HPDF_Obj_Free(dictionary->mmgr, proxy);
  return ownKey;
}

}  // namespace

ResourceName NameOfResource(HPDF_Page page, const ResourceCategory &category, HPDF_Dict resource) {
  const HPDF_Dict dictionary = DictionaryOf(page, category);
  if (dictionary == nullptr) return {nullptr};
  if (const char *name = KeyOf(dictionary, resource)) return {name};
  char name[16] = {category.letter};
  std::to_chars(name + 1, std::end(name) - 1, dictionary->list->count + 1);
  return {Append(dictionary, name, resource)};
}

}  // namespace quillbar::engine
