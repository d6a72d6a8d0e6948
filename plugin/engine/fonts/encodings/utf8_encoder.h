// SPDX-License-Identifier: MIT
// The library's "UTF-8" encoder (utf8_encoder.cpp).
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

// Whether `encoder` is the one that HPDF_UseUTFEncodings registers.
bool IsUtf8Encoder(HPDF_Encoder encoder);

}  // namespace quillbar::engine
