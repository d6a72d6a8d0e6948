// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>

#include "host/runtime/host.h"

namespace quillbar::program {

/// Loads these plugins, or, when none are named, the PDF writer and its companion from the program's own
/// folder. Throws HostError when one can't be loaded.
void LoadPlugins(host::Host &host, std::span<const std::filesystem::path> named);

}  // namespace quillbar::program
