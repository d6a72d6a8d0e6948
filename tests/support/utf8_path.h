// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillbar::test {

/// A path's text in UTF-8, whatever the platform's own form of paths, and back.
inline std::string Utf8(const std::filesystem::path &path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

inline std::filesystem::path PathOf(std::string_view utf8) { return std::u8string(utf8.begin(), utf8.end()); }

}  // namespace quillbar::test
