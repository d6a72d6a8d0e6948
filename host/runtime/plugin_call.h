// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "host/runtime/internals.h"

namespace quillbar::host {

/// Calls a member of a plugin: lends it the object and the arguments, takes over its result, and throws what script
/// code threw meanwhile. Arguments must already have the parameters' types; ByRef arguments are changed in place.
Value CallPlugin(Host &host, ForeignFunction &function, const ObjectHandle &object, std::span<Value> arguments);

}  // namespace quillbar::host
