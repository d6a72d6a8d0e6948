// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/check/context.h"

/// Checks the classes that a script declares, in steps, because they may mention each other.
namespace quillbar::language {

/// Makes the classes known by their names.
void EnterClasses(Checker &checker, const syntax::Script &script);

/// Finds the superclasses, then enters the members of every class, after those of its superclass.
void EnterClassMembers(Checker &checker, const syntax::Script &script);

/// Checks the first values of properties and the bodies of methods.
void CheckClasses(Checker &checker, const syntax::Script &script);

}  // namespace quillbar::language
