// SPDX-License-Identifier: MIT
#include "host/language/check/context.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
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

host::Type Checker::FindTypeIn(const host::ClassInfo &container, std::string_view name) const {
  const auto found = types.find(fmt::format("{}.{}", ScriptPartOf(&container)->qualifiedName, name));
  return found == types.end() ? host::Type() : found->second;
}

host::Type Checker::FindType(std::string_view name) const {
  for (const host::ClassInfo *around = selfClass; around != nullptr; around = ScriptPartOf(around)->container) {
    for (const host::ClassInfo *level = around; ScriptPartOf(level) != nullptr; level = level->superclass) {
      if (const host::Type type = FindTypeIn(*level, name); !type.IsNone()) return type;
    }
  }
  if (const auto found = types.find(name); found != types.end()) return found->second;
  if (const host::EnumerationInfo *enumeration = FindLibraryEnumeration(name)) {
    return host::Type::Enumeration(*enumeration);
  }
  if (const host::Type type = Registry().FindType(name); !type.IsNone()) return type;
  for (const host::ClassInfo *module : ModulesWith(name.substr(0, name.find('.')))) {
    if (const host::Type type = FindTypeIn(*module, name); !type.IsNone()) return type;
  }
  return {};
}

std::vector<const host::ClassInfo *> Checker::ModulesWith(std::string_view name) const {
  std::vector<const host::ClassInfo *> modules;
  const auto found = moduleMembers.find(name);
  if (found == moduleMembers.end()) return modules;
  for (const ModuleMember &member : found->second) {
    const bool isKnown =
        member.access == host::Access::kPublic || std::ranges::find(usedModules, member.module) != usedModules.end();
    if (isKnown && std::ranges::find(modules, member.module) == modules.end()) modules.push_back(member.module);
  }
  return modules;
}

host::Type Checker::ResolveType(const syntax::TypeName &name) const {
  const std::string written = fmt::format("{}", fmt::join(name.parts, "."));
  const host::Type type = FindType(written);
  if (type.IsNone()) {
    if (IsNameOfTheEnvironment(written)) Fail(name.span, NotPartOfThisHost(written));
    std::vector<std::string_view> candidates = {"Boolean", "Byte",   "Color",  "Double",   "Integer", "Int8",
                                                "Int16",   "Int32",  "Int64",  "Single",   "String",  "UInt8",
                                                "UInt16",  "UInt32", "UInt64", "UInteger", "Variant", "Currency"};
    for (const host::ClassInfo *info : Registry().Classes()) candidates.push_back(info->name);
    for (const auto &[known, of] : types) candidates.push_back(known);
    Fail(name.span, fmt::format("there is no type \"{}\"{}", written, Suggestion(written, candidates)));
  }
  if (IsModule(type.objectClass())) Fail(name.span, fmt::format("\"{}\" is a module, not a type", written));
  const ScriptClass *part = ScriptPartOf(type.objectClass());
  if (part != nullptr && part->container != nullptr && part->access == host::Access::kPrivate &&
      !IsInside(part->container)) {
    Fail(name.span, fmt::format("\"{}\" is private in the module {}", written, part->container->name));
  }
  return name.rank > 0 ? type.ArrayOf(name.rank) : type;
}

host::Type Checker::AddressType() {
  if (addressClass_ == nullptr) {
    addressClass_ = &host.AddScriptClass();
    addressClass_->name = "the address of a method";
    addressClass_->isRegistered = true;
    host::Registry::LayOut(*addressClass_);
  }
  return host::Type::Class(*addressClass_);
}

bool Checker::IsInside(const host::ClassInfo *info) const {
  for (const host::ClassInfo *around = selfClass; around != nullptr; around = ScriptPartOf(around)->container) {
    if (around == info) return true;
  }
  return false;
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
    Fail(span, fmt::format("\"{}\" is declared already in {}", name,
                           source.DescribeLine(scope.Find(name)->span.begin, span.begin)));
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
