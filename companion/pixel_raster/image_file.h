// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "companion/pixel_raster/raster_image.h"

/// Reads image files into rasters, through the usual library for each format.
namespace quillbar::companion {

/// A raster, or the reason why there is none: one sentence without a full stop, in the words of the library that
/// refused the file.
struct DecodedImage {
  RasterImage image;
  std::string error;

  bool ok() const { return error.empty(); }
  /// A result without a raster, for this reason.
  static DecodedImage Failure(std::string message) { return {{}, std::move(message)}; }
};

/// Decodes a PNG, JPEG, TIFF or WebP file, recognised by its first bytes. Depths below 8 bits and palettes become 8
/// bits; 16 bits stay. Of a file with several pictures the first one is decoded.
DecodedImage DecodeImageFile(std::span<const std::uint8_t> file);

/// Reads and decodes the file with this path, in UTF-8.
DecodedImage LoadImageFile(const char *utf8Path);

/// Decodes a PNG file with libpng: grey, colour, palette, transparency of every kind, 1 to 16 bits, interlaced or not.
DecodedImage DecodePng(std::span<const std::uint8_t> file);
/// Decodes a JPEG file with libjpeg-turbo: grey, colour, CMYK and YCCK, baseline and progressive; rotated as its EXIF
/// orientation says.
DecodedImage DecodeJpeg(std::span<const std::uint8_t> file);
/// Decodes a TIFF file with libtiff: grey, colour and CMYK of 8 and 16 bits with and without alpha, in strips or
/// tiles, interleaved or in planes; what else libtiff can show (fewer bits, palettes, YCbCr, Lab …) becomes RGB of 8
/// bits.
DecodedImage DecodeTiff(std::span<const std::uint8_t> file);
/// Decodes a WebP file with libwebp: lossy and lossless, with and without alpha; no animations.
DecodedImage DecodeWebp(std::span<const std::uint8_t> file);

}  // namespace quillbar::companion
