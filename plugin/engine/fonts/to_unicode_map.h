// SPDX-License-Identifier: MIT
// The map from codes back to text that viewers use for searching and copying.
#pragma once

#include <span>
#include <string>

namespace quillbar::engine {

// How many bytes a code has in text strings.
enum class CodeLength { kOneByte, kTwoBytes };

// A ToUnicode CMap (ISO 32000-1, 9.10.3): `characters[code]` is what the code shows; entries of 0 are left
// out. Code points above U+FFFF are written as surrogate pairs.
std::string ToUnicodeMap(std::span<const char32_t> characters, CodeLength length);

}  // namespace quillbar::engine
