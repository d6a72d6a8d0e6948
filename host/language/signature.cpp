// SPDX-License-Identifier: MIT
#include "host/language/signature.h"

#include <fmt/format.h>

#include <array>
#include <charconv>

#include "host/language/names.h"
#include "host/runtime/text_encoding.h"
#include "interface/declaration.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

std::array<std::span<const LibraryFunction>, 5> Tables() {
  return {StringFunctions(), ConversionFunctions(), MathematicsFunctions(), ArrayFunctions(), SystemFunctions()};
}

template <class Visit>
void ForEachFunction(LibraryFunction::Form form, std::string_view owner, Visit visit) {
  for (const std::span<const LibraryFunction> table : Tables()) {
    for (const LibraryFunction &function : table) {
      if (function.form == form && SameName(function.owner, owner)) visit(function);
    }
  }
}

Type TypeInTable(std::string_view name, bool isArray, Type element, const host::Registry &registry) {
  if (name.empty()) return {};
  Type type = SameName(name, "Element")        ? element
              : SameName(name, "TextEncoding") ? Type::Enumeration(TextEncodingType())
              : SameName(name, "Any")          ? Type(TypeKind::kString)
                                               : registry.FindType(name);
  return isArray ? type.ArrayOf() : type;
}

/// The default values that the tables use: whole numbers, texts and Booleans.
host::Value DefaultInTable(std::string_view text, Type type) {
  if (text.empty()) return host::Value::Zero(type);
  if (text.front() == '"') return host::Value(text.substr(1, text.size() - 2));
  if (SameName(text, "True") || SameName(text, "False")) return host::Value(SameName(text, "True"));
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return host::Value(number).ConvertedTo(type);
}

}  // namespace

std::string DescribeSignature(std::string_view name, const std::vector<CallParameter> &parameters, Type result) {
  std::string list;
  for (const CallParameter &parameter : parameters) {
    if (!list.empty()) list += ", ";
    if (parameter.isOptional) list += "Optional ";
    if (parameter.byReference) list += "ByRef ";
    if (parameter.isList) list += "ParamArray ";
    const bool isArray = parameter.type.IsArray() && !parameter.isList;
    list += fmt::format("{}{} As {}", parameter.name, isArray ? "()" : "",
                        parameter.isAny ? "Any" : parameter.type.Element().Name());
  }
  if (result.IsNone()) return fmt::format("Sub {}({})", name, list);
  return fmt::format("Function {}({}) As {}", name, list, result.Name());
}

std::string Callable::Describe() const {
  const bool hasReceiver = std::holds_alternative<const LibraryFunction *>(target) &&
                           std::get<const LibraryFunction *>(target)->form == LibraryFunction::Form::kMethod;
  if (!hasReceiver) return DescribeSignature(name, parameters, result);
  return DescribeSignature(name, {parameters.begin() + 1, parameters.end()}, result);
}

Callable MakeCallable(const ScriptProcedure &procedure) {
  return {procedure.name, procedure.parameters, procedure.result, &procedure};
}

Callable MakeCallable(const host::MethodInfo &method) {
  Callable callable{method.name, {}, method.result, &method};
  for (const host::ParameterInfo &info : method.parameters) {
    CallParameter &parameter = callable.parameters.emplace_back();
    parameter.name = info.name;
    parameter.type = info.type;
    parameter.byReference = info.byRef;
    parameter.isOptional = info.optional;
  }
  return callable;
}

Callable MakeCallable(const LibraryFunction &function, Type receiver, Type element, const host::Registry &registry) {
  const Declaration declaration = ReadDeclaration(function.declaration).declaration;
  Callable callable{std::string(declaration.name), {}, {}, &function};
  callable.result = TypeInTable(declaration.resultType, declaration.resultIsArray, element, registry);
  if (function.form == LibraryFunction::Form::kMethod) {
    CallParameter &parameter = callable.parameters.emplace_back();
    parameter.name = "receiver";
    parameter.type =
        SameName(function.owner, "Array") ? receiver : TypeInTable(function.owner, false, element, registry);
  }
  for (const ParameterDeclaration &written : declaration) {
    CallParameter &parameter = callable.parameters.emplace_back();
    parameter.name = written.name;
    parameter.isAny = SameName(written.type, "Any");
    parameter.type = TypeInTable(written.type, written.isArray, element, registry);
    parameter.isOptional = written.optional;
    if (written.optional) parameter.defaultValue = DefaultInTable(written.defaultValue, parameter.type);
  }
  return callable;
}

std::string_view NameOf(const LibraryFunction &function) {
  return function.declaration.substr(0, function.declaration.find('('));
}

std::vector<const LibraryFunction *> FindLibraryFunctions(std::string_view name, LibraryFunction::Form form,
                                                          std::string_view owner) {
  std::vector<const LibraryFunction *> found;
  ForEachFunction(form, owner, [&](const LibraryFunction &function) {
    if (SameName(NameOf(function), name)) found.push_back(&function);
  });
  return found;
}

std::vector<std::string_view> LibraryNames(LibraryFunction::Form form, std::string_view owner) {
  std::vector<std::string_view> names;
  ForEachFunction(form, owner, [&](const LibraryFunction &function) { names.push_back(NameOf(function)); });
  return names;
}

const host::EnumerationInfo &TextEncodingType() {
  static const host::EnumerationInfo type = [] {
    host::EnumerationInfo info;
    info.name = info.qualifiedName = "TextEncoding";
    info.underlyingName = "UInt32";
    info.underlying = TypeKind::kUInt32;
    info.members = {{"UTF8", 0x08000100},
                    {"UTF16", 0x100},
                    {"ASCII", 0x600},
                    {"Bytes", 0xFFFF},
                    {"MacRoman", 0},
                    {"ISOLatin1", 0x201},
                    {"ISOLatin2", 0x202},
                    {"ISOLatin3", 0x203},
                    {"ISOLatin4", 0x204},
                    {"ISOLatinCyrillic", 0x205},
                    {"ISOLatinArabic", 0x206},
                    {"ISOLatinGreek", 0x207},
                    {"ISOLatinHebrew", 0x208},
                    {"ISOLatin5", 0x209},
                    {"ISOLatin6", 0x20A},
                    {"ISOLatin7", 0x20D},
                    {"ISOLatin8", 0x20E},
                    {"ISOLatin9", 0x20F},
                    {"WindowsANSI", 0x500},
                    {"WindowsLatin2", 0x501},
                    {"WindowsCyrillic", 0x502},
                    {"WindowsGreek", 0x503},
                    {"WindowsLatin5", 0x504},
                    {"WindowsHebrew", 0x505},
                    {"WindowsArabic", 0x506},
                    {"WindowsBalticRim", 0x507},
                    {"WindowsVietnamese", 0x508},
                    {"KOI8_R", 0xA02},
                    {"ShiftJIS", 0x420},
                    {"GBK", 0x421},
                    {"WindowsKorean", 0x422},
                    {"Big5", 0x423}};
    return info;
  }();
  return type;
}

}  // namespace quillbar::language
