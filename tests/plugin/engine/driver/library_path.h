// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace quillbar {

/// A path as the library's functions take it: UTF-16 in the machine's byte order, passed as bytes.
class LibraryPath {
 public:
  explicit LibraryPath(const std::filesystem::path &path) : text_(path.u16string()) {}
  explicit LibraryPath(std::u16string text) : text_(std::move(text)) {}
  operator const char *() const { return reinterpret_cast<const char *>(text_.c_str()); }

 private:
  std::u16string text_;
};

}  // namespace quillbar
