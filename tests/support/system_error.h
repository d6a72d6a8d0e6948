// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>

/// The numbers with which the platform's C library refuses to open files. Windows has fewer of them.
namespace quillbar::test::system_error {

#ifdef _WIN32
inline constexpr int kFolder = EACCES;
inline constexpr int kBelowAFile = ENOENT;
inline constexpr int kNameTooLong = ENOENT;
#else
inline constexpr int kFolder = EISDIR;
inline constexpr int kBelowAFile = ENOTDIR;
inline constexpr int kNameTooLong = ENAMETOOLONG;
#endif

}  // namespace quillbar::test::system_error
