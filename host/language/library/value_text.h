// SPDX-License-Identifier: MIT
#pragma once

#include "host/runtime/value.h"

namespace quillbar::language {

/// The text that `Str` and `Print` make of a number, String, Boolean, Color ("&hTTRRGGBB") or enumeration (its
/// number).
host::StringHandle TextOf(const host::Value &value);

}  // namespace quillbar::language
