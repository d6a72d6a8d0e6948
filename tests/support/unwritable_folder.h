// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace quillbar::test {

/// While this lives, no user, not even the superuser, may make files in a folder.
class UnwritableFolder {
 public:
  explicit UnwritableFolder(std::filesystem::path folder);
  ~UnwritableFolder();
  UnwritableFolder(const UnwritableFolder &) = delete;
  UnwritableFolder &operator=(const UnwritableFolder &) = delete;

  /// False when this user may still write there.
  bool IsInForce() const;

 private:
  void Close();
  void Open();

  std::filesystem::path folder_;
};

}  // namespace quillbar::test
