// SPDX-License-Identifier: MIT
// Memory that runs out at every point of making an outline or an annotation: the call fails, the document can still be
// freed.
#include "tests/plugin/engine/driver/failing_allocation.h"

namespace quillbar {
namespace {

TEST(AllocationFailure, Outline) {
  FailAtEveryAllocation([](HPDF_Doc document, HPDF_Page) {
    return Call<HPDF_CreateOutline>(document, nullptr, "title", nullptr) != nullptr;
  });
}

TEST(AllocationFailure, Annotation) {
  FailAtEveryAllocation([](HPDF_Doc, HPDF_Page page) {
    return Call<HPDF_Page_CreateTextAnnot>(page, HPDF_Rect{0, 0, 1, 1}, "note", nullptr) != nullptr;
  });
}

}  // namespace
}  // namespace quillbar
