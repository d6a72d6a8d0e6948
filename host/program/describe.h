// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "host/runtime/class_model.h"

namespace quillbar::program {

/// Writes the modules and classes that plugins registered as a Markdown reference: every property with its access,
/// every method, event and enumeration, worded as registered.
std::string Describe(const host::Registry &registry);

/// The same as JSON (UTF-8, ended by a line feed), for programs: an object with the lists "modules" and "classes", the
/// classes outside of modules. Every method and event has its declaration and its parts.
std::string DescribeAsJson(const host::Registry &registry);

/// Whether scripts can make objects of the class; otherwise they come from methods of other classes.
bool IsCreatable(const host::ClassInfo &info);

/// The plugins' classes that are in no module; the host's own aren't among them.
std::vector<const host::ClassInfo *> ClassesOutsideOfModules(const host::Registry &registry);

}  // namespace quillbar::program
