// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "interface/records.h"

/// The private data block of a `PixelRaster`, as the plugin that supplies the class keeps it and other plugins read it
/// through `PluginGetPluginData`. Fields without a use on the reading side are named `unused`.
///
/// Row r starts at `firstRow` + r × `stride`; in a row, pixels are `pixelStep` bytes apart, and a component
/// is the byte (8 bits) or the two bytes (16 bits, in stored order) at its channel's offset within the pixel.
namespace quillbar {

/// `PixelRasterRecord::format` of four-colour pixels; 14 to 16 are further formats of four channels.
inline constexpr std::int32_t kPixelFormatCmyk = 13;

/// The data block itself; the order and the width of its fields are fixed.
struct PixelRasterRecord {
  std::int32_t width;   // pixels
  std::int32_t height;  // pixels
  std::uint8_t *firstRow;
  std::int32_t stride;        // bytes from one row to the next
  std::int32_t channelCount;  // 1 grey, 2 grey and alpha, 3 colour, 4 colour and alpha or four-colour
  std::uint32_t unused1[2];
  std::int32_t pixelStep;  // bytes from one pixel to the next
  std::uint32_t unused2;
  std::uint8_t colorOffset[3];  // bytes within a pixel: grey, or the first three colours
  std::uint8_t alphaOffset;
  std::uint8_t fourthColorOffset;
  std::uint8_t unused3[3];
  std::int32_t format;
  std::uint32_t unused4[6];
  std::uint8_t hasAlpha;
  std::uint8_t bitsPerComponent;  // 8 or 16
};

namespace layout {

static_assert(offsetof(PixelRasterRecord, height) == 4);
static_assert(offsetof(PixelRasterRecord, firstRow) == 8);
static_assert(offsetof(PixelRasterRecord, stride) == Pick(12, 16));
static_assert(offsetof(PixelRasterRecord, channelCount) == Pick(16, 20));
static_assert(offsetof(PixelRasterRecord, pixelStep) == Pick(28, 32));
static_assert(offsetof(PixelRasterRecord, colorOffset) == Pick(36, 40));
static_assert(offsetof(PixelRasterRecord, alphaOffset) == Pick(39, 43));
static_assert(offsetof(PixelRasterRecord, fourthColorOffset) == Pick(40, 44));
static_assert(offsetof(PixelRasterRecord, format) == Pick(44, 48));
static_assert(offsetof(PixelRasterRecord, hasAlpha) == Pick(72, 76));
static_assert(offsetof(PixelRasterRecord, bitsPerComponent) == Pick(73, 77));

}  // namespace layout
}  // namespace quillbar
