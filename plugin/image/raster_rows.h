// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "interface/pixel_raster.h"

/// Turns the rows of a `PixelRaster` into the sample rows of a PDF image and of its soft mask.
namespace quillbar {

/// What a raster's rows become. Sizes are in bytes.
struct RasterLayout {
  const std::uint8_t *firstRow = nullptr;
  std::ptrdiff_t stride = 0;
  std::ptrdiff_t pixelStep = 0;
  std::size_t width = 0;       // pixels
  std::size_t height = 0;      // pixels
  std::size_t colorCount = 1;  // components of the device colour space: 1, 3 or 4
  std::size_t componentSize = 1;
  std::ptrdiff_t colorOffset[4] = {};
  std::ptrdiff_t alphaOffset = 0;
  bool hasMask = false;
  /// False for a channel count of 1, 3 or more than 4.
  bool alphaGoesWithChannels = false;

  /// Whether the image, and the mask if there is one, get samples: not where alpha does not go with the
  /// channel count.
  bool WritesSamples() const { return !hasMask || alphaGoesWithChannels; }
  std::size_t ImageRowSize() const { return width * colorCount * componentSize; }
  std::size_t MaskRowSize() const { return width * componentSize; }

  /// The row as the raster stores it; row 0 is the top one.
  const std::uint8_t *Row(std::size_t row) const { return firstRow + static_cast<std::ptrdiff_t>(row) * stride; }

  /// True when a stored row already is an image row, byte for byte, and no mask is split off.
  bool RowsAreImageRows() const;
};

/// Reads a raster's data block. Nothing when no image can be made of it: a depth other than 8 or 16 bits, no
/// rows or pixels, a null row address, pixels beyond the address space, or samples that exceed what one PDF
/// stream of the library holds (2³¹ − 1 bytes). Strides and pixel steps may have any value and either sign:
/// nothing is written, so rows may be turned, overlap, or be the same one.
std::optional<RasterLayout> ReadRasterLayout(const PixelRasterRecord &raster);

/// Converts one stored row. `image` has `ImageRowSize()` bytes; `mask` has `MaskRowSize()` bytes, or none
/// when the layout has no mask. Neither may overlap the stored row.
void ConvertRow(const RasterLayout &layout, const std::uint8_t *row, std::span<std::uint8_t> image,
                std::span<std::uint8_t> mask);

}  // namespace quillbar
