// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// Files and folders, with paths of any characters and any length, and paths as UTF-8. The standard library does this
/// on Linux; on Windows its file functions stop at the system's old limit of 260 characters.
namespace quillbar::host::platform {

std::filesystem::path PathFromUtf8(std::string_view utf8);

/// Conversions between paths and UTF-8, whatever the program's locale or code page.
std::string Utf8Path(const std::filesystem::path &path);

/// The system's message for an error, as UTF-8.
std::string ErrorText(const std::error_code &error);

/// The path made absolute, without "." and "..", and without a separator at the end, so that its last part is the
/// name. Links are not followed.
std::filesystem::path NormalPath(const std::filesystem::path &path);

/// The one path of an existing file, with links followed.
std::filesystem::path CanonicalPath(const std::filesystem::path &path, std::error_code &error);

enum class FileKind { kNone, kFile, kFolder, kOther };

/// What kind of thing the path names, with links followed.
FileKind KindOf(const std::filesystem::path &path);

/// Whether something has this path, even a link to nothing.
bool IsTaken(const std::filesystem::path &path);

/// The size of a file in bytes; 0 when there is no such file.
std::uint64_t FileSize(const std::filesystem::path &path);

/// What a folder contains, sorted by name so that every run sees the same order.
std::vector<std::filesystem::path> ListFolder(const std::filesystem::path &path, std::error_code &error);

/// Renames or moves; replaces a file that has the new path already.
void Rename(const std::filesystem::path &from, const std::filesystem::path &to, std::error_code &error);

/// Removes a file or an empty folder; false when there is none.
bool Remove(const std::filesystem::path &path, std::error_code &error);

/// Creates a folder; succeeds when there is one already.
void CreateFolder(const std::filesystem::path &path, std::error_code &error);

/// Copies a file, or a folder with everything in it. Never replaces a file, and leaves no part of one.
void Copy(const std::filesystem::path &from, const std::filesystem::path &to, std::error_code &error);

}  // namespace quillbar::host::platform
