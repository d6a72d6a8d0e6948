// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/check/context.h"

/// Checks interfaces and the classes that implement them.
namespace quillbar::language {

/// Finds the interfaces that classes implement and interfaces extend.
void EnterInterfaces(Checker &checker, const syntax::Script &script);

/// Enters the methods of an interface. Each has its own place in the dispatch tables of all classes.
void EnterInterfaceMethods(Checker &checker, const syntax::Class &written, host::ClassInfo &info);

/// Puts the methods of a class, which have been entered, into the places of the interfaces that it implements itself or
/// through its superclasses. Reports the methods that are missing.
void CheckImplementations(Checker &checker, const syntax::Class &written, host::ClassInfo &info);

}  // namespace quillbar::language
