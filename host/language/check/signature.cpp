// SPDX-License-Identifier: MIT
#include "host/language/check/signature.h"

#include <fmt/format.h>

#include <array>

#include "host/language/syntax/names.h"
#include "host/runtime/text_encoding.h"
#include "interface/declaration.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

std::array<std::span<const LibraryFunction>, 11> Tables() {
  return {StringFunctions(),   ConversionFunctions(), MathematicsFunctions(), ArrayFunctions(),
          SystemFunctions(),   VariantFunctions(),    StreamFunctions(),      FolderFunctions(),
          DatabaseFunctions(), DictionaryFunctions(), JsonFunctions()};
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
  const host::EnumerationInfo *enumeration = FindLibraryEnumeration(name);
  Type type = SameName(name, "Element") ? element
              : enumeration != nullptr  ? Type::Enumeration(*enumeration)
              : SameName(name, "Any")   ? Type(TypeKind::kString)
                                        : registry.FindType(name);
  return isArray ? type.ArrayOf() : type;
}

}  // namespace

std::string DescribeSignature(std::string_view name, std::span<const ParameterInfo> parameters, Type result) {
  std::string list;
  for (const ParameterInfo &parameter : parameters) {
    if (!list.empty()) list += ", ";
    if (parameter.optional) list += "Optional ";
    if (parameter.byRef) list += "ByRef ";
    if (parameter.isList) list += "ParamArray ";
    const bool isArray = parameter.type.IsArray() && !parameter.isList;
    list += fmt::format("{}{} As {}", parameter.name, isArray ? "()" : "",
                        parameter.isAny ? "Any" : parameter.type.Element().Name());
  }
  if (result.IsNone()) return fmt::format("Sub {}({})", name, list);
  return fmt::format("Function {}({}) As {}", name, list, result.Name());
}

std::string Callable::Describe() const {
  return DescribeSignature(name, std::span(*parameters).subspan(TakesReceiver() ? 1 : 0), result);
}

Callable MakeCallable(const host::MethodInfo &method) {
  // Without an owner: the parameters belong to the method.
  return {method.name, {std::shared_ptr<void>(), &method.parameters}, method.result, &method};
}

Callable MakeCallable(const LibraryFunction &function, Type receiver, Type element, const host::Registry &registry) {
  const Declaration declaration = ReadDeclaration(function.declaration).declaration;
  std::vector<ParameterInfo> parameters;
  if (function.form == LibraryFunction::Form::kMethod) {
    ParameterInfo &parameter = parameters.emplace_back();
    parameter.name = "receiver";
    parameter.type = receiver.IsArray() ? receiver : TypeInTable(function.owner, false, element, registry);
  }
  for (const ParameterDeclaration &written : declaration) {
    ParameterInfo &parameter = parameters.emplace_back();
    parameter.name = written.name;
    parameter.isAny = SameName(written.type, "Any");
    parameter.type = TypeInTable(written.type, written.isArray, element, registry);
    parameter.optional = written.optional;
    if (written.optional) parameter.defaultValue = host::ReadDefault(written.defaultValue, parameter.type);
  }
  if (function.takesList) parameters.back().isList = true;
  return {std::string(declaration.name), std::make_shared<const std::vector<ParameterInfo>>(std::move(parameters)),
          TypeInTable(declaration.resultType, declaration.resultIsArray, element, registry), &function};
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
    for (const host::KnownEncoding &known : host::KnownEncodings()) {
      if (known.scriptName.empty()) continue;
      info.members.push_back({std::string(known.scriptName), static_cast<std::int64_t>(known.encoding)});
    }
    return info;
  }();
  return type;
}

const host::EnumerationInfo *FindLibraryEnumeration(std::string_view name) {
  static const host::EnumerationInfo comparisonOptions = [] {
    host::EnumerationInfo info;
    info.name = info.qualifiedName = "ComparisonOptions";
    info.underlyingName = "Integer";
    info.members = {{"CaseInsensitive", 0}, {"CaseSensitive", 1}};
    return info;
  }();
  for (const host::EnumerationInfo *enumeration : {&TextEncodingType(), &comparisonOptions}) {
    if (SameName(enumeration->name, name)) return enumeration;
  }
  return nullptr;
}

}  // namespace quillbar::language
