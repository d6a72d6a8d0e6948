// SPDX-License-Identifier: MIT
/// The header of a JPEG file: what an image XObject needs to know, and whether PDF can hold the file at all.
#pragma once

#include <cstdint>
#include <span>

namespace quillbar::engine {

enum class JpegVerdict {
  kGood,
  /// Not a JPEG file, or one cut off or damaged before its image data, or without pixels.
  kInvalid,
  /// A JPEG file that PDF can't hold: other than 8 bits, lossless, hierarchical or arithmetic coding, or a number of
  /// components other than 1, 3 and 4.
  kUnsupported,
};

struct JpegFrame {
  JpegVerdict verdict = JpegVerdict::kInvalid;
  std::uint16_t width = 0;   // pixels
  std::uint16_t height = 0;  // pixels
  std::uint8_t componentCount = 0;
  /// An Adobe segment comes before the frame. Four-colour files with one store their colours inverted.
  bool hasAdobeSegment = false;
};

/// Walks the segments of `file` up to the first scan. Markers and their meaning: ITU-T T.81, annex B; the Adobe
/// segment: Adobe technical note 5116.
JpegFrame ReadJpegFrame(std::span<const std::uint8_t> file);

}  // namespace quillbar::engine
