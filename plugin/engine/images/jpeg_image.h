// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstdint>
#include <span>

namespace quillbar::engine {

/// Takes a whole JPEG file of fewer than 2^31 bytes into the document as it is. The document owns the image. Null when
/// PDF can't hold the file (HPDF_INVALID_JPEG_DATA, HPDF_UNSUPPORTED_JPEG_FORMAT; the document is as before then) and
/// when memory is short.
HPDF_Image LoadJpegImage(HPDF_Doc document, std::span<const std::uint8_t> file);

}  // namespace quillbar::engine
