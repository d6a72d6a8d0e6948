// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "plugin/script/script_types.h"

namespace quillbar {

/// What an encoding of `Font.FontEncodingEnum` is for the host and for the library.
struct EncodingEntry {
  const char *encoderName;     // the library's name of its encoder
  std::uint32_t hostEncoding;  // the host's code of the text encoding
  bool automatic;              // text may switch to another encoding or font
};

/// The entry for a script's choice; nothing for a number that the enumeration doesn't have.
std::optional<EncodingEntry> FindEncoding(FontEncoding encoding);

}  // namespace quillbar
