// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "plugin/engine/streams/native_file.h"

namespace quillbar::engine {

/// A new file on its way to the disk. It is written under a temporary name in the folder where it belongs, and gets
/// its own name once it is whole and on the disk. So its name never means a part of it, whatever ends the process or
/// the machine. What no file can be renamed to, such as a device or a pipe, is written directly.
class WholeFile {
 public:
  /// Begins the file. Null with errno set when `path` can't be written: EEXIST for a file that exists, else what
  /// opening it for writing gives.
  static std::unique_ptr<WholeFile> Open(const NativePath &path);

  /// Without a successful Commit nothing of the file is left.
  virtual ~WholeFile() { Close(); }
  WholeFile(const WholeFile &) = delete;
  WholeFile &operator=(const WholeFile &) = delete;

  /// For writing; null after Commit.
  std::FILE *stream() const { return stream_; }

  /// Ends the writing and gives the file its name. 0, or the errno of what failed; EEXIST when a file of the name has
  /// appeared meanwhile, which stays as it is.
  virtual int Commit() = 0;

 protected:
  WholeFile() = default;

  void Write(std::FILE *stream) { stream_ = stream; }

  /// Flushes and closes the stream; `sync`, in between, puts the bytes on the disk (0 or an errno). 0, or the errno of
  /// the first failure.
  int Finish(int (*sync)(std::FILE *));

  /// Closes the stream. 0 or an errno. Nothing happens a second time.
  int Close();

 private:
  std::FILE *stream_ = nullptr;
};

/// A file that is written directly, at `path`. Null with errno set when it can't be opened.
std::unique_ptr<WholeFile> OpenDirectly(const NativePath &path);

/// A name that a new file may have until it is whole, of 8 to 40 ASCII characters, and another one each time. Others
/// may use the same name: the file is to be made with a call that fails then.
std::string NextTemporaryName();

}  // namespace quillbar::engine
