// SPDX-License-Identifier: MIT
#include "host/language/check/signature.h"

#include <fmt/format.h>

#include <array>
#include <charconv>

#include "host/language/syntax/names.h"
#include "host/runtime/text_encoding.h"
#include "interface/declaration.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

/// A member of the scripts' enumeration TextEncoding.
struct EncodingMember {
  const char *name;
  TextEncoding encoding;
};

constexpr EncodingMember kTextEncodings[] = {
    {"UTF8", TextEncoding::kUtf8},
    {"UTF16", TextEncoding::kUtf16},
    {"ASCII", TextEncoding::kAscii},
    {"Bytes", TextEncoding::kRawBytes},
    {"MacRoman", TextEncoding::kMacRoman},
    {"ISOLatin1", TextEncoding::kIso8859_1},
    {"ISOLatin2", TextEncoding::kIso8859_2},
    {"ISOLatin3", TextEncoding::kIso8859_3},
    {"ISOLatin4", TextEncoding::kIso8859_4},
    {"ISOLatinCyrillic", TextEncoding::kIso8859_5},
    {"ISOLatinArabic", TextEncoding::kIso8859_6},
    {"ISOLatinGreek", TextEncoding::kIso8859_7},
    {"ISOLatinHebrew", TextEncoding::kIso8859_8},
    {"ISOLatin5", TextEncoding::kIso8859_9},
    {"ISOLatin6", TextEncoding::kIso8859_10},
    {"ISOLatin7", TextEncoding::kIso8859_13},
    {"ISOLatin8", TextEncoding::kIso8859_14},
    {"ISOLatin9", TextEncoding::kIso8859_15},
    {"WindowsANSI", TextEncoding::kWindows1252},
    {"WindowsLatin2", TextEncoding::kWindows1250},
    {"WindowsCyrillic", TextEncoding::kWindows1251},
    {"WindowsGreek", TextEncoding::kWindows1253},
    {"WindowsLatin5", TextEncoding::kWindows1254},
    {"WindowsHebrew", TextEncoding::kWindows1255},
    {"WindowsArabic", TextEncoding::kWindows1256},
    {"WindowsBalticRim", TextEncoding::kWindows1257},
    {"WindowsVietnamese", TextEncoding::kWindows1258},
    {"KOI8_R", TextEncoding::kKoi8R},
    {"ShiftJIS", TextEncoding::kWindows932},
    {"GBK", TextEncoding::kWindows936},
    {"WindowsKorean", TextEncoding::kWindows949},
    {"Big5", TextEncoding::kWindows950},
};

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

/// A default value of the tables: a whole number, a text or a Boolean.
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
    for (const auto &[member, encoding] : kTextEncodings)
      info.members.push_back({member, static_cast<std::int64_t>(encoding)});
    return info;
  }();
  return type;
}

}  // namespace quillbar::language
