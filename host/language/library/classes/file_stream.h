// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "host/runtime/platform/file_replacement.h"
#include "interface/values.h"

namespace quillbar::language {

/// A file that a script reads or writes. Every failure is an IOException that names the file and quotes the system's
/// message.
///
/// A file that is created in the place of another one is written beside it, and takes its place when it is flushed or
/// closed: neither the end of the process nor a power cut leaves a part of it under its name. Whatever can't be replaced
/// is written in place (host/runtime/platform/file_replacement.h), and so is what is appended or changed.
class FileStream {
 public:
  enum class Mode { kRead, kReadWrite, kCreate, kAppend };

  FileStream() = default;
  /// As Close does, but nobody is told of failures.
  ~FileStream();
  FileStream(const FileStream &) = delete;
  FileStream &operator=(const FileStream &) = delete;

  /// Opens the file of a FolderItem. Throws for Nil, a folder, and what the system refuses.
  void Open(Object folderItem, Mode mode);
  /// Closes the file if it is open, and waits until the disk has what was written. Throws when that could not be stored;
  /// a file that was to be replaced then stays as it was.
  void Close();

  bool IsAtEnd();
  /// Reads the next bytes; fewer at the end of the file.
  std::string Read(std::size_t count);
  /// Reads the next bytes of UTF-8 text, and up to 3 more when they end inside a character.
  std::string ReadWholeCharacters(std::size_t count);
  std::string ReadAll();
  /// Reads up to the next LF, CR LF or CR, which is consumed too.
  std::string ReadLine();
  void Write(std::string_view bytes);
  /// Gives what was written to the system, so that all who read the file see it.
  void Flush();

  /// The position in bytes from the start of the file.
  std::uint64_t Position();
  void SetPosition(std::uint64_t position);
  /// The size of the file in bytes.
  std::uint64_t Size();

 private:
  [[noreturn]] void Fail(std::string_view action, int errorNumber) const;
  [[noreturn]] void Fail(std::string_view action, const std::error_code &error) const;
  /// Fails, and gives a replacement up: part of it is missing.
  [[noreturn]] void FailWriting(int errorNumber);
  /// Closes the stream and leaves the file that was to be replaced, if one was.
  void GiveUp();
  /// Closes the stream and puts the replacement in its place.
  void Replace();
  void RequireOpen(std::string_view action) const;
  /// Sets the position anew, which C streams need between reading and writing.
  void Prepare(bool writes);

  std::fstream stream_;
  std::filesystem::path path_;
  std::optional<host::platform::Replacement> replacement_;  // until it is in its place
  bool lastWrote_ = false, isForWriting_ = false;
};

}  // namespace quillbar::language
