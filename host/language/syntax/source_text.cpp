// SPDX-License-Identifier: MIT
#include "host/language/syntax/source_text.h"

#include <algorithm>
#include <utility>

namespace quillbar::language {

SourceText::SourceText(std::string name, std::string text) { Add(std::move(name), std::move(text)); }

void SourceText::Add(std::string name, std::string text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  // The end of a file has an offset of its own.
  if (!files_.empty()) text_ += '\n';
  const auto begin = static_cast<std::uint32_t>(text_.size());
  text_ += text;
  const auto end = static_cast<std::uint32_t>(text_.size());
  files_.push_back({std::move(name), {begin, end}, lineStarts_.size()});
  lineStarts_.push_back(begin);
  for (std::size_t at = begin; at < end; ++at) {
    const bool endsLine = text_[at] == '\n' || (text_[at] == '\r' && (at + 1 == end || text_[at + 1] != '\n'));
    if (endsLine) lineStarts_.push_back(static_cast<std::uint32_t>(at + 1));
  }
}

const SourceText::File &SourceText::FileAt(std::uint32_t offset) const {
  const auto isBefore = [](std::uint32_t at, const File &file) { return at < file.span.begin; };
  return *(std::upper_bound(files_.begin() + 1, files_.end(), offset, isBefore) - 1);
}

std::uint32_t SourceText::LineStart(std::uint32_t offset) const {
  return *(std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset) - 1);
}

Position SourceText::Locate(std::uint32_t offset) const {
  const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
  const std::uint32_t start = *(next - 1);
  return {static_cast<std::size_t>(next - lineStarts_.begin()) - FileAt(offset).firstLine,
          CountCodePoints(Text().substr(start, offset - start)) + 1};
}

std::string_view SourceText::LineAt(std::uint32_t offset) const {
  const std::string_view line = Text().substr(LineStart(offset));
  return line.substr(0, line.find_first_of("\r\n"));
}

std::string SourceText::DescribeLine(std::uint32_t offset, std::uint32_t from) const {
  const File &file = FileAt(offset);
  const std::string line = "line " + std::to_string(Locate(offset).line);
  return &file == &FileAt(from) ? line : line + " of " + file.name;
}

std::size_t CountCodePoints(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(
      utf8.begin(), utf8.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

}  // namespace quillbar::language
