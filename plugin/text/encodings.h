// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "plugin/script/script_types.h"

namespace quillbar {

/// What an encoding of `Font.FontEncodingEnum` stands for on the two sides between which text travels.
struct EncodingEntry {
  const char *encoderName;     // the library's name of its encoder
  std::uint32_t hostEncoding;  // the host's code of the text encoding
  bool automatic;              // text may switch to another encoding or font
};

/// The entry for a script's choice; nothing for a number that is no member of the enumeration.
std::optional<EncodingEntry> FindEncoding(FontEncoding encoding);

}  // namespace quillbar
