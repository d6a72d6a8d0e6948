// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>

namespace quillbar::test {

/// A new folder, removed with everything in it when this is destroyed.
class TemporaryFolder {
 public:
  /// The folder is made inside `parent`; by default, where the system keeps temporary files.
  explicit TemporaryFolder(const std::filesystem::path &parent = std::filesystem::temp_directory_path());
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  /// The folder's path.
  const std::filesystem::path &path() const { return path_; }
  std::filesystem::path operator/(std::string_view utf8Name) const;
  /// Whether nothing is in it.
  bool IsEmpty() const { return std::filesystem::is_empty(path_); }

 private:
  std::filesystem::path path_;
};

/// The bytes of a file. A missing file throws std::runtime_error.
std::string ReadFile(const std::filesystem::path &file);
void WriteFile(const std::filesystem::path &file, std::string_view bytes);

}  // namespace quillbar::test
