// SPDX-License-Identifier: MIT
// The platform seam of the library's files: paths are UTF-16 everywhere inside, as the host hands them over.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

namespace quillbar::engine {

// A path as the platform's file functions take it: UTF-16 on Windows, UTF-8 elsewhere.
#ifdef _WIN32
using NativePath = std::wstring;
#else
using NativePath = std::string;
#endif

// `utf16Path` (the machine's byte order, ended by a 16-bit nul, passed through the library as const char *)
// as a native path. Without a value, with errno set to EILSEQ, if it has an unpaired surrogate that the
// platform cannot express.
std::optional<NativePath> NativePathOf(const char *utf16Path);

// The UTF-16 units at `bytes` (the machine's byte order), up to the 16-bit nul that ends them. The text need
// not lie on an even address.
std::u16string CopyUtf16(const char *bytes);

// Opens a file like fopen. A path of any length, on Windows too. `mode` is in ASCII. Null with errno set on
// failure.
std::FILE *OpenNative(const NativePath &path, const char *mode);

// Whether the path leads to something that is no regular file: a folder, a device, a pipe.
bool LeadsElsewhere(const NativePath &path);

}  // namespace quillbar::engine
