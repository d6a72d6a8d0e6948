#pragma once

#include <string>

#include "interface/services.h"

namespace quillbar {

/// The plugin's library, loaded for the life of this object.
class LoadedPlugin {
 public:
  explicit LoadedPlugin(const std::string &path = QUILLBAR_PLUGIN_FILE);
  ~LoadedPlugin();
  LoadedPlugin(const LoadedPlugin &) = delete;
  LoadedPlugin &operator=(const LoadedPlugin &) = delete;

  /// Calls the entry point with this resolver.
  void Enter(Resolver resolver) const { main_(resolver); }

  /// Whether the library is in the process.
  static bool IsLoaded(const std::string &path = QUILLBAR_PLUGIN_FILE);

 private:
  void *library_;
  void (*main_)(Resolver);
};

}  // namespace quillbar
