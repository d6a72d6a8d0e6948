// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/values/dictionary.h"
#include "host/language/values/json.h"

namespace quillbar::language {

/// What an object of the class JSONItem holds: the members of an object, or the elements of an array.
struct JsonItemData {
  bool isArray = false;
  DictionaryEntries members{true};
  std::vector<host::Value> elements;
  json::Style style;
};

/// The data of a JSONItem; null for every other value.
JsonItemData *JsonItemOf(const host::Value &value);

}  // namespace quillbar::language
