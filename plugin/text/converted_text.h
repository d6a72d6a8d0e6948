// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/owned.h"
#include "plugin/script/script_types.h"

namespace quillbar::text {

/// A script's text in the encoding that a page had when it was converted. A failing call of the library raises
/// `ErrorLog`, whose handler may set another font; what was converted is still counted in its own encoding.
class ConvertedText {
 public:
  /// `hostEncoding` is the host's code of the encoding.
  ConvertedText(String text, std::uint32_t hostEncoding) : bytes_(text, hostEncoding), hostEncoding_(hostEncoding) {}

  /// False for a nil text and when the host can't convert it.
  explicit operator bool() const { return static_cast<bool>(bytes_); }

  /// The text with a nul after it.
  const char *bytes() const { return bytes_.bytes(); }

  /// How many characters the first `byteCount` bytes are.
  Integer CharactersIn(HPDF_UINT byteCount) const;

 private:
  StringData bytes_;
  std::uint32_t hostEncoding_;
};

}  // namespace quillbar::text
