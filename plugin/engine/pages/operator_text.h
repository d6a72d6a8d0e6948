// SPDX-License-Identifier: MIT
// The text of content-stream operators, put together on the stack and written at once.
#pragma once

#include <hpdf.h>
#include <hpdf_utils.h>

namespace quillbar::engine {

class OperatorText {
 public:
  // A number followed by a space.
  OperatorText &Operand(HPDF_REAL value) {
    end_ = HPDF_FToA(end_, value, text_ + sizeof text_ - 1);
    *end_++ = ' ';
    return *this;
  }
  // A one-letter operator, which ends a line.
  OperatorText &Operator(char name) {
    *end_++ = name;
    *end_++ = '\n';
    return *this;
  }
  // The library's status.
  HPDF_STATUS WriteTo(HPDF_Stream stream) const {
    return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(text_), static_cast<HPDF_UINT>(end_ - text_));
  }

 private:
  // More than a number takes, with the space after it.
  static constexpr std::size_t kNumber = 16;
  // Room for the longest operators here: eight curves of six numbers and a starting point.
  char text_[(8 * 6 + 2) * kNumber + 9 * 2];
  char *end_ = text_;
};

}  // namespace quillbar::engine
