// SPDX-License-Identifier: MIT
/// The text of a page's content: operands and operators (ISO 32000-1, 7.8.2).
#pragma once

#include <hpdf.h>

#include <algorithm>
#include <cstring>
#include <span>
#include <string_view>

#include "plugin/engine/streams/escaped_text.h"
#include "plugin/engine/streams/memory_stream.h"

namespace quillbar::engine {

/// The name under which a page's resources have a font, an image or a graphics state dictionary; without the slash.
/// Owned by the resources.
struct ResourceName {
  const char *text;
};

/// A string operand of any bytes, as hexadecimal digits.
struct HexString {
  std::string_view bytes;
};

/// Appends operands and operators to a content stream.
///
/// They are printed to where the stream goes on in memory, and to the stack where a block of it ends within them. Until
/// Finish() has succeeded nothing is for good: when memory runs out the stream ends where it ended before.
class ContentWriter {
 public:
  /// `stream` must be a memory stream and live longer than this.
  explicit ContentWriter(HPDF_Stream stream) : stream_(AsMemoryStream(stream)), start_(stream->size) {}
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
  void Append(HexString string);
  /// The same between the two `delimiters`, in parts: `write(part, end)` writes a part of the bytes to `end`, where it has
  /// four for each of them, and returns where its text ends.
  template <typename Write>
  void AppendString(const char (&delimiters)[3], std::string_view bytes, Write write) {
    Reserve(1);
    *end_++ = delimiters[0];
    constexpr std::size_t kPart = sizeof buffer_ / kLongestEscape / 2, kLeastPart = 16;
    while (!bytes.empty()) {
      // As much as there is room for first, so that a short text doesn't make the stream larger than its bytes do.
      const std::size_t room = static_cast<std::size_t>(limit_ - end_) / kLongestEscape;
      const std::string_view part = bytes.substr(0, room < kLeastPart ? kPart : std::min(room, kPart));
      bytes.remove_prefix(part.size());
      Reserve(part.size() * kLongestEscape);
      end_ = write(part, end_);
    }
    Reserve(2);
    *end_++ = delimiters[1];
    *end_++ = ' ';
  }
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
  HPDF_STATUS Finish() {
    const bool isDirect = begin_ != buffer_ && status_ == HPDF_OK && stream_.error->error_no == HPDF_OK;
    if (!isDirect) [[unlikely]]
      return FinishSlowly();
    stream_.Commit(static_cast<HPDF_UINT>(end_ - begin_));
    return HPDF_OK;
  }

 private:
  // Makes `room` bytes available after `end_`, of which at most the size of the buffer may be asked for.
  void Reserve(std::size_t room) {
    if (static_cast<std::size_t>(limit_ - end_) < room) [[unlikely]]
      MakeRoom(room);
  }
  HPDF_STATUS FinishSlowly();
  // Enters what has been appended in the stream.
  void Flush();
  void MakeRoom(std::size_t room);

  MemoryStream &stream_;
  HPDF_UINT start_;
  HPDF_STATUS status_ = HPDF_OK;
  // What has been appended and is not entered yet: in the stream's own room or in the buffer.
  char *begin_ = reinterpret_cast<char *>(stream_.tail);
  char *end_ = begin_;
  char *limit_ = reinterpret_cast<char *>(stream_.limit);
  char buffer_[1024];
};

}  // namespace quillbar::engine
