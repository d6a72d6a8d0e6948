// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <set>

#include "host/runtime/host.h"

namespace quillbar::program {

/// Notes the files that a script asks for while it lives, and then lists them in a file: each path in UTF-8, ended by a
/// NUL.
class UsedFiles {
 public:
  /// Nothing is noted when `list` is empty. The host that gets the options must not outlive this.
  UsedFiles(std::filesystem::path list, host::HostOptions &options);
  ~UsedFiles();
  UsedFiles(const UsedFiles &) = delete;
  UsedFiles &operator=(const UsedFiles &) = delete;

 private:
  std::filesystem::path list_;
  std::set<std::filesystem::path> used_;
};

}  // namespace quillbar::program
