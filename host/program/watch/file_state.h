// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>

namespace quillbar::program {

/// What tells one state of a file from another. A folder's state is the list of its names.
struct FileState {
  enum class Kind : std::uint8_t { kNone, kFile, kFolder };

  Kind kind = Kind::kNone;
  std::uint64_t size = 0;  // of a folder: a hash of its names
  std::filesystem::file_time_type changed{};

  bool operator==(const FileState &) const = default;
};

/// The state of what has this path now.
FileState StateOf(const std::filesystem::path &path);

}  // namespace quillbar::program
