// SPDX-License-Identifier: MIT
// Memory that runs out at every point of making an image, an outline or an annotation: the call fails, the
// document can still be freed.
#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>

#include "plugin/guard/library_call.h"
#include "tests/image/jpeg_maker.h"

namespace quillbar {
namespace {

/// Allocations that may still succeed; negative: all of them.
long allowed = -1;

void *Allocate(HPDF_UINT size) {
  if (allowed == 0) return nullptr;
  if (allowed > 0) --allowed;
  return std::malloc(size);
}

/// Runs the call with ever more allocations until it needs no more than it gets.
void FailAtEveryAllocation(const std::function<bool(HPDF_Doc, HPDF_Page)> &call) {
  for (long limit = 0;; ++limit) {
    ASSERT_LT(limit, 2000) << "the call never succeeds";
    allowed = -1;
    HPDF_Doc document = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, Allocate, std::free, 0, nullptr);
    ASSERT_NE(document, nullptr);
    HPDF_Page page = Call<HPDF_AddPage>(document);
    allowed = limit;
    const bool done = call(document, page);
    allowed = -1;
    HPDF_Free(document);
    if (done) return;
  }
}

TEST(AllocationFailure, JpegImage) {
  const std::string file = MakeJpeg({.components = 4});
  FailAtEveryAllocation([&](HPDF_Doc document, HPDF_Page) {
    return Call<HPDF_LoadJpegImageFromMem>(document, reinterpret_cast<const HPDF_BYTE *>(file.data()),
                                           static_cast<HPDF_UINT>(file.size())) != nullptr;
  });
}

TEST(AllocationFailure, DrawImage) {
  FailAtEveryAllocation([](HPDF_Doc document, HPDF_Page page) {
    const HPDF_BYTE pixel = 0;
    HPDF_Image image = Call<HPDF_LoadRawImageFromMem>(document, &pixel, 1U, 1U, HPDF_CS_DEVICE_GRAY, 8U);
    return image != nullptr && Call<HPDF_Page_DrawImage>(page, image, 0, 0, 1, 1) == HPDF_OK;
  });
}

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
