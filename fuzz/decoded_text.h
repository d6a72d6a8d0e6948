// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "plugin/engine/fonts/encodings/utf8_text.h"

namespace quillbar::fuzz {

/// The characters of UTF-8 text, as the engine reads them.
inline std::u32string Decoded(std::span<const std::uint8_t> bytes) {
  std::u32string text;
  while (!bytes.empty()) {
    const engine::Utf8Character next = engine::DecodeUtf8(bytes);
    text += next.character;
    bytes = bytes.subspan(next.length);
  }
  return text;
}

}  // namespace quillbar::fuzz
