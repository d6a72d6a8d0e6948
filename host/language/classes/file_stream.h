// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "interface/values.h"

namespace quillbar::language {

/// A file that a script reads or writes. Every failure is an IOException that names the file and says what
/// the system says.
class FileStream {
 public:
  enum class Mode { kRead, kReadWrite, kCreate, kAppend };

  /// Opens the file of a FolderItem; throws for Nil, a folder, or what the system refuses.
  void Open(Object folderItem, Mode mode);
  /// Closes it if it is open; throws when what was written doesn't arrive.
  void Close();

  bool IsAtEnd();
  /// The next bytes; fewer at the end of the file.
  std::string Read(std::size_t count);
  /// The next bytes of UTF-8 text, and up to 3 more when they end inside a character.
  std::string ReadWholeCharacters(std::size_t count);
  std::string ReadAll();
  /// Up to the next LF, CR LF or CR, which is taken too.
  std::string ReadLine();
  void Write(std::string_view bytes);
  void Flush();

  std::uint64_t Position();
  void SetPosition(std::uint64_t position);
  std::uint64_t Size();

 private:
  [[noreturn]] void Fail(std::string_view action, int errorNumber) const;
  void RequireOpen(std::string_view action) const;
  /// Between reading and writing the position must be set anew.
  void Prepare(bool writes);

  std::fstream stream_;
  std::filesystem::path path_;
  bool lastWrote_ = false;
};

}  // namespace quillbar::language
