// SPDX-License-Identifier: MIT
// The single-byte encodings that scripts can choose, each with a text and with every character it has beyond ASCII.
#pragma once

#include <cstdint>
#include <vector>

namespace quillbar::test {

/// Texts are UTF-8 in the order in which they are read.
struct EncodingText {
  std::int64_t encoding;  // a member of Font.FontEncodingEnum
  const char *name;
  const char *sentence;    // in a language that the encoding is for
  const char *characters;  // beyond ASCII, in the order of their codes; no control characters
};

/// All single-byte encodings.
const std::vector<EncodingText> &EncodingTexts();

}  // namespace quillbar::test
