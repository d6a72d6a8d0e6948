// SPDX-License-Identifier: MIT
// Destinations: a page and how a viewer shows it (ISO 32000-1, 12.3.2.2). One shows the whole page until it is given a
// place and a magnification. A view that is refused leaves the one before.
#include <hpdf.h>
#include <hpdf_destination.h>
#include <hpdf_pages.h>

#include <utility>

#include "plugin/engine/objects/unfinished_object.h"
#include "plugin/engine/objects/writable_number.h"

namespace {

using quillbar::engine::EnteredIn;
using quillbar::engine::IsWritable;
using quillbar::engine::UnfinishedArray;

constexpr HPDF_REAL kLargestMagnification = 32;
constexpr double kSmallestMagnification = 0.08;

// A page and the name of a view, which its numbers follow. Null, with the failure marked, when memory is short.
UnfinishedArray NewView(HPDF_MMgr memory, HPDF_Page page, const char *name) {
  UnfinishedArray view(HPDF_Array_New(memory));
  if (view == nullptr || HPDF_Array_Add(view.get(), page) != HPDF_OK) return nullptr;
  return HPDF_Array_AddName(view.get(), name) == HPDF_OK ? std::move(view) : nullptr;
}

HPDF_Page PageOf(HPDF_Destination destination) {
  return static_cast<HPDF_Page>(HPDF_Array_GetItem(destination, 0, HPDF_OCLASS_DICT));
}

}  // namespace

extern "C" {

/// A new destination that shows all of `page`. Null, with the failure marked, for what is not a page
/// (HPDF_INVALID_PAGE) and when memory is short.
HPDF_Destination HPDF_Destination_New(HPDF_MMgr memory, HPDF_Page page, HPDF_Xref xref) {
  if (!HPDF_Page_Validate(page)) {
    HPDF_SetError(memory->error, HPDF_INVALID_PAGE, 0);
    return nullptr;
  }
  UnfinishedArray destination = NewView(memory, page, "Fit");
  if (destination == nullptr) return nullptr;
  destination->header.obj_class |= HPDF_OSUBCLASS_DESTINATION;
  return EnteredIn(xref, std::move(destination));
}

/// Whether this is a destination; one whose page isn't there any more is marked as a failure too.
HPDF_BOOL HPDF_Destination_Validate(HPDF_Destination destination) {
  if (destination == nullptr || destination->header.obj_class != (HPDF_OCLASS_ARRAY | HPDF_OSUBCLASS_DESTINATION) ||
      destination->list->count < 2) {
    return HPDF_FALSE;
  }
  if (HPDF_Page_Validate(PageOf(destination))) return HPDF_TRUE;
  HPDF_SetError(destination->error, HPDF_INVALID_PAGE, 0);
  return HPDF_FALSE;
}

/// Shows the page with `left` and `top`, in points, at the window's upper left corner, magnified by `zoom`, from 0.08
/// to 32. Coordinates beyond what can be written are HPDF_REAL_OUT_OF_RANGE, negative ones and other magnifications
/// HPDF_INVALID_PARAMETER.
HPDF_STATUS HPDF_Destination_SetXYZ(HPDF_Destination destination, HPDF_REAL left, HPDF_REAL top, HPDF_REAL zoom) {
  if (destination != nullptr && !(IsWritable(left) && IsWritable(top))) {
    return HPDF_RaiseError(destination->error, HPDF_REAL_OUT_OF_RANGE, 0);
  }
  if (!HPDF_Destination_Validate(destination)) return HPDF_INVALID_DESTINATION;
  if (left < 0 || top < 0 || zoom < kSmallestMagnification || zoom > kLargestMagnification) {
    return HPDF_RaiseError(destination->error, HPDF_INVALID_PARAMETER, 0);
  }
  UnfinishedArray view = NewView(destination->mmgr, PageOf(destination), "XYZ");
  if (view == nullptr) return HPDF_CheckError(destination->error);
  for (const HPDF_REAL number : {left, top, zoom}) {
    if (HPDF_Array_AddReal(view.get(), number) != HPDF_OK) return HPDF_CheckError(destination->error);
  }
  std::swap(destination->list, view->list);
  return HPDF_OK;
}

}  // extern "C"
