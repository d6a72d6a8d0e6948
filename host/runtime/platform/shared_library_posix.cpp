#include <dlfcn.h>

#include <stdexcept>
#include <utility>

#include "host/runtime/platform/shared_library.h"

namespace quillbar::host::platform {

SharedLibrary::SharedLibrary(const std::filesystem::path &file)
    : handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
}

SharedLibrary::SharedLibrary(SharedLibrary &&other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
}

void *SharedLibrary::Symbol(const char *name) const { return dlsym(handle_, name); }

std::filesystem::path ProgramFile() { return std::filesystem::read_symlink("/proc/self/exe"); }

}  // namespace quillbar::host::platform
