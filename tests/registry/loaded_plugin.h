// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "host/runtime/platform/shared_library.h"
#include "interface/services.h"

namespace quillbar {

/// The plugin's library, loaded for the life of this object.
class LoadedPlugin {
 public:
  explicit LoadedPlugin(const std::filesystem::path &file = QUILLBAR_PLUGIN_FILE);

  /// Calls the entry point with this resolver.
  void Enter(Resolver resolver) const { main_(resolver); }

  /// Whether the library is in the process.
  static bool IsLoaded(const std::filesystem::path &file = QUILLBAR_PLUGIN_FILE);

 private:
  host::platform::SharedLibrary library_;
  void (*main_)(Resolver);
};

}  // namespace quillbar
