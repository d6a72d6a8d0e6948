// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/language/library/library.h"
#include "host/runtime/class_model.h"

namespace quillbar::language {

/// A parameter as calls see it, wherever the callable comes from.
struct CallParameter {
  std::string name;
  host::Type type;
  bool isAny = false;  // every number, String, Boolean, Color, enumeration
  bool byReference = false;
  bool isOptional = false;
  bool isList = false;  // ParamArray: any number of arguments of the array's element type
  host::Value defaultValue;
};

struct Callable;

/// A Sub or Function of the script, with the procedure that its body will fill.
struct ScriptProcedure {
  std::string name;
  Span nameSpan;
  std::vector<CallParameter> parameters;
  host::Type result;
  Procedure *procedure = nullptr;
};

/// One of the overloads that a call chooses from.
struct Callable {
  std::string name;
  std::vector<CallParameter> parameters;
  host::Type result;
  std::variant<const ScriptProcedure *, const LibraryFunction *, const host::MethodInfo *> target;

  /// The callable as it would be declared: "Sub MoveTo(x As Single, y As Single)".
  std::string Describe() const;
};

/// The callable for a Sub or Function of the script, or for a method of a class.
Callable MakeCallable(const ScriptProcedure &procedure);
Callable MakeCallable(const host::MethodInfo &method);

/// The callable for a line of the library. `element` replaces `Element`. A receiver becomes the first parameter.
Callable MakeCallable(const LibraryFunction &function, host::Type receiver, host::Type element,
                      const host::Registry &registry);

/// "Sub name(…)" or "Function name(…) As Type".
std::string DescribeSignature(std::string_view name, const std::vector<CallParameter> &parameters, host::Type result);

/// The type `TextEncoding`, whose members scripts reach as `Encodings.UTF8`. Its values are the host's codes.
const host::EnumerationInfo &TextEncodingType();

/// Every line of the tables with this name and form; for methods and shared functions, of this `owner`.
std::vector<const LibraryFunction *> FindLibraryFunctions(std::string_view name, LibraryFunction::Form form,
                                                          std::string_view owner = {});

/// The names of all functions of this form, for suggestions.
std::vector<std::string_view> LibraryNames(LibraryFunction::Form form, std::string_view owner = {});

/// The name before the parenthesis of a declaration.
std::string_view NameOf(const LibraryFunction &function);

}  // namespace quillbar::language
