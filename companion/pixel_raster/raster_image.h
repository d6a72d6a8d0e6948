// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/fuzzed.h"

/// Pixels in memory, as a `PixelRaster` holds them.
namespace quillbar::companion {

enum class ColorModel { kGrey, kRgb, kCmyk };

/// The format of a raster's pixels.
struct PixelFormat {
  ColorModel model = ColorModel::kRgb;
  bool hasAlpha = false;
  int bits = 8;  // of a component: 8 or 16

  bool operator==(const PixelFormat &) const = default;

  int ColorCount() const { return model == ColorModel::kGrey ? 1 : model == ColorModel::kRgb ? 3 : 4; }
  /// The number of components of a pixel: colours and alpha.
  int ComponentCount() const { return ColorCount() + (hasAlpha ? 1 : 0); }
  std::size_t ComponentSize() const { return static_cast<std::size_t>(bits / 8); }
  std::size_t PixelSize() const { return static_cast<std::size_t>(ComponentCount()) * ComponentSize(); }
};

/// A picture of interleaved components: the colours in order, then alpha, without gaps between pixels or rows; the top
/// row first. A component of 16 bits is stored with its high byte first, as PDF wants it. Four-colour components say
/// how much ink there is; alpha is the opacity, and the colours are not multiplied by it.
class RasterImage {
 public:
  /// The most bytes that a raster may take.
  static constexpr std::size_t kMaxSize = 0x7FFFFFFF;
  static std::size_t MaxSize() { return IsFuzzed() ? std::size_t{4} << 20 : kMaxSize; }

  RasterImage() = default;

  /// A raster of zeros: black (or no ink), and transparent if there is alpha. Nothing when a side is not positive, the
  /// depth is neither 8 nor 16, the raster would take more than `MaxSize()` bytes, or there is not enough memory.
  static std::optional<RasterImage> Create(std::int64_t width, std::int64_t height, PixelFormat format);

  int width() const { return width_; }
  int height() const { return height_; }
  const PixelFormat &format() const { return format_; }
  /// The bytes of a row, which is also the distance between rows.
  std::size_t RowSize() const { return static_cast<std::size_t>(width_) * format_.PixelSize(); }

  /// All bytes, the top row first; owned by the raster.
  std::span<std::uint8_t> bytes() { return bytes_; }
  std::span<const std::uint8_t> bytes() const { return bytes_; }
  /// The first byte of row `y`, counted from the top.
  std::uint8_t *Row(int y) { return bytes_.data() + static_cast<std::size_t>(y) * RowSize(); }
  const std::uint8_t *Row(int y) const { return bytes_.data() + static_cast<std::size_t>(y) * RowSize(); }

  /// Whether the raster has this pixel and component.
  bool Has(std::int64_t x, std::int64_t y, std::int64_t component) const;

  /// A component of a pixel, both of which must exist: 0 to 255, or to 65535 at 16 bits.
  unsigned Component(int x, int y, int component) const;
  void SetComponent(int x, int y, int component, unsigned value);

 private:
  std::uint8_t *ComponentAddress(int x, int y, int component);

  int width_ = 0;
  int height_ = 0;
  PixelFormat format_;
  std::vector<std::uint8_t> bytes_;
};

/// Stores a component of 16 bits as rasters hold it.
inline void StoreComponent16(std::uint8_t *bytes, unsigned value) {
  bytes[0] = static_cast<std::uint8_t>(value >> 8);
  bytes[1] = static_cast<std::uint8_t>(value & 0xFF);
}

/// The picture rotated and mirrored as an orientation tag of EXIF and TIFF asks for (1 to 8; 1 and all other values
/// leave it unchanged).
RasterImage Oriented(RasterImage image, int orientation);

/// Divides the colours by alpha: for files that store them multiplied.
void DivideByAlpha(RasterImage &image);

}  // namespace quillbar::companion
