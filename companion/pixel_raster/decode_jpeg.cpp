// SPDX-License-Identifier: MIT
// libjpeg's header needs stdio before it.
#include <cstdio>
//
#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <csetjmp>
#include <string_view>
#include <utility>

#include "companion/pixel_raster/exif_orientation.h"
#include "companion/pixel_raster/image_file.h"

namespace quillbar::companion {

namespace {

/// libjpeg reports errors by longjmp, so no object with a destructor may live in the functions that it jumps out of.
struct JpegReader {
  jpeg_error_mgr errors{};
  jpeg_progress_mgr progress{};
  std::jmp_buf leave;
  char message[JMSG_LENGTH_MAX] = {};
  int orientation = 1;
  bool tooLarge = false;
  std::optional<RasterImage> image;
};

[[noreturn]] void OnError(j_common_ptr jpeg) {
  auto &reader = *static_cast<JpegReader *>(jpeg->client_data);
  jpeg->err->format_message(jpeg, reader.message);
  std::longjmp(reader.leave, 1);
}

/// Where the data ends too early libjpeg only warns and fills the rest with grey; such a file is refused. Its other
/// warnings, such as stray bytes between segments, are about files that real cameras write.
void OnWarning(j_common_ptr jpeg, int level) {
  const int code = jpeg->err->msg_code;
  if (level < 0 && (code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER)) OnError(jpeg);
}

/// Each scan of a progressive file covers the whole picture and can be a few bytes long. Encoders write about ten; a
/// file with very many would keep the application busy for long.
void RefuseManyScans(j_common_ptr jpeg) {
  constexpr int kMostScans = 500;
  if (reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number <= kMostScans) return;
  auto &reader = *static_cast<JpegReader *>(jpeg->client_data);
  std::snprintf(reader.message, sizeof reader.message, "more than %d scans", kMostScans);
  std::longjmp(reader.leave, 1);
}

int OrientationOf(const jpeg_decompress_struct &jpeg) {
  using namespace std::string_view_literals;
  for (jpeg_saved_marker_ptr marker = jpeg.marker_list; marker != nullptr; marker = marker->next) {
    const std::string_view data(reinterpret_cast<const char *>(marker->data), marker->data_length);
    if (marker->marker == JPEG_APP0 + 1 && data.starts_with("Exif\0\0"sv)) {
      return ExifOrientation({marker->data, marker->data_length});
    }
  }
  return 1;
}

ColorModel RequestColors(jpeg_decompress_struct &jpeg) {
  switch (jpeg.jpeg_color_space) {
    case JCS_GRAYSCALE:
      jpeg.out_color_space = JCS_GRAYSCALE;
      return ColorModel::kGrey;
    case JCS_CMYK:
    case JCS_YCCK:
      jpeg.out_color_space = JCS_CMYK;
      return ColorModel::kCmyk;
    default:
      jpeg.out_color_space = JCS_RGB;
      return ColorModel::kRgb;
  }
}

bool ReadJpeg(jpeg_decompress_struct &jpeg, std::span<const std::uint8_t> file, JpegReader &reader) {
  if (setjmp(reader.leave) != 0) return false;
  jpeg_create_decompress(&jpeg);
  jpeg.progress = &reader.progress;
  jpeg_mem_src(&jpeg, file.data(), static_cast<unsigned long>(file.size()));
  jpeg_save_markers(&jpeg, JPEG_APP0 + 1, 0xFFFF);
  jpeg_read_header(&jpeg, TRUE);
  reader.orientation = OrientationOf(jpeg);
  const ColorModel model = RequestColors(jpeg);
  reader.image = RasterImage::Create(jpeg.image_width, jpeg.image_height, {model, false, 8});
  if (!reader.image) {
    reader.tooLarge = true;
    return false;
  }
  jpeg_start_decompress(&jpeg);
  while (jpeg.output_scanline < jpeg.output_height) {
    JSAMPROW row = reader.image->Row(static_cast<int>(jpeg.output_scanline));
    jpeg_read_scanlines(&jpeg, &row, 1);
  }
  // Files with an Adobe segment store how much light four-colour components leave, not how much ink there is.
  if (model == ColorModel::kCmyk && jpeg.saw_Adobe_marker) {
    std::ranges::transform(reader.image->bytes(), reader.image->bytes().begin(),
                           [](std::uint8_t light) { return static_cast<std::uint8_t>(255 - light); });
  }
  jpeg_finish_decompress(&jpeg);
  return true;
}

}  // namespace

DecodedImage DecodeJpeg(std::span<const std::uint8_t> file) {
  // The library counts bytes in a type that is narrower than addresses on 64-bit Windows.
  if (!std::in_range<unsigned long>(file.size())) return DecodedImage::Failure("JPEG: the file is too large");
  JpegReader reader;
  jpeg_decompress_struct jpeg{};
  jpeg.err = jpeg_std_error(&reader.errors);
  jpeg.client_data = &reader;
  reader.errors.error_exit = OnError;
  reader.errors.emit_message = OnWarning;
  reader.progress.progress_monitor = RefuseManyScans;
  const bool done = ReadJpeg(jpeg, file, reader);
  jpeg_destroy_decompress(&jpeg);
  if (reader.tooLarge) return DecodedImage::Failure("JPEG: the picture is too large");
  if (!done) return DecodedImage::Failure(std::string("JPEG: ") + reader.message);
  return {Oriented(std::move(*reader.image), reader.orientation), {}};
}

}  // namespace quillbar::companion
