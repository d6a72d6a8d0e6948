// SPDX-License-Identifier: MIT
#include "host/program/watch/file_state.h"

#include <functional>
#include <string>
#include <system_error>

#include "host/runtime/platform/file_system.h"

namespace quillbar::program {

FileState StateOf(const std::filesystem::path &path) {
  namespace platform = host::platform;
  std::error_code error;
  FileState state;
  switch (platform::KindOf(path)) {
    case platform::FileKind::kFile:
      state = {FileState::Kind::kFile, platform::FileSize(path), std::filesystem::last_write_time(path, error)};
      return error ? FileState{} : state;
    case platform::FileKind::kFolder:
      state.kind = FileState::Kind::kFolder;
      for (const std::filesystem::path &child : platform::ListFolder(path, error)) {
        state.size = state.size * 31 + std::hash<std::string>()(child.filename().string());
      }
      return state;
    default:
      return state;
  }
}

}  // namespace quillbar::program
