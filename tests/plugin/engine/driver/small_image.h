// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/engine/images/image.h"
#include "plugin/guard/library_call.h"

namespace quillbar {

/// An image of one grey pixel; null when memory is short.
inline HPDF_Image SmallImage(HPDF_Doc document) {
  const HPDF_Image image = Call<engine::NewImage>(
      document, {{"ColorSpace", "DeviceGray"}, {"Width", 1}, {"Height", 1}, {"BitsPerComponent", 8}});
  const HPDF_BYTE pixel = 0;
  return image != nullptr && Call<HPDF_Stream_Write>(image->stream, &pixel, 1U) == HPDF_OK ? image : nullptr;
}

}  // namespace quillbar
