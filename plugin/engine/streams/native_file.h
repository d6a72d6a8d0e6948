// SPDX-License-Identifier: MIT
/// Files with UTF-16 paths. The host's path can hold any character, and on Windows no encoding of bytes could carry
/// it; the library passes it on untouched, as a const char *.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

namespace quillbar::engine {

/// A path as the platform's file functions take it: UTF-16 on Windows, UTF-8 elsewhere.
#ifdef _WIN32
using NativePath = std::wstring;
#else
using NativePath = std::string;
#endif

/// `path` as a native path. Without a value, with errno set to EILSEQ, for an unpaired surrogate that the platform
/// can't express.
std::optional<NativePath> NativePathOf(const std::u16string &path);

/// The same from a text as the library passes it on: UTF-16 in the machine's byte order, ended by a 16-bit nul, at any
/// address. For null there is no value either (EINVAL).
std::optional<NativePath> NativePathOf(const char *utf16Path);

/// Opens a file as fopen does. A path of any length, on Windows too. `mode` is in ASCII. Null with errno set on
/// failure.
std::FILE *OpenNative(const NativePath &path, const char *mode);

/// Whether there is something at the path that isn't a regular file: a folder, a device, a pipe.
bool LeadsElsewhere(const NativePath &path);

}  // namespace quillbar::engine
