// SPDX-License-Identifier: MIT
/// Unicode's own files of data and of tests, as Debian's package unicode-data installs them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace quillbar::test {

inline constexpr char kUnicodeData[] = "/usr/share/unicode";

/// The lines of a file of Unicode's that are neither empty nor only a comment. They are part of this object: the longest
/// file has half a million.
class UnicodeLines {
 public:
  /// Throws std::runtime_error if the file can't be read.
  explicit UnicodeLines(const std::string &name) : text_(ReadFile(std::filesystem::path(kUnicodeData) / name)) {
    for (std::size_t start = 0; start < text_.size();) {
      const std::size_t end = std::min(text_.find('\n', start), text_.size());
      if (end > start && text_[start] != '#') lines_.emplace_back(text_.data() + start, end - start);
      start = end + 1;
    }
  }
  UnicodeLines(const UnicodeLines &) = delete;
  UnicodeLines &operator=(const UnicodeLines &) = delete;

  auto begin() const { return lines_.begin(); }
  auto end() const { return lines_.end(); }

 private:
  std::string text_;
  std::vector<std::string_view> lines_;
};

/// The version that a file's first line names: "15.0.0".
inline std::string UnicodeVersionOf(const std::string &name) {
  std::ifstream file(std::filesystem::path(kUnicodeData) / name);
  std::string line;
  std::getline(file, line);
  const std::size_t dash = line.rfind('-'), end = line.rfind(".txt");
  return dash < end && end != std::string::npos ? line.substr(dash + 1, end - dash - 1) : std::string();
}

/// The parts of a line between separators, without blanks around them.
inline std::vector<std::string> Fields(std::string_view line, char separator = ';') {
  std::vector<std::string> fields;
  for (std::size_t start = 0; start <= line.size();) {
    const std::size_t end = std::min(line.find(separator, start), line.size());
    const std::string_view field = line.substr(start, end - start);
    const std::size_t first = field.find_first_not_of(" \t\r"), last = field.find_last_not_of(" \t\r");
    fields.emplace_back(first == std::string_view::npos ? "" : field.substr(first, last - first + 1));
    start = end + 1;
  }
  return fields;
}

inline std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  for (std::size_t start = 0, end = 0; (start = text.find_first_not_of(" \t\r", end)) != std::string_view::npos;) {
    end = std::min(text.find_first_of(" \t\r", start), text.size());
    words.emplace_back(text.substr(start, end - start));
  }
  return words;
}

inline char32_t CodePoint(std::string_view hexadecimal) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(hexadecimal.data(), hexadecimal.data() + hexadecimal.size(), number, 16);
  if (error != std::errc() || end != hexadecimal.data() + hexadecimal.size())
    throw std::runtime_error("not a code point: " + std::string(hexadecimal));
  return number;
}

/// "U+4E00", for messages.
inline std::string NameOf(char32_t character) {
  std::ostringstream name;
  name << "U+" << std::hex << std::uppercase << static_cast<std::uint32_t>(character);
  return name.str();
}

}  // namespace quillbar::test

/// Skips the test with a message where the files are not installed.
#define QUILLBAR_NEEDS_UNICODE_DATA()                         \
  if (!std::filesystem::exists(quillbar::test::kUnicodeData)) \
  GTEST_SKIP() << "needs " << quillbar::test::kUnicodeData << " of the Debian package unicode-data"
