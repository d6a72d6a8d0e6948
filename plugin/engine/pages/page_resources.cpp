// SPDX-License-Identifier: MIT
#include "plugin/engine/pages/page_resources.h"

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
  }
  return dictionary;
}

}  // namespace

ResourceName NameOfResource(HPDF_Page page, const ResourceCategory &category, HPDF_Dict resource) {
  const HPDF_Dict dictionary = DictionaryOf(page, category);
  if (dictionary == nullptr) return {nullptr};
  if (const char *name = HPDF_Dict_GetKeyByObj(dictionary, resource)) return {name};
  char name[16] = {category.letter};
  std::to_chars(name + 1, std::end(name) - 1, dictionary->list->count + 1);
  if (HPDF_Dict_Add(dictionary, name, resource) != HPDF_OK) return {nullptr};
  return {HPDF_Dict_GetKeyByObj(dictionary, resource)};
}

}  // namespace quillbar::engine
