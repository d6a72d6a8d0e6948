// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include "host/runtime/host.h"

namespace quillbar::bench {

/// Stores the address of a registered method in `function`, whose type must be that of its declaration. Among
/// overloads, the one with this many parameters is meant; any number when there is only one method of the name.
template <class Function>
void FindMember(Function &function, const host::Host &host, const char *className, const char *method,
                std::size_t parameterCount = SIZE_MAX) {
  function = nullptr;
  for (const host::MethodInfo *overload : host.Class(className).FindMethods(method)) {
    if (parameterCount != SIZE_MAX && overload->parameters.size() != parameterCount) continue;
    if (function != nullptr) throw std::runtime_error(std::string(method) + " is not one method");
    function = reinterpret_cast<Function>(overload->function);
  }
  if (function == nullptr) throw std::runtime_error(std::string(className) + " has no method " + method);
}

}  // namespace quillbar::bench
