// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "interface/values.h"

/// What the platform knows of character sets, one character at a time. The tables of code_page.cpp are filled from it
/// once for each set; it is not used for text itself.
namespace quillbar::host::platform {

/// One character set of the platform.
class Charset {
 public:
  /// Opens a character set; null when the platform doesn't know it.
  static std::unique_ptr<Charset> Open(TextEncoding encoding);
  virtual ~Charset() = default;

  /// The character of these one or two bytes; -1 when they are invalid or only the start of one.
  virtual std::int32_t Decode(std::string_view bytes) = 0;
  /// The one or two bytes of a character, the first in the higher byte; -1 when the set lacks it.
  virtual std::int32_t Encode(char16_t character) = 0;
};

}  // namespace quillbar::host::platform
