// SPDX-License-Identifier: MIT
// The input is a JPEG file, which a document embeds unchanged.
#include <cstdint>

#include "fuzz/fuzzed_document.h"
#include "plugin/engine/images/image.h"
#include "plugin/engine/images/jpeg_image.h"
#include "plugin/engine/pages/page_tree.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using namespace quillbar;
  fuzz::FuzzedDocument document;
  HPDF_Image image = Call<engine::LoadJpegImage>(document.get(), std::span(data, size));
  if (image == nullptr) return 0;
  HPDF_Page page = Call<engine::AddPage>(document.get());
  Call<HPDF_Page_DrawImage>(page, image, 10.0F, 10.0F, static_cast<HPDF_REAL>(Call<engine::ImageWidth>(image)),
                            static_cast<HPDF_REAL>(Call<engine::ImageHeight>(image)));
  document.Save();
  return 0;
}
