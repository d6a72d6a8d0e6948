// SPDX-License-Identifier: MIT
// The input is a JPEG file that a document takes in as it is.
#include <cstdint>

#include "fuzz/fuzzed_document.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using namespace quillbar;
  fuzz::FuzzedDocument document;
  HPDF_Image image = Call<HPDF_LoadJpegImageFromMem>(document.get(), data, static_cast<HPDF_UINT>(size));
  if (image == nullptr) return 0;
  HPDF_Page page = Call<HPDF_AddPage>(document.get());
  Call<HPDF_Page_DrawImage>(page, image, 10.0F, 10.0F, static_cast<HPDF_REAL>(Call<HPDF_Image_GetWidth>(image)),
                            static_cast<HPDF_REAL>(Call<HPDF_Image_GetHeight>(image)));
  Call<HPDF_Image_GetBitsPerComponent>(image);
  Call<HPDF_Image_GetColorSpace>(image);
  document.Save();
  return 0;
}
