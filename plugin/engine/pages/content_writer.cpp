// SPDX-License-Identifier: MIT
#include "plugin/engine/pages/content_writer.h"

#include <hpdf_utils.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include "plugin/engine/streams/escaped_text.h"

namespace quillbar::engine {

void ContentWriter::Append(HPDF_REAL number) {
  // More than the longest real takes, such as "-0.0000012345", with the space after it.
  Reserve(32);
  end_ = HPDF_FToA(end_, number, std::end(buffer_) - 1);
  *end_++ = ' ';
}

void ContentWriter::Append(HPDF_UINT number) {
  Reserve(std::numeric_limits<HPDF_UINT>::digits10 + 2);
  end_ = std::to_chars(end_, std::end(buffer_), number).ptr;
  *end_++ = ' ';
}

void ContentWriter::Append(std::span<const HPDF_UINT16> numbers) {
  AppendText("[");
  for (const HPDF_UINT16 number : numbers) Append(HPDF_UINT{number});
  AppendText("] ");
}

void ContentWriter::Append(ResourceName name) {
  // Made of a letter and digits: nothing in it needs an escape.
  AppendText("/");
  AppendText(name.text);
  AppendText(" ");
}

void ContentWriter::Append(LiteralString string) {
  constexpr std::size_t kBlock = sizeof buffer_ / kLongestEscape / 2;
  Reserve(1);
  *end_++ = '(';
  for (std::string_view rest = string.bytes; !rest.empty(); rest.remove_prefix(std::min(kBlock, rest.size()))) {
    const std::string_view block = rest.substr(0, kBlock);
    Reserve(block.size() * kLongestEscape);
    end_ = EscapeText(block, end_);
  }
  Reserve(2);
  *end_++ = ')';
  *end_++ = ' ';
}

void ContentWriter::Append(HexString string) {
  constexpr std::size_t kBlock = sizeof buffer_ / 4;
  AppendText("<");
  for (std::string_view rest = string.bytes; !rest.empty(); rest.remove_prefix(std::min(kBlock, rest.size()))) {
    const std::string_view block = rest.substr(0, kBlock);
    Reserve(block.size() * 2);
    end_ = WriteHexDigits(block, end_);
  }
  AppendText("> ");
}

void ContentWriter::Append(std::string_view operatorName) {
  AppendText(operatorName);
  Reserve(1);
  *end_++ = '\n';
}

void ContentWriter::AppendText(std::string_view text) {
  while (!text.empty()) {
    Reserve(1);
    const std::size_t length = text.copy(end_, static_cast<std::size_t>(std::end(buffer_) - end_));
    end_ += length;
    text.remove_prefix(length);
  }
}

HPDF_STATUS ContentWriter::Finish() {
  Flush();
  if (status_ != HPDF_OK) [[unlikely]]
    start_.CutBack();
  return status_;
}

void ContentWriter::Flush() {
  if (status_ == HPDF_OK) {
    status_ = HPDF_Stream_Write(stream_, reinterpret_cast<const HPDF_BYTE *>(buffer_),
                                static_cast<HPDF_UINT>(end_ - buffer_));
  }
  end_ = buffer_;
}

}  // namespace quillbar::engine
