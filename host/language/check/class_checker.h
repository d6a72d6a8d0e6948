// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/check/context.h"

/// Checks the classes that a script declares, in steps, because they may mention each other.
namespace quillbar::language {

/// Makes classes, interfaces and modules known by their names, and the modules that `Using` names.
void EnterClasses(Checker &checker, const syntax::Script &script);

/// Makes the members of a module known by their names alone, until the block ends that is being checked.
void EnterUsing(Checker &checker, const syntax::Using &written);

/// Checks a constant of a class or module, if it is there and hasn't been checked yet. Fails at `span` when that is being
/// done.
void EnterConstantOf(Checker &checker, const host::ClassInfo &info, std::string_view name, Span span);

/// Finds the superclasses and interfaces, then enters the members of every class, after those of its superclass.
void EnterClassMembers(Checker &checker, const syntax::Script &script);

/// Checks the first values of properties and the bodies of methods.
void CheckClasses(Checker &checker, const syntax::Script &script);

}  // namespace quillbar::language
