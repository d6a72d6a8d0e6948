// SPDX-License-Identifier: MIT
#include "tests/registry/loaded_plugin.h"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace quillbar {

LoadedPlugin::LoadedPlugin(const std::filesystem::path &file)
    : library_(file), main_(reinterpret_cast<void (*)(Resolver)>(library_.Symbol("REALPluginMain"))) {
  if (main_ == nullptr) throw std::runtime_error("the library has no REALPluginMain");
}

bool LoadedPlugin::IsLoaded(const std::filesystem::path &file) {
#ifdef _WIN32
  return GetModuleHandleW(file.filename().c_str()) != nullptr;
#else
  void *library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (library != nullptr) dlclose(library);
  return library != nullptr;
#endif
}

}  // namespace quillbar
