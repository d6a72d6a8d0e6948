// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "plugin/engine/fonts/big_endian.h"

namespace quillbar::engine {

/// The portions of a Type 1 font program, as PDF embeds them one after the other (ISO 32000-1, 9.9).
struct Type1Program {
  std::vector<std::uint8_t> clear;      // up to `eexec` and the white space after it
  std::vector<std::uint8_t> encrypted;  // binary
  std::vector<std::uint8_t> trailer;    // 512 zeros and `cleartomark`; may be missing

  /// Takes a file with segment headers (PFB) or without (PFA, with a hexadecimal or binary encrypted portion) apart;
  /// nothing if it is neither. Throws std::bad_alloc only.
  static std::optional<Type1Program> Read(Bytes file);
};

}  // namespace quillbar::engine
