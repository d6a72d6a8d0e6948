// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>

/// Ways to keep files from growing. Only some systems offer them: a test that needs one asks `IsInForce` and is
/// skipped with a message where it isn't.
namespace quillbar::test {

/// While this lives, no file of this process may grow beyond `bytes`; further writing fails with EFBIG.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(std::uintmax_t bytes);
  ~FileSizeLimit();
  FileSizeLimit(const FileSizeLimit &) = delete;
  FileSizeLimit &operator=(const FileSizeLimit &) = delete;

  /// Whether this system enforces the limit.
  bool IsInForce() const { return isInForce_; }

 private:
  bool isInForce_ = false;
  std::uintmax_t former_ = 0;
  void (*formerAction_)(int) = nullptr;
};

/// A file system of its own with room for 64 KB, mounted on a new folder while this lives. When it is full, writing
/// fails with ENOSPC.
class SmallDisk {
 public:
  explicit SmallDisk(std::filesystem::path mountPoint);
  ~SmallDisk();
  SmallDisk(const SmallDisk &) = delete;
  SmallDisk &operator=(const SmallDisk &) = delete;

  /// Whether the file system could be mounted.
  bool IsInForce() const { return isInForce_; }

 private:
  std::filesystem::path mountPoint_;
  bool isInForce_ = false;
};

}  // namespace quillbar::test

/// Skips the test with a message where the system has no FileSizeLimit or SmallDisk.
#define QUILLBAR_NEEDS(limit) \
  if (!(limit).IsInForce()) GTEST_SKIP() << "this system, or this user, cannot make a file system or a file full"
