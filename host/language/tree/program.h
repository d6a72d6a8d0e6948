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

/// A class, an interface, a module or a delegate that the script declares. All members of a module are shared.
struct ScriptClass : host::MemberCode {
  host::ClassInfo *info = nullptr;
  std::string qualifiedName;                   // with the modules that contain it
  const host::ClassInfo *container = nullptr;  // the module that it is declared in
  host::Access access = host::Access::kPublic;
  bool isModule = false;
  bool isDelegate = false;
  std::vector<Representation> fields;     // by slot
  Procedure initializer;                  // gives the fields their first values
  const Procedure *destructor = nullptr;  // null: none of its own
  struct Handler {
    const host::EventInfo *event;
    const host::MethodInfo *method;
  };
  std::vector<Handler> handlers;  // of the events of its superclasses
};

/// The script's part of a class; null for a class of the host or of a plugin.
inline const ScriptClass *ScriptPartOf(const host::ClassInfo *info) {
  return info == nullptr ? nullptr : static_cast<const ScriptClass *>(info->code);
}

inline bool IsDelegate(const host::ClassInfo *info) {
  const ScriptClass *part = ScriptPartOf(info);
  return part != nullptr && part->isDelegate;
}

inline bool IsModule(const host::ClassInfo *info) {
  const ScriptClass *part = ScriptPartOf(info);
  return part != nullptr && part->isModule;
}

/// A checked script, ready to run. Frames, cells and nodes refer to it; it must outlive them.
struct Program {
  Procedure main;
  std::deque<Procedure> procedures;
  std::deque<host::MethodInfo> methods;  // the heads of the script's Subs and Functions
  std::deque<ScriptClass> classes;
  Procedure initializer;                           // gives shared properties their first values, before everything else
  std::deque<host::EnumerationInfo> enumerations;  // declared by the script
  std::vector<Representation> globals;
  std::size_t argumentsSlot = 0;  // the global variable `Arguments`
};

}  // namespace quillbar::language
