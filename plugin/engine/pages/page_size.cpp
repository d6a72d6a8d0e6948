// SPDX-License-Identifier: MIT
// The size of a page: its entry MediaBox, whose lower left corner is (0, 0) (ISO 32000-1, 7.7.3.3).
#include <iterator>

#include "plugin/engine/objects/compact_objects.h"
#include "plugin/engine/objects/enumeration_numbers.h"
#include "plugin/engine/pages/page_object.h"

using namespace quillbar::engine;

namespace {

// Which number of the MediaBox is which.
constexpr auto kWidth = &HPDF_Box::right;
constexpr auto kHeight = &HPDF_Box::top;

struct Size {
  HPDF_REAL width, height;
};

// In points, upright, in the order of HPDF_PageSizes.
constexpr Size kSizes[] = {
    {612, 792},            // Letter
    {612, 1008},           // Legal
    {841.89F, 1190.551F},  // A3
    {595.276F, 841.89F},   // A4
    {419.528F, 595.276F},  // A5
    {708.661F, 1000.63F},  // B4
    {498.898F, 708.661F},  // B5
    {522, 756},            // Executive
    {288, 432},            // 4 by 6 inches
    {288, 576},            // 4 by 8 inches
    {360, 504},            // 5 by 7 inches
    {297, 684},            // envelope no. 10
};
static_assert(std::size(kSizes) == HPDF_PAGE_SIZE_EOF);

// The page's MediaBox; null with the reason in the error record, if the page lacks it.
BoxObject *BoxOf(HPDF_Page page) {
  auto *box = static_cast<BoxObject *>(HPDF_Dict_GetItem(page, "MediaBox", kBoxClass));
  if (box == nullptr) HPDF_SetError(page->error, HPDF_PAGE_CANNOT_FIND_OBJECT, 0);
  return box;
}

HPDF_REAL Get(HPDF_Page page, HPDF_REAL HPDF_Box::*number) {
  if (!IsPage(page)) return 0;
  const BoxObject *box = BoxOf(page);
  if (box != nullptr) return box->box.*number;
  HPDF_CheckError(page->error);
  return 0;
}

HPDF_STATUS Set(HPDF_Page page, HPDF_REAL HPDF_Box::*number, HPDF_REAL value) {
  if (!IsPage(page)) return HPDF_INVALID_PAGE;
  if (value < HPDF_MIN_PAGE_SIZE || value > HPDF_MAX_PAGE_SIZE)
    return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_SIZE, 0);
  BoxObject *box = BoxOf(page);
  if (box == nullptr) return HPDF_CheckError(page->error);
  box->box.*number = value;
  return HPDF_OK;
}

}  // namespace

extern "C" {

HPDF_REAL HPDF_Page_GetWidth(HPDF_Page page) { return Get(page, kWidth); }

HPDF_REAL HPDF_Page_GetHeight(HPDF_Page page) { return Get(page, kHeight); }

HPDF_STATUS HPDF_Page_SetWidth(HPDF_Page page, HPDF_REAL value) { return Set(page, kWidth, value); }

HPDF_STATUS HPDF_Page_SetHeight(HPDF_Page page, HPDF_REAL value) { return Set(page, kHeight, value); }

QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_Page_SetSize(HPDF_Page page, HPDF_PageSizes size,
                                                              HPDF_PageDirection direction) {
  if (!IsPage(page)) return HPDF_INVALID_PAGE;
  if (static_cast<HPDF_UINT>(size) >= HPDF_PAGE_SIZE_EOF) {
    return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_SIZE, static_cast<HPDF_STATUS>(size));
  }
  if (direction != HPDF_PAGE_PORTRAIT && direction != HPDF_PAGE_LANDSCAPE) {
    return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_DIRECTION, static_cast<HPDF_STATUS>(direction));
  }
  const Size upright = kSizes[static_cast<HPDF_UINT>(size)];
  const bool isTurned = direction == HPDF_PAGE_LANDSCAPE;
  const HPDF_STATUS status = Set(page, kHeight, isTurned ? upright.width : upright.height);
  return status == HPDF_OK ? Set(page, kWidth, isTurned ? upright.height : upright.width) : status;
}

}  // extern "C"
