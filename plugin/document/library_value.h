#pragma once

#include <limits>
#include <type_traits>

#include "interface/values.h"

namespace quillbar {

/// A script's number for a library enumeration, unchanged, so that the library itself refuses what it doesn't
/// know. A number too wide for the library's type becomes its largest one, which no enumeration has, instead
/// of losing bits and turning into a valid value.
template <class LibraryEnumeration, class ScriptEnumeration>
LibraryEnumeration ToLibrary(ScriptEnumeration value) {
  constexpr Integer kLargest = std::numeric_limits<std::int32_t>::max();
  const auto number = static_cast<Integer>(value);
  return static_cast<LibraryEnumeration>(number < 0 || number > kLargest ? kLargest : number);
}

}  // namespace quillbar
