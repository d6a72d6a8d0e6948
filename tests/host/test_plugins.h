// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "host/runtime/platform/shared_library.h"

namespace quillbar {

/// The plugins that were made for these tests, by the name of their source file.
inline std::filesystem::path TestPlugin(const char *name) {
  return std::filesystem::path(TEST_PLUGIN_DIR) / ("test_plugin_" + std::string(name) + host::platform::kLibrarySuffix);
}

}  // namespace quillbar
