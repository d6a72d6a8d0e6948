// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

/// Loading and unloading of dynamic libraries.
namespace quillbar::host::platform {

class SharedLibrary {
 public:
  /// Throws std::runtime_error with the system's explanation.
  explicit SharedLibrary(const std::filesystem::path &file);
  SharedLibrary(SharedLibrary &&other) noexcept;
  SharedLibrary &operator=(SharedLibrary &&) = delete;
  ~SharedLibrary();

  /// Null when the library exports no such symbol.
  void *Symbol(const char *name) const;

 private:
  void *handle_;
};

/// The file that the running program was started from.
std::filesystem::path ProgramFile();

/// What plugin libraries end in on this platform.
inline constexpr const char *kLibrarySuffix =
#ifdef _WIN32
    ".dll";
#elif defined(__APPLE__)
    ".dylib";
#else
    ".so";
#endif

}  // namespace quillbar::host::platform
