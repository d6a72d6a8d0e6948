// SPDX-License-Identifier: MIT
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "host/runtime/platform/shared_library.h"
#include "host/runtime/platform/wide_text_windows.h"
#include "platform/openable_path.h"

namespace quillbar::host::platform {
namespace {

HMODULE Load(const std::filesystem::path &file) {
  // A library that can't be loaded is reported as our own error, not in a message box.
  DWORD mode = 0;
  SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode);
  // With an absolute path the system looks for what the library needs beside it first.
  const std::wstring path = quillbar::platform::OpenablePath(quillbar::platform::FullPath(file.native()));
  const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  const DWORD problem = GetLastError();
  SetThreadErrorMode(mode, nullptr);
  if (library == nullptr) throw std::runtime_error(SystemMessage(problem));
  return library;
}

}  // namespace

SharedLibrary::SharedLibrary(const std::filesystem::path &file) : handle_(Load(file)) {}

SharedLibrary::SharedLibrary(SharedLibrary &&other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) FreeLibrary(static_cast<HMODULE>(handle_));
}

void *SharedLibrary::Symbol(const char *name) const {
  return reinterpret_cast<void *>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::filesystem::path ProgramFile() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) throw std::runtime_error(SystemMessage(GetLastError()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(2 * path.size());
  }
}

}  // namespace quillbar::host::platform
