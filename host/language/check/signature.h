// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "host/language/library/library.h"
#include "host/runtime/class_model.h"

namespace quillbar::language {

using host::ParameterInfo;

/// One of the overloads that a call chooses from: a method, or a line of the library.
struct Callable {
  std::string name;
  std::shared_ptr<const std::vector<ParameterInfo>> parameters;
  host::Type result;
  std::variant<const host::MethodInfo *, const LibraryFunction *> target;

  const host::MethodInfo *Method() const {
    const auto *method = std::get_if<const host::MethodInfo *>(&target);
    return method == nullptr ? nullptr : *method;
  }
  const LibraryFunction *Library() const {
    const auto *function = std::get_if<const LibraryFunction *>(&target);
    return function == nullptr ? nullptr : *function;
  }
  /// Whether the first parameter is the value before the dot.
  bool TakesReceiver() const {
    return Library() != nullptr ? Library()->form == LibraryFunction::Form::kMethod : Method()->isExtension;
  }
  bool TakesList() const { return !parameters->empty() && parameters->back().isList; }

  /// The callable as it would be declared: "Sub MoveTo(x As Single, y As Single)".
  std::string Describe() const;
};

/// The callable for a method of a class or module, or a Sub or Function of the script, which must live longer.
Callable MakeCallable(const host::MethodInfo &method);

/// The callable for a line of the library. `element` replaces `Element`. A receiver becomes the first parameter.
Callable MakeCallable(const LibraryFunction &function, host::Type receiver, host::Type element,
                      const host::Registry &registry);

/// "Sub name(…)" or "Function name(…) As Type".
std::string DescribeSignature(std::string_view name, std::span<const ParameterInfo> parameters, host::Type result);

/// The type `TextEncoding`, whose members scripts reach as `Encodings.UTF8`. Its values are the host's codes.
const host::EnumerationInfo &TextEncodingType();

/// An enumeration of the library by its name: `TextEncoding`, `ComparisonOptions`; null when it has none of this name.
const host::EnumerationInfo *FindLibraryEnumeration(std::string_view name);

/// Every line of the tables with this name and form; for methods and shared functions, of this `owner`.
std::vector<const LibraryFunction *> FindLibraryFunctions(std::string_view name, LibraryFunction::Form form,
                                                          std::string_view owner = {});

/// The names of all functions of this form, for suggestions.
std::vector<std::string_view> LibraryNames(LibraryFunction::Form form, std::string_view owner = {});

/// The name before the parenthesis of a declaration.
std::string_view NameOf(const LibraryFunction &function);

}  // namespace quillbar::language
