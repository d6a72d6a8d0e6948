// SPDX-License-Identifier: MIT
// Memory that runs out at every point of making or drawing an image: the call fails, the document can still be freed.
#include "tests/plugin/engine/driver/failing_allocation.h"
#include "tests/support/jpeg_maker.h"

namespace quillbar {
namespace {

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

}  // namespace
}  // namespace quillbar
