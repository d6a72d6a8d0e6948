// SPDX-License-Identifier: MIT
#include <png.h>

#include <csetjmp>
#include <cstring>

#include "companion/pixel_raster/image_file.h"

namespace quillbar::companion {

namespace {

/// What libpng's callbacks share. libpng reports errors by longjmp, so no object with a destructor may live in the
/// functions that it jumps out of; all of them are here.
struct PngReader {
  std::span<const std::uint8_t> rest;
  std::string error;
  std::optional<RasterImage> image;
};

void OnError(png_structp png, png_const_charp message) {
  static_cast<PngReader *>(png_get_error_ptr(png))->error = message;
  png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

void ReadBytes(png_structp png, png_bytep to, std::size_t size) {
  auto &reader = *static_cast<PngReader *>(png_get_io_ptr(png));
  if (size > reader.rest.size()) png_error(png, "the file ends too early");
  std::memcpy(to, reader.rest.data(), size);
  reader.rest = reader.rest.subspan(size);
}

/// Asks libpng to give grey or RGB, with alpha if there is any transparency, of 8 or 16 bits. Returns the number of
/// passes over the rows: an interlaced file fills them in several.
int RequestComponents(png_structp png, png_infop info) {
  const int type = png_get_color_type(png, info);
  if (type == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
  if (type == PNG_COLOR_TYPE_GRAY && png_get_bit_depth(png, info) < 8) png_set_expand_gray_1_2_4_to_8(png);
  if (png_get_valid(png, info, PNG_INFO_tRNS) != 0) png_set_tRNS_to_alpha(png);
  const int passes = png_set_interlace_handling(png);
  png_read_update_info(png, info);
  return passes;
}

void ReadPixels(png_structp png, png_infop info, int passes, PngReader &reader) {
  const int type = png_get_color_type(png, info);
  const PixelFormat format{(type & PNG_COLOR_MASK_COLOR) != 0 ? ColorModel::kRgb : ColorModel::kGrey,
                           (type & PNG_COLOR_MASK_ALPHA) != 0, png_get_bit_depth(png, info)};
  const png_uint_32 width = png_get_image_width(png, info), height = png_get_image_height(png, info);
  reader.image = RasterImage::Create(width, height, format);
  if (!reader.image) png_error(png, "the picture is too large");
  if (png_get_rowbytes(png, info) != reader.image->RowSize()) png_error(png, "unexpected size of a row");
  // Row by row: pointers to all rows of a narrow picture would take more memory than its pixels.
  for (int pass = 0; pass < passes; ++pass) {
    for (png_uint_32 y = 0; y < height; ++y) png_read_row(png, reader.image->Row(static_cast<int>(y)), nullptr);
  }
  png_read_end(png, nullptr);
}

bool ReadPng(png_structp png, png_infop info, PngReader &reader) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_read_fn(png, &reader, ReadBytes);
  // The raster's own limit decides; libpng's is lower than what rasters may be.
  png_set_user_limits(png, 0x7FFFFFFF, 0x7FFFFFFF);
  png_read_info(png, info);
  const int passes = RequestComponents(png, info);
  ReadPixels(png, info, passes, reader);
  return true;
}

}  // namespace

DecodedImage DecodePng(std::span<const std::uint8_t> file) {
  PngReader reader;
  reader.rest = file;
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &reader, OnError, OnWarning);
  png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
  const bool done = info != nullptr && ReadPng(png, info, reader);
  png_destroy_read_struct(&png, &info, nullptr);
  if (!done)
    return DecodedImage::Failure("PNG: " + (reader.error.empty() ? "there is not enough memory" : reader.error));
  return {std::move(*reader.image), {}};
}

}  // namespace quillbar::companion
