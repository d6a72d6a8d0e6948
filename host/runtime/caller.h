// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace quillbar::host {

/// The piece of plugin code that is running: noted with every reference that a plugin is given. The
/// name is only put together when a report needs it.
struct Caller {
  enum class Part { kOutside, kEntry, kMethod, kMethodSetter, kGetter, kSetter, kConstructor, kDestructor, kEvent };

  Part part = Part::kOutside;
  const void *info = nullptr;  // MethodInfo, PropertyInfo, ClassInfo or EventInfo, as `part` says

  std::string Name() const;
};

}  // namespace quillbar::host
