// SPDX-License-Identifier: MIT
// The input is an image file of any of the formats that rasters are loaded from.
#include <cstdint>
#include <string_view>

#include "companion/pixel_raster/image_file.h"
#include "fuzz/demand.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using namespace quillbar;
  const companion::DecodedImage decoded = companion::DecodeImageFile({data, size});
  const companion::RasterImage &image = decoded.image;
  if (decoded.ok()) {
    fuzz::Demand(image.width() > 0 && image.height() > 0, "a raster that was read has pixels");
    fuzz::Demand(image.bytes().size() == image.RowSize() * static_cast<std::size_t>(image.height()),
                 "a raster has as many bytes as its rows");
  } else {
    fuzz::Demand(image.bytes().empty(), "what was refused left no raster");
    // Some of libtiff's messages end in a colon themselves.
    fuzz::Demand(decoded.error.size() > std::string_view("JPEG: ").size(), "a refusal gives its cause");
  }
  return 0;
}
