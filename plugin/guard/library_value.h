// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

#include "plugin/engine/objects/enumeration_numbers.h"

namespace quillbar {

/// A script's number as the library's type, which has 32 bits. What they hold goes through unchanged, signed
/// or not, so that the library itself refuses what it doesn't know, and tells that number. A wider one
/// becomes the largest, which no enumeration has, instead of losing bits and turning into a valid value.
template <class LibraryType, class ScriptType>
QUILLBAR_ANY_ENUMERATION_NUMBER LibraryType ToLibrary(ScriptType value) {
  static_assert(sizeof(LibraryType) == sizeof(std::uint32_t));
  const auto number = static_cast<std::int64_t>(value);
  const bool fits =
      number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::uint32_t>::max();
  return static_cast<LibraryType>(fits ? static_cast<std::uint32_t>(number)
                                       : std::numeric_limits<std::uint32_t>::max());
}

}  // namespace quillbar
