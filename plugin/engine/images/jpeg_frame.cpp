// SPDX-License-Identifier: MIT
#include "plugin/engine/images/jpeg_frame.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quillbar::engine {

namespace {

constexpr std::uint8_t kStartOfImage = 0xD8;
constexpr std::uint8_t kEndOfImage = 0xD9;
constexpr std::uint8_t kStartOfScan = 0xDA;
constexpr std::uint8_t kAdobeSegment = 0xEE;

// Baseline, extended and progressive frames with Huffman coding are what the DCTDecode filter knows.
bool IsHuffmanFrame(std::uint8_t marker) { return marker >= 0xC0 && marker <= 0xC2; }

// C4, C8 and CC are numbers of frames too but define tables or are reserved.
bool IsOtherFrame(std::uint8_t marker) {
  return marker >= 0xC3 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

bool StandsAlone(std::uint8_t marker) { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7); }

std::uint16_t BigEndian16(std::span<const std::uint8_t> bytes, std::size_t offset) {
  return static_cast<std::uint16_t>(bytes[offset] << 8 | bytes[offset + 1]);
}

// The segment of a frame, after its length: precision, height, width, and three bytes for each component.
void ReadFrameSegment(std::span<const std::uint8_t> segment, JpegFrame &frame) {
  frame.verdict = JpegVerdict::kInvalid;
  if (segment.size() < 6) return;
  frame.height = BigEndian16(segment, 1);
  frame.width = BigEndian16(segment, 3);
  frame.componentCount = segment[5];
  if (frame.width == 0 || frame.height == 0) return;
  if (segment.size() < 6U + 3U * frame.componentCount) return;
  const bool countIsKnown = frame.componentCount == 1 || frame.componentCount == 3 || frame.componentCount == 4;
  frame.verdict = segment[0] == 8 && countIsKnown ? JpegVerdict::kGood : JpegVerdict::kUnsupported;
}

}  // namespace

JpegFrame ReadJpegFrame(std::span<const std::uint8_t> file) {
  constexpr std::string_view kAdobe = "Adobe";
  JpegFrame frame;
  const JpegFrame invalid;
  if (file.size() < 4 || file[0] != 0xFF || file[1] != kStartOfImage) return invalid;

  bool frameSeen = false;
  std::size_t position = 2;
  for (;;) {
    if (position >= file.size() || file[position] != 0xFF) return invalid;
    while (position < file.size() && file[position] == 0xFF) ++position;  // fill bytes
    if (position >= file.size()) return invalid;
    const std::uint8_t marker = file[position++];
    if (StandsAlone(marker)) continue;
    if (marker == 0 || marker == kStartOfImage || marker == kEndOfImage) return invalid;
    if (file.size() - position < 2) return invalid;
    const std::size_t length = BigEndian16(file, position);
    if (length < 2 || length > file.size() - position) return invalid;
    const auto segment = file.subspan(position + 2, length - 2);
    position += length;

    if (marker == kStartOfScan) return frameSeen ? frame : invalid;
    if (IsOtherFrame(marker)) {
      frame.verdict = JpegVerdict::kUnsupported;
      return frame;
    }
    if (IsHuffmanFrame(marker)) {
      if (frameSeen) return invalid;
      frameSeen = true;
      ReadFrameSegment(segment, frame);
      if (frame.verdict != JpegVerdict::kGood) return frame;
    }
    if (marker == kAdobeSegment && segment.size() >= 12 && std::equal(kAdobe.begin(), kAdobe.end(), segment.begin())) {
      frame.hasAdobeSegment = true;
    }
  }
}

}  // namespace quillbar::engine
