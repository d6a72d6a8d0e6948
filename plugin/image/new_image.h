// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/image/image_data.h"
#include "plugin/script/wrapper.h"

namespace quillbar {

/// The `Image` that scripts get for a library image; Nil without one.
inline Image *NewImage(PDFDocument *document, HPDF_Image handle) {
  if (handle == nullptr) return nullptr;
  Image *image = NewOwnedByDocument<"QuillbarPDFWriter.Image", Image, ImageData>(document);
  if (image != nullptr) DataOf(image).imageHandle = handle;
  return image;
}

}  // namespace quillbar
