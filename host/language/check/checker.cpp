// SPDX-License-Identifier: MIT
#include "host/language/check/checker.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/check/class_checker.h"
#include "host/language/check/procedure_checker.h"
#include "host/language/check/statement_checker.h"
#include "host/language/syntax/names.h"
#include "host/language/syntax/target_constants.h"
#include "host/language/tree/literals.h"

namespace quillbar::language {
namespace {

void EnterArguments(Checker &checker) {
  Symbol arguments;
  arguments.kind = Symbol::Kind::kGlobal;
  arguments.name = "Arguments";
  arguments.type = host::Type(host::TypeKind::kString).ArrayOf();
  arguments.slot = checker.program.argumentsSlot = checker.NewGlobal(arguments.type);
  checker.predefined.Add(std::move(arguments));
}

void EnterTargetConstants(Checker &checker) {
  for (const TargetConstant &constant : TargetConstants()) {
    Symbol symbol;
    symbol.kind = Symbol::Kind::kConstant;
    symbol.name = constant.name;
    symbol.constant = std::visit([](auto value) { return host::Value(value); }, constant.value);
    symbol.type = symbol.constant.type();
    checker.predefined.Add(std::move(symbol));
  }
}

std::int64_t ConstantNumber(Checker &checker, const syntax::Expression &expression) {
  const ExpressionPointer value = CheckValue(checker, expression);
  const std::int64_t *number = ConstantInteger(*value);
  if (number == nullptr || !host::IsInteger(value->type.kind())) {
    checker.Fail(expression.span, "the value of an enumeration's member is a whole number that is a constant");
  }
  return *number;
}

/// `container` is the class or module that declares the enumeration, if any.
void EnterEnumeration(Checker &checker, const syntax::Enumeration &written, const ScriptClass *container) {
  host::EnumerationInfo &info =
      container == nullptr ? checker.program.enumerations.emplace_back() : container->info->enumerations.emplace_back();
  info.name = info.qualifiedName = written.name;
  std::string key = written.name;
  if (container != nullptr) {
    info.qualifiedName = fmt::format("{}.{}", container->info->name, written.name);
    key = fmt::format("{}.{}", container->qualifiedName, written.name);
  }
  const auto [place, isNew] = checker.types.emplace(std::move(key), host::Type::Enumeration(info));
  if (!isNew) {
    checker.Fail(written.nameSpan, fmt::format("there is another {} \"{}\"",
                                               place->second.IsEnumeration() ? "enumeration" : "type", written.name));
  }
  info.underlying = host::kIntegerKind;
  if (written.type) {
    const host::Type type = checker.ResolveType(*written.type);
    if (!host::IsInteger(type.kind())) checker.Fail(written.type->span, "an enumeration holds whole numbers");
    info.underlying = type.kind();
  }
  info.underlyingName = host::KindName(info.underlying);
  std::int64_t next = 0;
  for (const syntax::Enumeration::Value &value : written.values) {
    checker.Recover([&] {
      if (info.Find(value.name) != nullptr) {
        checker.Fail(value.span, fmt::format("\"{}\" is a member of this enumeration already", value.name));
      }
      if (value.value) next = ConstantNumber(checker, *value.value);
      info.members.push_back({value.name, NarrowInteger(info.underlying, next)});
      next = static_cast<std::int64_t>(static_cast<std::uint64_t>(next) + 1);
    });
  }
}

void EnterVariables(Checker &checker, const syntax::Declare &declare) {
  for (const syntax::Declare::Variable &variable : declare.variables) {
    // A second one of the same name is reported when its statement is checked.
    if (checker.globals.Find(variable.name) != nullptr) continue;
    Symbol symbol = NewVariable(checker, declare, variable);
    symbol.isDeclared = false;
    checker.Declare(std::move(symbol));
  }
}

/// Checks the parts of a script in the order in which they depend on each other: enumerations, constants, the heads of
/// procedures, the script's variables and statements, bodies.
void CheckScript(Checker &checker, const syntax::Script &script) {
  checker.program.main.name = "the script";
  checker.program.main.isScript = true;
  EnterArguments(checker);
  EnterTargetConstants(checker);
  EnterClasses(checker, script);
  for (const auto &enumeration : script.enumerations) {
    checker.Recover([&] { EnterEnumeration(checker, *enumeration, nullptr); });
  }
  for (const auto &written : script.classes) {
    const ScriptClass &part = *checker.parts.at(written.get());
    checker.selfClass = part.info;
    for (const auto &enumeration : written->enumerations) {
      checker.Recover([&] { EnterEnumeration(checker, *enumeration, &part); });
    }
    checker.selfClass = nullptr;
  }
  for (const auto &statement : script.body) {
    if (statement->kind != syntax::StatementKind::kConstant) continue;
    checker.Recover([&] { CheckConstant(checker, static_cast<const syntax::Constant &>(*statement)); });
  }
  EnterClassMembers(checker, script);
  std::vector<const host::MethodInfo *> heads;
  for (const auto &procedure : script.procedures) {
    host::MethodInfo &head = checker.program.methods.emplace_back();
    head.isShared = true;
    EnterHead(checker, *procedure, head);
    std::vector<const host::MethodInfo *> &overloads = checker.procedures[procedure->name];
    checker.Recover([&] { RefuseSameSignature(checker, head, overloads); });
    overloads.push_back(&head);
    heads.push_back(&head);
  }
  for (const auto &statement : script.body) {
    if (statement->kind != syntax::StatementKind::kDeclare) continue;
    EnterVariables(checker, static_cast<const syntax::Declare &>(*statement));
  }
  CheckStatements(checker, script.body, checker.program.main.body);
  for (std::size_t i = 0; i < heads.size(); ++i) CheckBody(checker, *script.procedures[i], *heads[i]);
  CheckClasses(checker, script);
}

}  // namespace

std::unique_ptr<Program> Check(const SourceText &source, const syntax::Script &script, host::Host &host,
                               Diagnostics &diagnostics) {
  auto program = std::make_unique<Program>();
  Checker checker(source, host, *program, diagnostics);
  CheckScript(checker, script);
  return program;
}

}  // namespace quillbar::language
