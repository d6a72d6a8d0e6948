// SPDX-License-Identifier: MIT
// Memory that runs out at every point of making or drawing an image: the call fails, the document can still be freed.
#include "plugin/engine/images/jpeg_image.h"
#include "tests/plugin/engine/driver/failing_allocation.h"
#include "tests/plugin/engine/driver/small_image.h"
#include "tests/support/jpeg_maker.h"

namespace quillbar {
namespace {

TEST(AllocationFailure, JpegImage) {
  const std::string file = MakeJpeg({.components = 4});
  FailAtEveryAllocation([&](HPDF_Doc document, HPDF_Page) {
    return Call<engine::LoadJpegImage>(
               document, std::span(reinterpret_cast<const std::uint8_t *>(file.data()), file.size())) != nullptr;
  });
}

TEST(AllocationFailure, DrawImage) {
  FailAtEveryAllocation([](HPDF_Doc document, HPDF_Page page) {
    HPDF_Image image = SmallImage(document);
    return image != nullptr && Call<HPDF_Page_DrawImage>(page, image, 0, 0, 1, 1) == HPDF_OK;
  });
}

}  // namespace
}  // namespace quillbar
