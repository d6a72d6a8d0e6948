// SPDX-License-Identifier: MIT
// Bytes as a file that is not on a disk, under a path that the library opens.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

namespace quillbar::fuzz {

/// A file in memory, which exists while this lives.
class MemoryFile {
 public:
  explicit MemoryFile(std::span<const std::uint8_t> bytes) : descriptor_(memfd_create("fuzzed", 0)) {
    while (!bytes.empty()) {
      const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
      if (written <= 0) {
        std::perror("memory_file");
        std::abort();
      }
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    for (const char c : "/proc/self/fd/" + std::to_string(descriptor_)) path_.push_back(static_cast<char16_t>(c));
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile &) = delete;
  MemoryFile &operator=(const MemoryFile &) = delete;

  /// The path as the library's functions take it: UTF-16 in the machine's byte order, passed as bytes.
  const char *LibraryPath() const { return reinterpret_cast<const char *>(path_.c_str()); }

 private:
  int descriptor_;
  std::u16string path_;
};

}  // namespace quillbar::fuzz
