// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "interface/values.h"

namespace quillbar::language {

/// A file that a script reads or writes. Every failure is an IOException that names the file and quotes the system's
/// message.
class FileStream {
 public:
  enum class Mode { kRead, kReadWrite, kCreate, kAppend };

  /// Opens the file of a FolderItem. Throws for Nil, a folder, and what the system refuses.
  void Open(Object folderItem, Mode mode);
  /// Closes the file if it is open. Throws when what was written could not be stored.
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
  void Flush();

  /// The position in bytes from the start of the file.
  std::uint64_t Position();
  void SetPosition(std::uint64_t position);
  /// The size of the file in bytes.
  std::uint64_t Size();

 private:
  [[noreturn]] void Fail(std::string_view action, int errorNumber) const;
  void RequireOpen(std::string_view action) const;
  /// Sets the position anew, which C streams need between reading and writing.
  void Prepare(bool writes);

  std::fstream stream_;
  std::filesystem::path path_;
  bool lastWrote_ = false;
};

}  // namespace quillbar::language
