#include "tests/registry/loaded_plugin.h"

#include <dlfcn.h>

#include <stdexcept>

namespace quillbar {

LoadedPlugin::LoadedPlugin(const std::string &path) : library_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (library_ == nullptr) throw std::runtime_error(dlerror());
  main_ = reinterpret_cast<void (*)(Resolver)>(dlsym(library_, "REALPluginMain"));
  if (main_ == nullptr) throw std::runtime_error(path + " has no REALPluginMain");
}

LoadedPlugin::~LoadedPlugin() { dlclose(library_); }

bool LoadedPlugin::IsLoaded(const std::string &path) {
  void *library = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (library != nullptr) dlclose(library);
  return library != nullptr;
}

}  // namespace quillbar
