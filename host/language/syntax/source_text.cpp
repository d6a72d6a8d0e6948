// SPDX-License-Identifier: MIT
#include "host/language/syntax/source_text.h"

#include <algorithm>
#include <utility>

namespace quillbar::language {

SourceText::SourceText(std::string name, std::string text) : name_(std::move(name)), text_(std::move(text)) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text_.starts_with(kByteOrderMark)) text_.erase(0, kByteOrderMark.size());

  lineStarts_.push_back(0);
  for (std::size_t at = 0; at < text_.size(); ++at) {
    const bool endsLine = text_[at] == '\n' || (text_[at] == '\r' && (at + 1 == text_.size() || text_[at + 1] != '\n'));
    if (endsLine) lineStarts_.push_back(static_cast<std::uint32_t>(at + 1));
  }
}

Position SourceText::Locate(std::uint32_t offset) const {
  const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
  const std::uint32_t start = *(next - 1);
  return {static_cast<std::size_t>(next - lineStarts_.begin()),
          CountCodePoints(Text().substr(start, offset - start)) + 1};
}

std::string_view SourceText::Line(std::size_t number) const {
  const std::uint32_t start = lineStarts_[number - 1];
  std::string_view line = Text().substr(start);
  return line.substr(0, line.find_first_of("\r\n"));
}

std::size_t CountCodePoints(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(
      utf8.begin(), utf8.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

}  // namespace quillbar::language
