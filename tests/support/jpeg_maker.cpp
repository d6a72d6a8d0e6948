// SPDX-License-Identifier: MIT
#include "tests/support/jpeg_maker.h"

// libjpeg's header needs stdio before it.
#include <cstdio>
//
#include <jpeglib.h>

#include <cstdlib>
#include <vector>

namespace quillbar {

std::uint8_t JpegSample(int x, int y, int component) {
  return static_cast<std::uint8_t>((x * 5 + y * 3 + component * 60) & 0xFF);
}

namespace {

// This many scans of a grey picture: its mean values, then its details one after the other, bit by bit.
std::vector<jpeg_scan_info> GreyScans(int count) {
  constexpr int kCoarsest = 9;
  std::vector<jpeg_scan_info> scans;
  scans.push_back({.comps_in_scan = 1, .component_index = {0}, .Ss = 0, .Se = 0, .Ah = 0, .Al = 0});
  for (int detail = 1; detail < DCTSIZE2; ++detail) {
    for (int bit = kCoarsest; bit >= 0 && static_cast<int>(scans.size()) < count; --bit) {
      scans.push_back({.comps_in_scan = 1,
                       .component_index = {0},
                       .Ss = detail,
                       .Se = detail,
                       .Ah = bit == kCoarsest ? 0 : bit + 1,
                       .Al = bit});
    }
  }
  return scans;
}

}  // namespace

std::string MakeJpeg(const JpegOptions &options) {
  jpeg_error_mgr errors{};
  jpeg_compress_struct jpeg{};
  jpeg.err = jpeg_std_error(&errors);
  jpeg_create_compress(&jpeg);
  unsigned char *bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&jpeg, &bytes, &size);
  jpeg.image_width = static_cast<JDIMENSION>(options.width);
  jpeg.image_height = static_cast<JDIMENSION>(options.height);
  jpeg.input_components = options.components;
  jpeg.in_color_space = options.components == 1 ? JCS_GRAYSCALE : options.components == 3 ? JCS_RGB : JCS_CMYK;
  jpeg_set_defaults(&jpeg);
  jpeg_set_quality(&jpeg, options.quality, TRUE);
  for (int component = 0; component < jpeg.num_components; ++component) {
    jpeg.comp_info[component].h_samp_factor = jpeg.comp_info[component].v_samp_factor = 1;
  }
  if (options.components == 4) jpeg.write_Adobe_marker = options.adobeSegment ? TRUE : FALSE;
  jpeg.arith_code = options.arithmetic ? TRUE : FALSE;
  if (options.progressive) jpeg_simple_progression(&jpeg);
  const std::vector<jpeg_scan_info> scans = GreyScans(options.scans);
  if (options.scans > 0) {
    jpeg.scan_info = scans.data();
    jpeg.num_scans = static_cast<int>(scans.size());
  }
  jpeg_start_compress(&jpeg, TRUE);
  std::vector<unsigned char> row(static_cast<std::size_t>(options.width * options.components));
  for (int y = 0; y < options.height; ++y) {
    for (int x = 0; x < options.width; ++x) {
      for (int component = 0; component < options.components; ++component) {
        row[static_cast<std::size_t>(x * options.components + component)] = JpegSample(x, y, component);
      }
    }
    JSAMPROW rows[] = {row.data()};
    jpeg_write_scanlines(&jpeg, rows, 1);
  }
  jpeg_finish_compress(&jpeg);
  jpeg_destroy_compress(&jpeg);
  std::string file(reinterpret_cast<const char *>(bytes), size);
  std::free(bytes);
  return file;
}

std::string WithExifOrientation(const std::string &jpeg, std::uint16_t orientation) {
  // A TIFF header, most significant byte first, and a directory with the one entry 0x0112, "Orientation".
  std::string exif("Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25);
  exif += static_cast<char>(orientation);
  exif += std::string("\0\0\0\0\0\0", 6);
  const auto length = static_cast<char>(exif.size() + 2);
  return jpeg.substr(0, 2) + std::string("\xFF\xE1\0", 3) + length + exif + jpeg.substr(2);
}

}  // namespace quillbar
