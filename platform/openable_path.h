// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <string>
#include <string_view>
#endif

namespace quillbar::platform {

#ifdef _WIN32

/// `path` made absolute, with backslashes and without "." and "..", as the system reads it. The path itself
/// when the system can't read it. Of any length.
inline std::wstring FullPath(const std::wstring &path) {
  std::wstring full;
  for (DWORD size = MAX_PATH; size > full.size();) {
    full.resize(size);
    size = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (size == 0) return path;
    if (size < full.size()) {
      full.resize(size);
      return full;
    }
  }
  return path;
}

/// A path of any length in a form that file functions accept: paths as long as the system's old limit are prefixed
/// with "\\?\", which lifts it. Source of the rule: "Maximum Path Length Limitation", Win32.
inline std::wstring OpenablePath(const std::wstring &path) {
  // Folders have the tighter limit: a file name of the form 8.3 must still fit.
  constexpr std::size_t kLongestPlain = MAX_PATH - 12;
  std::wstring full = FullPath(path);
  const std::wstring_view start(full);
  if (full.size() < kLongestPlain || start.starts_with(LR"(\\?\)") || start.starts_with(LR"(\\.\)")) return path;
  return start.starts_with(LR"(\\)") ? LR"(\\?\UNC)" + full.substr(1) : LR"(\\?\)" + full;
}

/// A path object in a form that file functions accept.
inline std::filesystem::path OpenablePath(const std::filesystem::path &path) { return OpenablePath(path.native()); }

#else

/// A path of any length in a form that file functions accept: here every path is.
inline const std::filesystem::path &OpenablePath(const std::filesystem::path &path) { return path; }

#endif

}  // namespace quillbar::platform
