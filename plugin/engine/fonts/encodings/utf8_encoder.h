// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Whether `encoder` is the one of the name "UTF-8", which HPDF_UseUTFEncodings registers.
bool IsUtf8Encoder(HPDF_Encoder encoder);

}  // namespace quillbar::engine
