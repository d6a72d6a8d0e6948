// SPDX-License-Identifier: MIT
/// The text of a page's content: operands and operators (ISO 32000-1, 7.8.2).
#pragma once

#include <hpdf.h>

#include <cstring>
#include <iterator>
#include <span>
#include <string_view>

#include "plugin/engine/streams/memory_stream_mark.h"

namespace quillbar::engine {

/// The name under which a page's resources have a font, an image or a graphics state dictionary; without the slash.
/// Owned by the resources.
struct ResourceName {
  const char *text;
};

/// A string operand of any bytes, as text in parentheses.
struct LiteralString {
  std::string_view bytes;
};

/// A string operand of any bytes, as hexadecimal digits.
struct HexString {
  std::string_view bytes;
};

/// Appends operands and operators to a content stream.
///
/// They are gathered on the stack and written when the room there is used up, and by Finish(). Until that has
/// succeeded nothing is for good: when memory runs out the stream ends where it ended before.
class ContentWriter {
 public:
  /// `stream` must be a memory stream and live longer than this.
  explicit ContentWriter(HPDF_Stream stream) : stream_(stream), start_(stream) {}
  ContentWriter(const ContentWriter &) = delete;
  ContentWriter &operator=(const ContentWriter &) = delete;

  /// An operand: a real number.
  void Append(HPDF_REAL number);
  /// An operand: an integer of at most 2147483647.
  void Append(HPDF_UINT number);
  /// An operand: an array of integers.
  void Append(std::span<const HPDF_UINT16> numbers);
  /// An operand: a name.
  void Append(ResourceName name);
  /// An operand: a string.
  void Append(LiteralString string);
  void Append(HexString string);
  /// An operator, which ends its line. The length of a literal is known when this is compiled.
  template <std::size_t Size>
  void Append(const char (&operatorName)[Size]) {
    Reserve(Size);
    std::memcpy(end_, operatorName, Size - 1);
    end_[Size - 1] = '\n';
    end_ += Size;
  }
  void Append(std::string_view operatorName);
  /// Part of an operand.
  void AppendText(std::string_view text);

  /// Several operands and operators, in their order: Write(x, y, "m").
  template <typename... Parts>
  void Write(const Parts &...parts) {
    (Append(parts), ...);
  }

  /// Gives up: nothing of what is appended will be written.
  void Fail(HPDF_STATUS status) { status_ = status; }

  /// Writes what has been appended. The library's status; unless it is HPDF_OK, the stream is as it was.
  HPDF_STATUS Finish();

 private:
  // Makes `room` bytes available after `end_`; at most the size of the buffer.
  void Reserve(std::size_t room) {
    if (static_cast<std::size_t>(std::end(buffer_) - end_) < room) [[unlikely]]
      Flush();
  }
  void Flush();

  HPDF_Stream stream_;
  MemoryStreamMark start_;
  HPDF_STATUS status_ = HPDF_OK;
  char buffer_[1024];
  char *end_ = buffer_;
};

}  // namespace quillbar::engine
