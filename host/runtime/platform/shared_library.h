// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

/// Loading and unloading of dynamic libraries.
namespace quillbar::host::platform {

/// A loaded library. It is unloaded when this is destroyed.
class SharedLibrary {
 public:
  /// Loads a library. Throws std::runtime_error with the system's explanation when it can't be loaded.
  explicit SharedLibrary(const std::filesystem::path &file);
  SharedLibrary(SharedLibrary &&other) noexcept;
  SharedLibrary &operator=(SharedLibrary &&) = delete;
  ~SharedLibrary();

  /// The address of an exported symbol; null when the library exports no such symbol.
  void *Symbol(const char *name) const;

 private:
  void *handle_;
};

/// The path of the running program's own file.
std::filesystem::path ProgramFile();

/// The file name suffix of plugin libraries on this platform.
inline constexpr const char *kLibrarySuffix =
#ifdef _WIN32
    ".dll";
#elif defined(__APPLE__)
    ".dylib";
#else
    ".so";
#endif

}  // namespace quillbar::host::platform
