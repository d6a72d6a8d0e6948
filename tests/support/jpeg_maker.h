// SPDX-License-Identifier: MIT
// JPEG files for tests, written by libjpeg.
#pragma once

#include <cstdint>
#include <string>

namespace quillbar {

/// The file to make.
struct JpegOptions {
  int width = 32;
  int height = 24;
  int components = 3;  // 1 grey, 3 colour, 4 CMYK
  bool progressive = false;
  int scans = 0;  // of a grey progressive file; 0: libjpeg's own choice
  bool arithmetic = false;
  bool adobeSegment = true;  // of a four-colour file
  int quality = 95;
};

/// The value that the file stores at a component of a pixel, before compression.
std::uint8_t JpegSample(int x, int y, int component);

/// A JPEG file of a test picture.
std::string MakeJpeg(const JpegOptions &options);

/// The same file with an EXIF segment that asks viewers to rotate it (6: a quarter turn to the right).
std::string WithExifOrientation(const std::string &jpeg, std::uint16_t orientation);

}  // namespace quillbar
