// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace quillbar::host {

/// The piece of plugin code that is running: a member, the entry point, a constructor, a destructor or an event. It is
/// entered with every reference that a plugin is given; the name is put together only when a report needs it.
struct RunningMember {
  enum class Part { kOutside, kEntry, kMethod, kMethodSetter, kGetter, kSetter, kConstructor, kDestructor, kEvent };

  Part part = Part::kOutside;
  const void *info = nullptr;  // MethodInfo, PropertyInfo, ClassInfo or EventInfo, as `part` says

  /// How reports name it: "Page.MoveTo(x as Single,y as Single)", "getter of Page.Width", "class destructor of Page".
  std::string Name() const;
};

}  // namespace quillbar::host
