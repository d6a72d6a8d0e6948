// SPDX-License-Identifier: MIT
#include "plugin/engine/pages/content_writer.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include "plugin/engine/objects/number_text.h"
#include "plugin/engine/streams/escaped_text.h"

namespace quillbar::engine {

void ContentWriter::Append(HPDF_REAL number) {
  Reserve(kRoomForReal + 1);
  end_ = WriteReal(end_, number);
  *end_++ = ' ';
}

void ContentWriter::Append(HPDF_UINT number) {
  Reserve(std::numeric_limits<HPDF_UINT>::digits10 + 2);
  end_ = std::to_chars(end_, limit_, number).ptr;
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
    const std::size_t length = text.copy(end_, static_cast<std::size_t>(limit_ - end_));
    end_ += length;
    text.remove_prefix(length);
  }
}

HPDF_STATUS ContentWriter::FinishSlowly() {
  Flush();
  if (status_ != HPDF_OK) [[unlikely]]
    stream_.CutBack(start_);
  return status_;
}

void ContentWriter::Flush() {
  const auto count = static_cast<HPDF_UINT>(end_ - begin_);
  // While a failure is on its way out of the library nothing is written.
  if (status_ == HPDF_OK && HPDF_Error_GetCode(stream_.error) != HPDF_NOERROR) status_ = HPDF_THIS_FUNC_WAS_SKIPPED;
  if (status_ != HPDF_OK) {
    // What comes now is for nothing.
  } else if (begin_ == buffer_) {
    status_ = HPDF_Stream_Write(&stream_, reinterpret_cast<const HPDF_BYTE *>(buffer_), count);
  } else {
    stream_.Commit(count);
  }
  end_ = begin_;
}

void ContentWriter::MakeRoom(std::size_t room) {
  Flush();
  if (status_ == HPDF_OK) {
    while (stream_.ExtendTail() && static_cast<std::size_t>(stream_.limit - stream_.tail) < room) continue;
    begin_ = reinterpret_cast<char *>(stream_.tail);
    limit_ = reinterpret_cast<char *>(stream_.limit);
  }
  if (status_ != HPDF_OK || static_cast<std::size_t>(limit_ - begin_) < room) {
    begin_ = buffer_;
    limit_ = std::end(buffer_);
  }
  end_ = begin_;
}

}  // namespace quillbar::engine
