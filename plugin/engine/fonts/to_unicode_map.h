// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <span>
#include <string>

namespace quillbar::engine {

/// How many bytes a code has in text strings.
enum class CodeLength { kOneByte, kTwoBytes };

/// The map from codes back to text that viewers use for searching and copying, as a ToUnicode CMap (ISO 32000-1,
/// 9.10.3): `characters[code]` is what the code shows; entries of 0 are left out. Code points above U+FFFF are written
/// as surrogate pairs. Throws std::bad_alloc.
std::string ToUnicodeMap(std::span<const char32_t> characters, CodeLength length);

/// Makes that map the content of the stream object `map`, in place of what it holds. Throws std::bad_alloc.
HPDF_STATUS ReplaceToUnicodeMap(HPDF_Dict map, std::span<const char32_t> characters, CodeLength length);

}  // namespace quillbar::engine
