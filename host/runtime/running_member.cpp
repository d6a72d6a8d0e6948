// SPDX-License-Identifier: MIT
#include "host/runtime/running_member.h"

#include "host/runtime/class_model.h"

namespace quillbar::host {

std::string RunningMember::Name() const {
  switch (part) {
    case Part::kOutside:
      return "outside of any member";
    case Part::kEntry:
      return "REALPluginMain";
    case Part::kMethod:
      return static_cast<const MethodInfo *>(info)->FullName();
    case Part::kMethodSetter:
      return "assignment to " + static_cast<const MethodInfo *>(info)->FullName();
    case Part::kGetter:
      return "getter of " + static_cast<const PropertyInfo *>(info)->FullName();
    case Part::kSetter:
      return "setter of " + static_cast<const PropertyInfo *>(info)->FullName();
    case Part::kConstructor:
      return "class constructor of " + static_cast<const ClassInfo *>(info)->name;
    case Part::kDestructor:
      return "class destructor of " + static_cast<const ClassInfo *>(info)->name;
    case Part::kEvent:
      return "event " + static_cast<const EventInfo *>(info)->FullName();
  }
  return {};
}

}  // namespace quillbar::host
