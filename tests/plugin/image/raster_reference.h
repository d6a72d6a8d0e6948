// SPDX-License-Identifier: MIT
// What a raster's rows become, by the definition of its fields, one byte at a time; and rasters to try it on.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "interface/pixel_raster.h"

namespace quillbar::test {

/// A raster without gaps: colours in order, alpha behind them.
inline PixelRasterRecord TightRaster(std::int32_t width, std::int32_t height, std::int32_t channels, bool alpha,
                                     std::uint8_t bits, std::uint8_t *pixels) {
  const int size = bits / 8;
  PixelRasterRecord raster{};
  raster.width = width;
  raster.height = height;
  raster.firstRow = pixels;
  raster.channelCount = channels;
  raster.pixelStep = channels * size;
  raster.stride = width * raster.pixelStep;
  for (int color = 0; color < 3; ++color) raster.colorOffset[color] = static_cast<std::uint8_t>(color * size);
  raster.alphaOffset = static_cast<std::uint8_t>((channels - 1) * size);
  raster.fourthColorOffset = static_cast<std::uint8_t>(3 * size);
  raster.hasAlpha = alpha;
  raster.bitsPerComponent = bits;
  return raster;
}

/// The samples of an image and of its mask.
struct Converted {
  std::vector<std::uint8_t> image, mask;
};

/// All rows of a raster whose channel count goes with alpha.
inline Converted ConvertByDefinition(const PixelRasterRecord &raster) {
  Converted result;
  const int size = raster.bitsPerComponent / 8;
  std::vector<int> colors{raster.colorOffset[0]};
  if (raster.channelCount >= 3) colors = {raster.colorOffset[0], raster.colorOffset[1], raster.colorOffset[2]};
  if (raster.channelCount >= 3 && raster.format == 13) colors.push_back(raster.fourthColorOffset);
  for (int y = 0; y < raster.height; ++y) {
    for (int x = 0; x < raster.width; ++x) {
      const std::uint8_t *pixel =
          raster.firstRow + std::ptrdiff_t{raster.stride} * y + std::ptrdiff_t{raster.pixelStep} * x;
      for (const int offset : colors) {
        for (int byte = 0; byte < size; ++byte) result.image.push_back(pixel[offset + byte]);
      }
      if (raster.hasAlpha == 0) continue;
      for (int byte = 0; byte < size; ++byte) result.mask.push_back(pixel[raster.alphaOffset + byte]);
    }
  }
  return result;
}

/// A raster of random size, depth, channels, offsets, step and stride, with random bytes.
class RandomRaster {
 public:
  explicit RandomRaster(std::mt19937 &random) {
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    const auto bits = static_cast<std::uint8_t>(pick(0, 1) == 0 ? 8 : 16);
    const int size = bits / 8;
    const std::int32_t channels = pick(1, 4);
    const bool alpha = (channels == 2 || channels == 4) && pick(0, 1) == 1;
    record = TightRaster(pick(1, 70), pick(1, 9), channels, alpha, bits, nullptr);
    record.format = pick(0, 2) == 0 ? kPixelFormatCmyk : pick(0, 20);

    // A pixel of some components in some order, with room around them.
    const int slots = pick(5, 7);
    int order[7] = {0, 1, 2, 3, 4, 5, 6};
    if (pick(0, 2) != 0) std::shuffle(order, order + slots, random);
    const int lead = pick(0, 2) == 0 ? pick(0, 3) : 0;
    const auto offset = [&](int slot) { return static_cast<std::uint8_t>(lead + order[slot] * size); };
    for (int color = 0; color < 3; ++color) record.colorOffset[color] = offset(color);
    record.alphaOffset = offset(3);
    record.fourthColorOffset = offset(4);
    const int pixelSize = lead + slots * size;
    record.pixelStep = pixelSize + pick(0, 3);
    if (pick(0, 2) == 0) {  // the usual orders of four
      static constexpr std::uint8_t kOrders[4][4] = {{0, 1, 2, 3}, {1, 2, 3, 0}, {2, 1, 0, 3}, {3, 2, 1, 0}};
      const auto &usual = kOrders[pick(0, 3)];
      for (int color = 0; color < 3; ++color) {
        record.colorOffset[color] = static_cast<std::uint8_t>(usual[color] * size);
      }
      record.alphaOffset = static_cast<std::uint8_t>(usual[3] * size);
      record.fourthColorOffset = record.alphaOffset;
      record.pixelStep = 4 * size;
    }
    record.stride = record.width * std::max(record.pixelStep, pixelSize) + 16 + pick(0, 40);
    const bool mirrored = pick(0, 4) == 0, upsideDown = pick(0, 4) == 0;

    pixels_.resize(static_cast<std::size_t>(record.stride) * static_cast<std::size_t>(record.height));
    for (auto &byte : pixels_) byte = static_cast<std::uint8_t>(random());
    record.firstRow = pixels_.data();
    if (upsideDown) {
      record.firstRow += std::ptrdiff_t{record.stride} * (record.height - 1);
      record.stride = -record.stride;
    }
    if (mirrored) {
      record.firstRow += std::ptrdiff_t{record.pixelStep} * (record.width - 1);
      record.pixelStep = -record.pixelStep;
    }
  }
  RandomRaster(const RandomRaster &) = delete;
  RandomRaster &operator=(const RandomRaster &) = delete;

  PixelRasterRecord record{};

 private:
  std::vector<std::uint8_t> pixels_;
};

}  // namespace quillbar::test
