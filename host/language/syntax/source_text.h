// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::language {

/// A range of a script's text in byte offsets; `end` is exclusive. Every token, syntax node and error has one.
struct Span {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  /// From the start of `first` to the end of `last`.
  static constexpr Span Cover(Span first, Span last) { return {first.begin, last.end}; }
};

/// Line and column, both counted from 1; columns count characters (code points), not bytes.
struct Position {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// The text of one script, with the name that error messages show for it.
///
/// The text is UTF-8; a byte order mark at its start is dropped. Lines end with LF, CR LF or CR.
class SourceText {
 public:
  /// Scripts larger than this are refused, in bytes.
  static constexpr std::size_t kMaxBytes = std::size_t{16} << 20;

  SourceText(std::string name, std::string text);

  const std::string &Name() const { return name_; }
  std::string_view Text() const { return text_; }

  /// The line and column of a byte offset.
  Position Locate(std::uint32_t offset) const;
  std::size_t LineCount() const { return lineStarts_.size(); }

  /// The text of a line, counted from 1, without its line end.
  std::string_view Line(std::size_t number) const;

  /// The text of a span, valid as long as this object.
  std::string_view Slice(Span span) const { return Text().substr(span.begin, span.end - span.begin); }

 private:
  std::string name_;
  std::string text_;
  std::vector<std::uint32_t> lineStarts_;
};

/// The number of code points in well-formed UTF-8. In other bytes, those that don't continue a sequence are counted.
std::size_t CountCodePoints(std::string_view utf8);

}  // namespace quillbar::language
