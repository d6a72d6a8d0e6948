// SPDX-License-Identifier: MIT
#include "plugin/image/raster_rows.h"

#include <algorithm>
#include <cstring>
#include <limits>

#if defined(__x86_64__) || defined(__i386__)
#include <tmmintrin.h>
#endif

namespace quillbar {

namespace {

constexpr std::int64_t kMaxStreamSize = std::numeric_limits<std::int32_t>::max();

template <typename Word>
Word LoadWord(const std::uint8_t *bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

template <typename Word>
void StoreWord(std::uint8_t *bytes, Word word) {
  std::memcpy(bytes, &word, sizeof word);
}

/// The bytes of a pixel that hold components.
struct PixelExtent {
  std::ptrdiff_t lowest;  // offset of the first
  std::size_t size;
};

PixelExtent ExtentOf(const RasterLayout &layout) {
  std::ptrdiff_t lowest = layout.colorOffset[0], highest = layout.colorOffset[0];
  const auto include = [&](std::ptrdiff_t offset) {
    lowest = std::min(lowest, offset);
    highest = std::max(highest, offset);
  };
  for (std::size_t color = 1; color < layout.colorCount; ++color) include(layout.colorOffset[color]);
  if (layout.hasMask) include(layout.alphaOffset);
  return {lowest, static_cast<std::size_t>(highest - lowest) + layout.componentSize};
}

/// Any layout, one component at a time. Component is `uint8_t`, or `uint16_t` for two bytes in stored order.
template <typename Component, std::size_t ColorCount>
void SplitAnyPixels(const RasterLayout &layout, const std::uint8_t *pixel, std::size_t count, std::uint8_t *image,
                    std::uint8_t *mask) {
  for (; count > 0; --count, pixel += layout.pixelStep) {
    for (std::size_t color = 0; color < ColorCount; ++color) {
      StoreWord(image, LoadWord<Component>(pixel + layout.colorOffset[color]));
      image += sizeof(Component);
    }
    if (mask != nullptr) {
      StoreWord(mask, LoadWord<Component>(pixel + layout.alphaOffset));
      mask += sizeof(Component);
    }
  }
}

#if defined(__x86_64__) || defined(__i386__)

/// Which bytes of a vector of pixels form the samples, in order; the places after them are filled with
/// zeros.
struct PixelShuffle {
  alignas(16) std::uint8_t source[16];
  std::size_t size = 0;

  PixelShuffle() { std::fill_n(source, 16, std::uint8_t{0x80}); }
  void Append(std::ptrdiff_t firstByte, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
      source[size++] = static_cast<std::uint8_t>(firstByte + static_cast<std::ptrdiff_t>(i));
  }
};

/// Writes the samples of `turns` vectors of pixels. Whole vectors are stored: each overwrites what the one
/// before stored after its samples.
__attribute__((target("ssse3"))) void ShuffleVectors(const std::uint8_t *pixels, std::size_t turns,
                                                     std::size_t turnSize, const PixelShuffle &colors,
                                                     std::uint8_t *image, const PixelShuffle &alpha,
                                                     std::uint8_t *mask) {
  const auto load = [](const std::uint8_t *bytes) __attribute__((target("ssse3"))) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
  };
  const __m128i colorSource = load(colors.source), alphaSource = load(alpha.source);
  for (; turns > 0; --turns, pixels += turnSize) {
    const __m128i vector = load(pixels);
    _mm_storeu_si128(reinterpret_cast<__m128i *>(image), _mm_shuffle_epi8(vector, colorSource));
    image += colors.size;
    if (mask == nullptr) continue;
    _mm_storeu_si128(reinterpret_cast<__m128i *>(mask), _mm_shuffle_epi8(vector, alphaSource));
    mask += alpha.size;
  }
}

/// Splits the leading pixels of a row by vectors of 16 bytes, where the processor can shuffle them and at
/// least two pixels fit in one. Returns how many pixels it did: those whose vectors stay between the first
/// and the last component of the row, and within the image and mask rows.
std::size_t SplitByVectors(const RasterLayout &layout, const std::uint8_t *row, std::uint8_t *image,
                           std::uint8_t *mask) {
  static const bool canShuffle = __builtin_cpu_supports("ssse3");
  if (!canShuffle || layout.pixelStep <= 0) return 0;
  const PixelExtent extent = ExtentOf(layout);
  const auto step = static_cast<std::size_t>(layout.pixelStep);
  if (extent.size + step > 16) return 0;
  const std::size_t pixels = std::min((16 - extent.size) / step + 1, 16 / (layout.colorCount * layout.componentSize));

  PixelShuffle colors, alpha;
  for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
    const std::ptrdiff_t start = static_cast<std::ptrdiff_t>(pixel * step) - extent.lowest;
    for (std::size_t color = 0; color < layout.colorCount; ++color) {
      colors.Append(start + layout.colorOffset[color], layout.componentSize);
    }
    if (mask != nullptr) alpha.Append(start + layout.alphaOffset, layout.componentSize);
  }

  const auto turnsWithin = [](std::size_t size, std::size_t turnSize) {
    return size < 16 ? 0 : (size - 16) / turnSize + 1;
  };
  std::size_t turns = std::min(turnsWithin((layout.width - 1) * step + extent.size, pixels * step),
                               turnsWithin(layout.ImageRowSize(), colors.size));
  if (mask != nullptr) turns = std::min(turns, turnsWithin(layout.MaskRowSize(), alpha.size));
  ShuffleVectors(row + extent.lowest, turns, pixels * step, colors, image, alpha, mask);
  return turns * pixels;
}

#else

/// Without byte shuffles of the processor the plain loops do it all.
std::size_t SplitByVectors(const RasterLayout &, const std::uint8_t *, std::uint8_t *, std::uint8_t *) { return 0; }

#endif

bool ColorsAreInOrder(const RasterLayout &layout) {
  for (std::size_t color = 0; color < layout.colorCount; ++color) {
    if (layout.colorOffset[color] != static_cast<std::ptrdiff_t>(color * layout.componentSize)) return false;
  }
  return true;
}

template <typename Component, std::size_t ColorCount>
void SplitRow(const RasterLayout &layout, const std::uint8_t *row, std::uint8_t *image, std::uint8_t *mask) {
  const std::size_t done = SplitByVectors(layout, row, image, mask);
  row += static_cast<std::ptrdiff_t>(done) * layout.pixelStep;
  image += done * ColorCount * sizeof(Component);
  if (mask != nullptr) mask += done * sizeof(Component);
  SplitAnyPixels<Component, ColorCount>(layout, row, layout.width - done, image, mask);
}

template <typename Component>
void SplitRow(const RasterLayout &layout, const std::uint8_t *row, std::uint8_t *image, std::uint8_t *mask) {
  switch (layout.colorCount) {
    case 1:
      return SplitRow<Component, 1>(layout, row, image, mask);
    case 3:
      return SplitRow<Component, 3>(layout, row, image, mask);
    default:
      return SplitRow<Component, 4>(layout, row, image, mask);
  }
}

/// Whether every component has an address: the pixels may be in any order, overlap or repeat, but not run
/// over an end of the address space.
bool LiesInAddressSpace(const RasterLayout &layout) {
  const PixelExtent extent = ExtentOf(layout);
  const std::int64_t lastRow = std::int64_t{layout.stride} * static_cast<std::int64_t>(layout.height - 1);
  const std::int64_t lastPixel = std::int64_t{layout.pixelStep} * static_cast<std::int64_t>(layout.width - 1);
  const std::int64_t lowest = std::min<std::int64_t>(lastRow, 0) + std::min<std::int64_t>(lastPixel, 0);
  const std::int64_t end = std::max<std::int64_t>(lastRow, 0) + std::max<std::int64_t>(lastPixel, 0) + extent.lowest +
                           static_cast<std::int64_t>(extent.size);
  const auto start = std::uint64_t{reinterpret_cast<std::uintptr_t>(layout.firstRow)};
  return static_cast<std::uint64_t>(-lowest) <= start &&
         static_cast<std::uint64_t>(end) <= std::numeric_limits<std::uintptr_t>::max() - start;
}

}  // namespace

bool RasterLayout::RowsAreImageRows() const {
  return !hasMask && ColorsAreInOrder(*this) && pixelStep == static_cast<std::ptrdiff_t>(colorCount * componentSize);
}

std::optional<RasterLayout> ReadRasterLayout(const PixelRasterRecord &raster) {
  if (raster.width <= 0 || raster.height <= 0 || raster.channelCount <= 0 || raster.firstRow == nullptr) {
    return std::nullopt;
  }
  if (raster.bitsPerComponent != 8 && raster.bitsPerComponent != 16) return std::nullopt;

  RasterLayout layout;
  layout.firstRow = raster.firstRow;
  layout.stride = raster.stride;
  layout.pixelStep = raster.pixelStep;
  layout.width = static_cast<std::size_t>(raster.width);
  layout.height = static_cast<std::size_t>(raster.height);
  layout.componentSize = raster.bitsPerComponent / 8U;
  layout.hasMask = raster.hasAlpha != 0;
  layout.alphaOffset = raster.alphaOffset;
  std::copy_n(raster.colorOffset, 3, layout.colorOffset);
  layout.colorOffset[3] = raster.fourthColorOffset;
  if (raster.channelCount >= 3) {
    layout.colorCount = raster.format == kPixelFormatCmyk ? 4 : 3;
  }
  layout.alphaGoesWithChannels = raster.channelCount == 2 || raster.channelCount == 4;

  const std::int64_t samples = std::int64_t{raster.width} * raster.height;
  const auto pixelSize = static_cast<std::int64_t>(layout.colorCount * layout.componentSize);
  if (samples > kMaxStreamSize / pixelSize) return std::nullopt;

  if (!LiesInAddressSpace(layout)) return std::nullopt;
  return layout;
}

void ConvertRow(const RasterLayout &layout, const std::uint8_t *row, std::span<std::uint8_t> image,
                std::span<std::uint8_t> mask) {
  std::uint8_t *maskBytes = layout.hasMask ? mask.data() : nullptr;
  if (layout.RowsAreImageRows()) {
    std::copy_n(row, image.size(), image.data());
  } else if (layout.componentSize == 1) {
    SplitRow<std::uint8_t>(layout, row, image.data(), maskBytes);
  } else {
    SplitRow<std::uint16_t>(layout, row, image.data(), maskBytes);
  }
}

}  // namespace quillbar
