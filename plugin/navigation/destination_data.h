// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// The private data of a `Destination`. The order of the fields is fixed.
struct DestinationData {
  HPDF_Destination destinationHandle;
  HPDF_Doc *libraryDocument;
  Page *page;  // locked while kept

  static ClassRecord definition;
};

inline DestinationData &DataOf(Destination *destination) { return *ClassData<DestinationData>(destination); }
inline HPDF_Destination HandleOf(Destination *destination) { return DataOf(destination).destinationHandle; }

}  // namespace quillbar
