// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "interface/records.h"

namespace quillbar {

/// The module's classes in registration order. The host writes each one's data offset.
extern const std::array<ClassRecord *, 11> moduleClasses;

/// The module `QuillbarPDFWriter` with all eleven classes.
extern ModuleRecord moduleDefinition;

}  // namespace quillbar
