// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "host/runtime/class_model.h"

namespace quillbar::program {

/// Writes the modules and classes that plugins registered as a Markdown reference: every property with its access,
/// every method, event and enumeration, worded as registered.
std::string Describe(const host::Registry &registry);

}  // namespace quillbar::program
