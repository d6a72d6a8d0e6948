// SPDX-License-Identifier: MIT
#include "companion/pixel_raster/raster_image.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace quillbar::companion {

std::optional<RasterImage> RasterImage::Create(std::int64_t width, std::int64_t height, PixelFormat format) {
  if (format.bits != 8 && format.bits != 16) return std::nullopt;
  const auto limit = static_cast<std::int64_t>(MaxSize());
  if (width <= 0 || height <= 0 || width > limit || height > limit) return std::nullopt;
  if (width > limit / height || width * height > limit / static_cast<std::int64_t>(format.PixelSize())) {
    return std::nullopt;
  }
  RasterImage image;
  image.width_ = static_cast<int>(width);
  image.height_ = static_cast<int>(height);
  image.format_ = format;
  try {
    image.bytes_.resize(image.RowSize() * static_cast<std::size_t>(height));
  } catch (const std::bad_alloc &) {
    return std::nullopt;
  }
  return image;
}

bool RasterImage::Has(std::int64_t x, std::int64_t y, std::int64_t component) const {
  return x >= 0 && x < width_ && y >= 0 && y < height_ && component >= 0 && component < format_.ComponentCount();
}

std::uint8_t *RasterImage::ComponentAddress(int x, int y, int component) {
  return Row(y) + static_cast<std::size_t>(x) * format_.PixelSize() +
         static_cast<std::size_t>(component) * format_.ComponentSize();
}

unsigned RasterImage::Component(int x, int y, int component) const {
  const std::uint8_t *address = const_cast<RasterImage *>(this)->ComponentAddress(x, y, component);
  return format_.bits == 8 ? *address : static_cast<unsigned>(address[0] << 8 | address[1]);
}

void RasterImage::SetComponent(int x, int y, int component, unsigned value) {
  std::uint8_t *address = ComponentAddress(x, y, component);
  if (format_.bits == 8) {
    *address = static_cast<std::uint8_t>(value);
  } else {
    StoreComponent16(address, value);
  }
}

RasterImage Oriented(RasterImage image, int orientation) {
  if (orientation < 2 || orientation > 8) return image;
  const bool swapsSides = orientation >= 5;
  const int width = image.width(), height = image.height();
  auto turned = RasterImage::Create(swapsSides ? height : width, swapsSides ? width : height, image.format());
  if (!turned) return image;
  const std::size_t pixelSize = image.format().PixelSize();
  for (int y = 0; y < turned->height(); ++y) {
    std::uint8_t *to = turned->Row(y);
    for (int x = 0; x < turned->width(); ++x, to += pixelSize) {
      // Where the pixel that viewers show at (x, y) is stored.
      int column = swapsSides ? y : x, row = swapsSides ? x : y;
      if (orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8) column = width - 1 - column;
      if (orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7) row = height - 1 - row;
      std::memcpy(to, image.Row(row) + static_cast<std::size_t>(column) * pixelSize, pixelSize);
    }
  }
  return std::move(*turned);
}

void DivideByAlpha(RasterImage &image) {
  if (!image.format().hasAlpha) return;
  const int colors = image.format().ColorCount();
  const unsigned full = image.format().bits == 8 ? 0xFF : 0xFFFF;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const unsigned alpha = image.Component(x, y, colors);
      if (alpha == 0 || alpha == full) continue;
      for (int color = 0; color < colors; ++color) {
        const std::uint64_t value = std::uint64_t{image.Component(x, y, color)} * full + alpha / 2;
        image.SetComponent(x, y, color, static_cast<unsigned>(std::min<std::uint64_t>(value / alpha, full)));
      }
    }
  }
}

}  // namespace quillbar::companion
