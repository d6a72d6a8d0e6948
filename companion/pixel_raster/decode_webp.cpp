// SPDX-License-Identifier: MIT
#include <webp/decode.h>

#include "companion/pixel_raster/image_file.h"

namespace quillbar::companion {

DecodedImage DecodeWebp(std::span<const std::uint8_t> file) {
  WebPBitstreamFeatures features;
  if (WebPGetFeatures(file.data(), file.size(), &features) != VP8_STATUS_OK) {
    return DecodedImage::Failure("WebP: the header is damaged");
  }
  if (features.has_animation != 0) return DecodedImage::Failure("WebP: animations are not read");
  const PixelFormat format{ColorModel::kRgb, features.has_alpha != 0, 8};
  auto image = RasterImage::Create(features.width, features.height, format);
  if (!image) return DecodedImage::Failure("WebP: the picture is too large");
  const auto bytes = image->bytes();
  const auto stride = static_cast<int>(image->RowSize());
  const std::uint8_t *end = format.hasAlpha
                                ? WebPDecodeRGBAInto(file.data(), file.size(), bytes.data(), bytes.size(), stride)
                                : WebPDecodeRGBInto(file.data(), file.size(), bytes.data(), bytes.size(), stride);
  if (end == nullptr) return DecodedImage::Failure("WebP: the picture is damaged or cut off");
  return {std::move(*image), {}};
}

}  // namespace quillbar::companion
