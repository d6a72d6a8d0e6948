// SPDX-License-Identifier: MIT
#include "host/language/check/context.h"

#include <fmt/format.h>

#include <iostream>
#include <utility>

#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/names.h"
#include "host/language/tree/literals.h"

namespace quillbar::language {
Checker::Checker(const SourceText &text, host::Host &scriptHost, Program &made, Diagnostics &diagnosticList)
    : source(text),
      host(scriptHost),
      program(made),
      procedure(&made.main),
      diagnostics_(diagnosticList),
      constantRuntime_(scriptHost, {std::cin, std::cerr, std::cerr}, {}, {}, {}) {}

void Checker::Fail(Span span, std::string message) { throw CheckError{span, std::move(message)}; }

host::Type Checker::FindType(std::string_view name) const {
  for (const host::EnumerationInfo &enumeration : program.enumerations) {
    if (SameName(enumeration.name, name)) return host::Type::Enumeration(enumeration);
  }
  for (const ScriptClass &part : program.classes) {
    if (SameName(part.info->name, name)) return host::Type::Class(*part.info);
  }
  if (const host::EnumerationInfo *enumeration = FindLibraryEnumeration(name)) {
    return host::Type::Enumeration(*enumeration);
  }
  return Registry().FindType(name);
}

host::Type Checker::ResolveType(const syntax::TypeName &name) const {
  const std::string written = fmt::format("{}", fmt::join(name.parts, "."));
  const host::Type type = FindType(written);
  if (type.IsNone()) {
    if (IsNameOfTheEnvironment(written)) Fail(name.span, NotPartOfThisHost(written));
    std::vector<std::string_view> candidates = {"Boolean", "Byte",   "Color",  "Double",   "Integer", "Int8",
                                                "Int16",   "Int32",  "Int64",  "Single",   "String",  "UInt8",
                                                "UInt16",  "UInt32", "UInt64", "UInteger", "Variant"};
    for (const host::ClassInfo *info : Registry().Classes()) candidates.push_back(info->name);
    for (const ScriptClass &part : program.classes) candidates.push_back(part.info->name);
    for (const host::EnumerationInfo &enumeration : program.enumerations) candidates.push_back(enumeration.name);
    Fail(name.span, fmt::format("there is no type \"{}\"{}", written, Suggestion(written, candidates)));
  }
  return name.isArray ? type.ArrayOf() : type;
}

Symbol *Checker::FindLocal(std::string_view name) {
  for (auto scope = scopes.rbegin(); scope != scopes.rend(); ++scope) {
    if (Symbol *symbol = scope->Find(name)) return symbol;
  }
  return nullptr;
}

Symbol *Checker::FindSymbol(std::string_view name) {
  if (Symbol *symbol = FindLocal(name)) return symbol;
  Symbol *symbol = globals.Find(name);
  return symbol != nullptr ? symbol : predefined.Find(name);
}

Symbol &Checker::Declare(Symbol symbol) {
  const Span span = symbol.span;
  const std::string name = symbol.name;
  Scope &scope = scopes.empty() ? globals : scopes.back();
  Symbol *added = scope.Add(std::move(symbol));
  if (added == nullptr) {
    const Position earlier = source.Locate(scope.Find(name)->span.begin);
    Fail(span, fmt::format("\"{}\" is declared already in line {}", name, earlier.line));
  }
  return *added;
}

std::size_t Checker::NewLocal(host::Type type) {
  const std::size_t slot = procedure->cellCount++;
  const Representation representation = RepresentationOf(type);
  if (IsOwning(representation)) procedure->owningCells.push_back({slot, representation});
  return slot;
}

std::size_t Checker::NewGlobal(host::Type type) {
  program.globals.push_back(RepresentationOf(type));
  return program.globals.size() - 1;
}

VariablePointer Checker::MakeVariable(const Symbol &symbol, Span span) const {
  switch (symbol.kind) {
    case Symbol::Kind::kLocal:
      return std::make_unique<LocalVariable>(symbol.type, span, symbol.slot);
    case Symbol::Kind::kGlobal:
      return std::make_unique<GlobalVariable>(symbol.type, span, symbol.slot);
    case Symbol::Kind::kReference:
      return std::make_unique<ReferencedVariable>(symbol.type, span, symbol.slot);
    default:
      throw CheckError{span, {}};
  }
}

Symbol Checker::NewTemporary(host::Type type) {
  Symbol symbol;
  symbol.kind = Symbol::Kind::kLocal;
  symbol.type = type;
  symbol.slot = NewLocal(type);
  return symbol;
}

ExpressionPointer Checker::Fold(ExpressionPointer expression) {
  const bool isLiteral = expression->kind == NodeKind::kInteger || expression->kind == NodeKind::kLiteral;
  if (isLiteral || !expression->IsConstant()) return expression;
  return MakeConstant(ConstantValue(*expression), expression->span);
}

host::Value Checker::ConstantValue(const Expression &expression) {
  Frame frame{constantRuntime_, program.main, nullptr, {}, nullptr};
  try {
    return expression.Evaluate(frame);
  } catch (const Raised &raised) {
    Fail(raised.trace.front().span, raised.message);
  }
}

}  // namespace quillbar::language
