// SPDX-License-Identifier: MIT
#include "host/language/check/checker.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/check/statement_checker.h"
#include "host/language/syntax/names.h"
#include "host/language/tree/literals.h"

namespace quillbar::language {
namespace {

/// Checks the top level of a script, in the order in which its parts depend on each other: enumerations, constants,
/// the heads of procedures, the script's variables and statements, bodies.
class ScriptChecker : public StatementChecker {
 public:
  using StatementChecker::StatementChecker;

  void Run(const syntax::Script &script) {
    program_.main.name = "the script";
    program_.main.isScript = true;
    EnterArguments();
    for (const auto &enumeration : script.enumerations) {
      Recover([&] { EnterEnumeration(*enumeration); });
    }
    for (const auto &statement : script.body) {
      if (statement->kind != syntax::StatementKind::kConstant) continue;
      Recover([&] { CheckConstant(static_cast<const syntax::Constant &>(*statement)); });
    }
    std::vector<ScriptProcedure *> heads;
    for (const auto &procedure : script.procedures) heads.push_back(EnterProcedure(*procedure));
    for (const auto &statement : script.body) {
      if (statement->kind != syntax::StatementKind::kDeclare) continue;
      EnterVariables(static_cast<const syntax::Declare &>(*statement));
    }
    CheckStatements(script.body, program_.main.body);
    for (std::size_t i = 0; i < heads.size(); ++i) CheckBody(*script.procedures[i], *heads[i]);
  }

 private:
  void EnterArguments() {
    Symbol arguments;
    arguments.kind = Symbol::Kind::kGlobal;
    arguments.name = "Arguments";
    arguments.type = host::Type(host::TypeKind::kString).ArrayOf();
    arguments.slot = program_.argumentsSlot = NewGlobal(arguments.type);
    predefined_.Add(std::move(arguments));
  }

  void EnterEnumeration(const syntax::Enumeration &written) {
    host::EnumerationInfo &info = program_.enumerations.emplace_back();
    info.name = info.qualifiedName = written.name;
    info.underlying = host::kIntegerKind;
    if (written.type) {
      const host::Type type = ResolveType(*written.type);
      if (!host::IsInteger(type.kind())) Fail(written.type->span, "an enumeration holds whole numbers");
      info.underlying = type.kind();
    }
    info.underlyingName = host::KindName(info.underlying);
    for (const host::EnumerationInfo &other : program_.enumerations) {
      if (&other != &info && SameName(other.name, written.name)) {
        Fail(written.nameSpan, fmt::format("there is another enumeration \"{}\"", written.name));
      }
    }
    std::int64_t next = 0;
    for (const syntax::Enumeration::Value &value : written.values) {
      Recover([&] {
        if (info.Find(value.name) != nullptr) {
          Fail(value.span, fmt::format("\"{}\" is a member of this enumeration already", value.name));
        }
        if (value.value) next = ConstantNumber(*value.value);
        info.members.push_back({value.name, NarrowInteger(info.underlying, next)});
        next = static_cast<std::int64_t>(static_cast<std::uint64_t>(next) + 1);
      });
    }
  }

  std::int64_t ConstantNumber(const syntax::Expression &expression) {
    const ExpressionPointer value = CheckValue(expression);
    const auto *constant = dynamic_cast<const IntegerConstant *>(value.get());
    if (constant == nullptr || !host::IsInteger(constant->type.kind())) {
      Fail(expression.span, "the value of an enumeration's member is a whole number that is a constant");
    }
    return constant->value;
  }

  /// A procedure as calls see it. What is known of a parameter with an error is kept.
  ScriptProcedure *EnterProcedure(const syntax::Procedure &written) {
    ScriptProcedure head;
    head.name = written.name;
    head.nameSpan = written.nameSpan;
    for (const syntax::Parameter &parameter : written.parameters) {
      Recover([&] { head.parameters.push_back(MakeParameter(parameter, head.parameters)); });
    }
    Recover([&] {
      if (written.result) head.result = ResolveType(*written.result);
    });
    Recover([&] { RefuseSameSignature(head); });

    Procedure &procedure = program_.procedures.emplace_back();
    procedure.name = written.name;
    procedure.span = written.span;
    procedure.result = head.result;
    const Representation representation = RepresentationOf(head.result);
    if (IsOwning(representation)) procedure.owningCells.push_back({0, representation});
    head.procedure = &procedure;
    return &scriptProcedures_.emplace_back(std::move(head));
  }

  CallParameter MakeParameter(const syntax::Parameter &written, const std::vector<CallParameter> &before) {
    CallParameter parameter;
    parameter.name = written.name;
    parameter.type = ResolveType(written.type);
    parameter.byReference = written.byReference;
    parameter.isOptional = written.isOptional;
    parameter.isList = written.isList;
    if (!before.empty() && before.back().isList) Fail(written.span, "nothing can follow a ParamArray");
    if (written.isList) {
      if (written.byReference || written.isOptional) Fail(written.span, "a ParamArray can't be ByRef or Optional");
      parameter.type = parameter.type.ArrayOf();
    }
    if (written.byReference && written.isOptional) Fail(written.span, "a ByRef parameter can't be Optional");
    if (!before.empty() && before.back().isOptional && !written.isOptional && !written.isList) {
      Fail(written.span, "after an Optional parameter all others must be Optional too");
    }
    if (!parameter.type.IsArray()) parameter.defaultValue = host::Value::Zero(parameter.type);
    if (!written.defaultValue) return parameter;
    const ExpressionPointer value =
        CheckValue(*written.defaultValue, parameter.type, fmt::format("the default value of \"{}\"", written.name));
    if (!value->IsConstant()) Fail(value->span, "a default value is made of literals, constants and operators");
    parameter.defaultValue = ConstantValue(*value);
    return parameter;
  }

  void RefuseSameSignature(const ScriptProcedure &head) {
    for (const ScriptProcedure &other : scriptProcedures_) {
      if (!SameName(other.name, head.name) || other.parameters.size() != head.parameters.size()) continue;
      bool isSame = true;
      for (std::size_t i = 0; i < head.parameters.size(); ++i) {
        isSame = isSame && other.parameters[i].type == head.parameters[i].type;
      }
      if (!isSame) continue;
      Fail(head.nameSpan, fmt::format("\"{}\" with these parameters is declared already in line {}", head.name,
                                      source_.Locate(other.nameSpan.begin).line));
    }
  }

  void EnterVariables(const syntax::Declare &declare) {
    for (const syntax::Declare::Variable &variable : declare.variables) {
      // A second one of the same name is reported when its statement is checked.
      if (globals_.Find(variable.name) != nullptr) continue;
      Symbol symbol = NewVariable(declare, variable);
      symbol.isDeclared = false;
      Declare(std::move(symbol));
    }
  }

  void CheckBody(const syntax::Procedure &written, const ScriptProcedure &head) {
    procedure_ = head.procedure;
    resultType_ = head.result;
    procedure_->cellCount = 1 + head.parameters.size();
    const BlockScope scope(*this);
    for (std::size_t i = 0; i < head.parameters.size(); ++i) {
      const CallParameter &parameter = head.parameters[i];
      Symbol symbol;
      symbol.kind = parameter.byReference ? Symbol::Kind::kReference : Symbol::Kind::kLocal;
      symbol.name = parameter.name;
      symbol.span = written.parameters[std::min(i, written.parameters.size() - 1)].span;
      symbol.type = parameter.type;
      symbol.slot = i + 1;
      const Representation representation = RepresentationOf(parameter.type);
      if (IsOwning(representation) && !parameter.byReference) {
        procedure_->owningCells.push_back({symbol.slot, representation});
      }
      Recover([&] { Declare(std::move(symbol)); });
    }
    CheckStatements(written.body, procedure_->body);
    procedure_ = &program_.main;
    resultType_ = {};
  }
};

}  // namespace

std::unique_ptr<Program> Check(const SourceText &source, const syntax::Script &script, host::Host &host,
                               Diagnostics &diagnostics) {
  auto program = std::make_unique<Program>();
  ScriptChecker(source, host, *program, diagnostics).Run(script);
  return program;
}

}  // namespace quillbar::language
