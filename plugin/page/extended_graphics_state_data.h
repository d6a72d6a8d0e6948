// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// The private data of an `ExtendedGraphicsState`. The order of the fields is fixed.
struct ExtendedGraphicsStateData {
  HPDF_ExtGState stateHandle;
  HPDF_Doc *libraryDocument;
  PDFDocument *document;  // locked while kept

  static ClassRecord definition;
};

inline ExtendedGraphicsStateData &DataOf(ExtendedGraphicsState *state) {
  return *ClassData<ExtendedGraphicsStateData>(state);
}

inline HPDF_ExtGState HandleOf(ExtendedGraphicsState *state) { return DataOf(state).stateHandle; }

}  // namespace quillbar
