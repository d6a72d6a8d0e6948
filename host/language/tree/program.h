// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <vector>

#include "host/language/syntax/source_text.h"
#include "host/language/tree/code.h"
#include "host/runtime/class_model.h"

namespace quillbar::language {

/// The procedure of a method that a script declares.
inline Procedure &CodeOf(const host::MethodInfo &method) {
  return const_cast<Procedure &>(static_cast<const Procedure &>(*method.code));
}

/// A checked script, ready to run. Frames, cells and nodes refer to it; it must outlive them.
struct Program {
  Procedure main;
  std::deque<Procedure> procedures;
  std::deque<host::MethodInfo> methods;            // the heads of the script's Subs and Functions
  std::deque<host::EnumerationInfo> enumerations;  // declared by the script
  std::vector<Representation> globals;
  std::size_t argumentsSlot = 0;  // the global variable `Arguments`
};

}  // namespace quillbar::language
