// SPDX-License-Identifier: MIT
#pragma once

#ifndef _WIN32

#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "tests/support/temporary_folder.h"

namespace quillbar::test {

/// What the disk has for sure: of each file as much as it had when a call waited for the disk.
class SureDisk {
 public:
  void Seen(std::string_view call, int descriptor) {
    if (call != "fsync") return;
    struct stat status;
    if (fstat(descriptor, &status) != 0) return;
    if (S_ISDIR(status.st_mode)) {
      foldersAreSure_ = true;
    } else {
      sizes_[status.st_ino] = status.st_size;
    }
  }
  void Named() { foldersAreSure_ = false; }
  bool FoldersAreSure() const { return foldersAreSure_; }

  /// What a reader finds under the path at the worst after a power cut: a name may survive it, or not; the bytes that
  /// nothing waited for are lost.
  std::string Worst(const std::filesystem::path &path) const {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return {};
    const auto size = sizes_.find(status.st_ino);
    return ReadFile(path).substr(0, size == sizes_.end() ? 0 : static_cast<std::size_t>(size->second));
  }

 private:
  std::map<ino_t, off_t> sizes_;
  bool foldersAreSure_ = false;
};

}  // namespace quillbar::test

#endif
