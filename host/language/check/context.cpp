// SPDX-License-Identifier: MIT
#include "host/language/check/checker_base.h"

#include <fmt/format.h>

#include <iostream>
#include <utility>

#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/names.h"
#include "host/language/tree/literals.h"

namespace quillbar::language {
namespace {

bool IsLiteral(const Expression &expression) {
  return dynamic_cast<const IntegerConstant *>(&expression) != nullptr ||
         dynamic_cast<const RealConstant *>(&expression) != nullptr ||
         dynamic_cast<const TextConstant *>(&expression) != nullptr ||
         dynamic_cast<const NilConstant *>(&expression) != nullptr;
}

}  // namespace

CheckerBase::CheckerBase(const SourceText &source, host::Host &host, Program &program, Diagnostics &diagnostics)
    : source_(source),
      host_(host),
      program_(program),
      diagnostics_(diagnostics),
      procedure_(&program.main),
      constantRuntime_(host, std::cerr, {}, {}) {}

void CheckerBase::Fail(Span span, std::string message) { throw CheckError{span, std::move(message)}; }

host::Type CheckerBase::FindType(std::string_view name) const {
  for (const host::EnumerationInfo &enumeration : program_.enumerations) {
    if (SameName(enumeration.name, name)) return host::Type::Enumeration(enumeration);
  }
  if (SameName(name, TextEncodingType().name)) return host::Type::Enumeration(TextEncodingType());
  return Registry().FindType(name);
}

host::Type CheckerBase::ResolveType(const syntax::TypeName &name) const {
  const std::string written = fmt::format("{}", fmt::join(name.parts, "."));
  const host::Type type = FindType(written);
  if (type.IsNone()) {
    if (IsNameOfTheEnvironment(written)) Fail(name.span, NotPartOfThisHost(written));
    std::vector<std::string_view> candidates = {"Boolean", "Byte",   "Color",  "Double",  "Integer", "Int8",
                                                "Int16",   "Int32",  "Int64",  "Single",  "String",  "UInt8",
                                                "UInt16",  "UInt32", "UInt64", "UInteger"};
    for (const host::ClassInfo *info : Registry().Classes()) candidates.push_back(info->name);
    for (const host::EnumerationInfo &enumeration : program_.enumerations) candidates.push_back(enumeration.name);
    Fail(name.span, fmt::format("there is no type \"{}\"{}", written, Suggestion(written, candidates)));
  }
  return name.isArray ? type.ArrayOf() : type;
}

Symbol *CheckerBase::FindSymbol(std::string_view name) {
  for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
    if (Symbol *symbol = scope->Find(name)) return symbol;
  }
  Symbol *symbol = globals_.Find(name);
  return symbol != nullptr ? symbol : predefined_.Find(name);
}

Symbol &CheckerBase::Declare(Symbol symbol) {
  const Span span = symbol.span;
  const std::string name = symbol.name;
  Scope &scope = scopes_.empty() ? globals_ : scopes_.back();
  Symbol *added = scope.Add(std::move(symbol));
  if (added == nullptr) {
    const Position earlier = source_.Locate(scope.Find(name)->span.begin);
    Fail(span, fmt::format("\"{}\" is declared already in line {}", name, earlier.line));
  }
  return *added;
}

std::size_t CheckerBase::NewLocal(host::Type type) {
  const std::size_t slot = procedure_->cellCount++;
  const Representation representation = RepresentationOf(type);
  if (IsOwning(representation)) procedure_->owningCells.push_back({slot, representation});
  return slot;
}

std::size_t CheckerBase::NewGlobal(host::Type type) {
  program_.globals.push_back(RepresentationOf(type));
  return program_.globals.size() - 1;
}

VariablePointer CheckerBase::MakeVariable(const Symbol &symbol, Span span) const {
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

Symbol CheckerBase::NewTemporary(host::Type type) {
  Symbol symbol;
  symbol.kind = Symbol::Kind::kLocal;
  symbol.type = type;
  symbol.slot = NewLocal(type);
  return symbol;
}

ExpressionPointer CheckerBase::Fold(ExpressionPointer expression) {
  if (!expression->IsConstant() || IsLiteral(*expression)) return expression;
  return MakeConstant(ConstantValue(*expression), expression->span);
}

host::Value CheckerBase::ConstantValue(const Expression &expression) {
  Frame frame{constantRuntime_, program_.main, nullptr, {}, nullptr};
  try {
    return expression.Evaluate(frame);
  } catch (const Raised &raised) {
    Fail(raised.trace.front().span, raised.message);
  }
}

}  // namespace quillbar::language
