// A folder for one test, removed with everything in it, and paths as the library takes them.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quillbar {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quillbar-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  std::filesystem::path operator/(const std::filesystem::path &name) const { return path_ / name; }
  const std::filesystem::path &path() const { return path_; }
  bool IsEmpty() const { return std::filesystem::is_empty(path_); }

 private:
  std::filesystem::path path_;
};

// A path in UTF-16, passed as the bytes that the library's functions take.
class LibraryPath {
 public:
  explicit LibraryPath(const std::filesystem::path &path) : text_(path.u16string()) {}
  explicit LibraryPath(std::u16string text) : text_(std::move(text)) {}
  operator const char *() const { return reinterpret_cast<const char *>(text_.c_str()); }

 private:
  std::u16string text_;
};

inline std::string BytesOf(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace quillbar
