// SPDX-License-Identifier: MIT
#include "host/program/used_files.h"

#include <fstream>
#include <utility>

#include "host/runtime/platform/file_system.h"
#include "platform/openable_path.h"

namespace quillbar::program {

UsedFiles::UsedFiles(std::filesystem::path list, host::HostOptions &options) : list_(std::move(list)) {
  if (list_.empty()) return;
  options.usesFile = [this](const std::filesystem::path &path) { used_.insert(path); };
}

UsedFiles::~UsedFiles() {
  if (list_.empty()) return;
  std::ofstream file(quillbar::platform::OpenablePath(list_), std::ios::binary);
  for (const std::filesystem::path &path : used_) file << host::platform::Utf8Path(path) << '\0';
}

}  // namespace quillbar::program
