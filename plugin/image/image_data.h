// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// The private data of an `Image`. The order of the fields is fixed.
struct ImageData {
  HPDF_Image imageHandle;
  HPDF_Doc *libraryDocument;
  PDFDocument *document;  // locked while kept

  static ClassRecord definition;
};

inline ImageData &DataOf(Image *image) { return *ClassData<ImageData>(image); }
inline HPDF_Image HandleOf(Image *image) { return DataOf(image).imageHandle; }

}  // namespace quillbar
