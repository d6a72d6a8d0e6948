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

/// The text of one script, which may be in several files, with the names that error messages show for them.
///
/// The text is UTF-8; a byte order mark at the start of a file is dropped. Lines end with LF, CR LF or CR.
class SourceText {
 public:
  /// Files larger than this are refused, in bytes.
  static constexpr std::size_t kMaxBytes = std::size_t{16} << 20;
  /// The bytes of all files together.
  static constexpr std::size_t kMaxAllBytes = std::size_t{256} << 20;

  SourceText(std::string name, std::string text);

  /// Adds another file. The offsets of its text follow those of the files before it.
  void Add(std::string name, std::string text);

  /// One file: its name, where its text is, and its lines among all lines.
  struct File {
    std::string name;
    Span span;
    std::size_t firstLine = 0;
  };
  const std::vector<File> &Files() const { return files_; }

  /// The file to which a byte offset belongs.
  const File &FileAt(std::uint32_t offset) const;

  /// The text of all files.
  std::string_view Text() const { return text_; }

  /// The line and column of a byte offset, in its file.
  Position Locate(std::uint32_t offset) const;

  /// Where the line of a byte offset starts.
  std::uint32_t LineStart(std::uint32_t offset) const;

  /// The text of the line of a byte offset, without its line end.
  std::string_view LineAt(std::uint32_t offset) const;

  /// "line 4", or "line 4 of FILE" when that is another file than the one of `from`.
  std::string DescribeLine(std::uint32_t offset, std::uint32_t from) const;

  /// The text of a span, valid as long as this object.
  std::string_view Slice(Span span) const { return Text().substr(span.begin, span.end - span.begin); }

 private:
  std::vector<File> files_;
  std::string text_;
  std::vector<std::uint32_t> lineStarts_;
};

/// The number of code points in well-formed UTF-8. In other bytes, those that don't continue a sequence are counted.
std::size_t CountCodePoints(std::string_view utf8);

}  // namespace quillbar::language
