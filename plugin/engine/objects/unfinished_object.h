// SPDX-License-Identifier: MIT
/// Objects that are made whole before the document knows them.
#pragma once

#include <hpdf.h>

#include <memory>

namespace quillbar::engine {

struct FreeUnfinished {
  void operator()(HPDF_Dict dictionary) const { HPDF_Dict_Free(dictionary); }
  void operator()(HPDF_Array array) const { HPDF_Array_Free(array); }
};

/// A dictionary that is freed, with all that is in it, unless it is entered in the document.
using UnfinishedDictionary = std::unique_ptr<HPDF_Dict_Rec, FreeUnfinished>;
/// The same of an array.
using UnfinishedArray = std::unique_ptr<HPDF_Array_Rec, FreeUnfinished>;

/// Enters an object in the document, which owns it from then on. Null when memory is short; the object is freed.
template <typename T>
T *EnteredIn(HPDF_Xref xref, std::unique_ptr<T, FreeUnfinished> object) {
  T *entered = object.release();
  return HPDF_Xref_Add(xref, entered) == HPDF_OK ? entered : nullptr;
}

}  // namespace quillbar::engine
