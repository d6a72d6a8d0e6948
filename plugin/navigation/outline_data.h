// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// The private data of an `Outline`. The order of the fields is fixed.
struct OutlineData {
  HPDF_Outline outlineHandle;  // null when the library refused the entry
  HPDF_Doc *libraryDocument;
  PDFDocument *document;  // locked while kept

  static ClassRecord definition;
};

inline OutlineData &DataOf(Outline *outline) { return *ClassData<OutlineData>(outline); }
inline HPDF_Outline HandleOf(Outline *outline) { return DataOf(outline).outlineHandle; }

}  // namespace quillbar
