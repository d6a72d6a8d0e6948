// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// Files and folders, with paths of any characters and any length, and paths as UTF-8. The standard library
/// does this on Linux; on Windows its file functions stop at the system's old limit of 260 characters.
namespace quillbar::host::platform {

std::filesystem::path PathFromUtf8(std::string_view utf8);

/// Whatever the program's locale or code page.
std::string Utf8Path(const std::filesystem::path &path);

/// What the system says about an error, as UTF-8.
std::string ErrorText(const std::error_code &error);

/// Absolute, without "." and "..", and without a separator at the end, so that the last part is the name.
/// Links are not followed.
std::filesystem::path NormalPath(const std::filesystem::path &path);

/// The one path of an existing file, with links followed.
std::filesystem::path CanonicalPath(const std::filesystem::path &path, std::error_code &error);

enum class FileKind { kNone, kFile, kFolder, kOther };

/// What the path names in the end, with links followed.
FileKind KindOf(const std::filesystem::path &path);

/// Whether the path is taken, be it by a link that leads nowhere.
bool IsTaken(const std::filesystem::path &path);

/// The size of a file in bytes; 0 when it is none.
std::uint64_t FileSize(const std::filesystem::path &path);

/// What a folder holds, sorted by name so that every run sees the same order.
std::vector<std::filesystem::path> ListFolder(const std::filesystem::path &path, std::error_code &error);

/// Replaces a file that is there already.
void Rename(const std::filesystem::path &from, const std::filesystem::path &to, std::error_code &error);

/// Removes a file or an empty folder; false when there is none.
bool Remove(const std::filesystem::path &path, std::error_code &error);

/// Content when the folder is there already.
void CreateFolder(const std::filesystem::path &path, std::error_code &error);

/// Copies a file, or a folder with all that it holds. Never replaces a file.
void Copy(const std::filesystem::path &from, const std::filesystem::path &to, std::error_code &error);

}  // namespace quillbar::host::platform
