// SPDX-License-Identifier: MIT
#include <dlfcn.h>

#ifdef __APPLE__
#include <mach-o/dyld.h>

#include <cstdint>
#include <string>
#endif

#include <stdexcept>
#include <utility>

#include "host/runtime/platform/shared_library.h"

namespace quillbar::host::platform {

SharedLibrary::SharedLibrary(const std::filesystem::path &file) : handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
}

SharedLibrary::SharedLibrary(SharedLibrary &&other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
}

void *SharedLibrary::Symbol(const char *name) const { return dlsym(handle_, name); }

#ifdef __APPLE__

std::filesystem::path ProgramFile() {
  std::uint32_t size = 0;
  _NSGetExecutablePath(nullptr, &size);
  std::string path(size, '\0');
  if (_NSGetExecutablePath(path.data(), &size) != 0) throw std::runtime_error("the program has no path");
  return std::filesystem::canonical(path.c_str());
}

#else

std::filesystem::path ProgramFile() { return std::filesystem::read_symlink("/proc/self/exe"); }

#endif

}  // namespace quillbar::host::platform
