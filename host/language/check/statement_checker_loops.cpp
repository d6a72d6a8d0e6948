// SPDX-License-Identifier: MIT
// For, For Each, While and Do, and the jumps out of them.
#include "host/language/check/statement_checker.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/syntax/names.h"
#include "host/language/tree/conversions.h"
#include "host/language/tree/literals.h"
#include "host/language/tree/operators.h"

namespace quillbar::language {

using host::Type;
using host::TypeKind;
using syntax::StatementKind;

Block StatementChecker::CheckLoopBody(const syntax::Block &body, syntax::JumpTarget kind, const std::string &variable,
                                      const JumpTarget *node) {
  targets_.push_back({kind, variable, node});
  Block checked = CheckBlock(body);
  targets_.pop_back();
  return checked;
}

Symbol StatementChecker::LoopVariable(const std::optional<syntax::TypeName> &type, const std::string &name, Span span) {
  if (type) {
    Symbol symbol;
    symbol.name = name;
    symbol.span = span;
    Recover([&] {
      symbol.type = ResolveType(*type);
      symbol.kind = Symbol::Kind::kLocal;
      symbol.slot = NewLocal(symbol.type);
    });
    return Declare(std::move(symbol));
  }
  const Symbol *found = FindSymbol(name);
  if (found != nullptr && found->kind == Symbol::Kind::kBroken) Fail(span, {});
  if (found == nullptr || found->kind == Symbol::Kind::kConstant || (!found->isDeclared && IsInMain())) {
    Fail(span, fmt::format("there is no variable \"{}\"; declare it here: For {} As …", name, name));
  }
  return *found;
}

template <class Node>
StatementPointer StatementChecker::FinishFor(const syntax::For &statement, const Symbol &variable) {
  auto node = std::make_unique<Node>();
  node->isDown = statement.isDown;
  Recover([&] {
    node->variable = MakeVariable(variable, statement.variableSpan);
    node->first = CheckValue(*statement.first, variable.type, "the first value of the loop");
    node->last = CheckValue(*statement.last, variable.type, "the last value of the loop");
    if (statement.step) {
      const Type type = host::IsFloating(variable.type.kind()) ? variable.type : Type(TypeKind::kInt64);
      node->step = CheckValue(*statement.step, type, "the step of the loop");
      const auto *constant = dynamic_cast<const IntegerConstant *>(node->step.get());
      if (constant != nullptr && constant->value == 0)
        Fail(node->step->span, "a loop with a step of 0 would never end");
    }
  });
  node->body = CheckLoopBody(statement.body, syntax::JumpTarget::kFor, statement.variable, node.get());
  return node;
}

StatementPointer StatementChecker::CheckFor(const syntax::For &statement) {
  const BlockScope scope(*this);
  Symbol variable;
  // The rest is checked even when the variable has an error.
  Recover([&] {
    variable = LoopVariable(statement.type, statement.variable, statement.variableSpan);
    if (variable.kind != Symbol::Kind::kBroken && !host::IsNumeric(variable.type.kind())) {
      Fail(statement.variableSpan,
           fmt::format("the variable of \"For\" is a number, but this is {}", Named(variable.type)));
    }
  });
  if (host::IsFloating(variable.type.kind())) return FinishFor<RealFor>(statement, variable);
  return FinishFor<IntegerFor>(statement, variable);
}

StatementPointer StatementChecker::CheckForEach(const syntax::ForEach &statement) {
  const BlockScope scope(*this);
  auto node = std::make_unique<ForEachStatement>();
  Recover([&] {
    node->list = CheckValue(*statement.list);
    if (!node->list->type.IsArray()) {
      Fail(statement.list->span,
           fmt::format("\"For Each\" walks through an array, but this is {}", Named(node->list->type)));
    }
  });
  Recover([&] {
    const Symbol variable = LoopVariable(statement.type, statement.variable, statement.variableSpan);
    node->variable = MakeVariable(variable, statement.variableSpan);
    if (!node->list || !node->list->type.IsArray()) return;
    const Type element = node->list->type.Element();
    const std::optional<int> cost = ImplicitCost(element, variable.type);
    if (!cost) {
      Fail(statement.variableSpan, fmt::format("the variable can't hold the elements: it is {}, they are {}",
                                               Named(variable.type), Named(element)));
    }
    if (element == variable.type || element.IsObject()) return;
    // Elements of another number type go through a variable of their own.
    const Symbol holder = NewTemporary(element);
    node->variable = MakeVariable(holder, statement.variableSpan);
    node->body.Add(std::make_unique<Assignment>(
        MakeVariable(variable, statement.variableSpan),
        MakeConversion(MakeVariable(holder, statement.variableSpan), variable.type, statement.variableSpan)));
  });
  targets_.push_back({syntax::JumpTarget::kFor, statement.variable, node.get()});
  CheckStatements(statement.body, node->body);
  targets_.pop_back();
  return node;
}

StatementPointer StatementChecker::CheckWhile(const syntax::While &statement) {
  auto node = std::make_unique<LoopStatement>();
  Recover([&] { node->before = CheckCondition(*statement.condition, "\"While\""); });
  node->body = CheckLoopBody(statement.body, syntax::JumpTarget::kWhile, {}, node.get());
  return node;
}

ExpressionPointer StatementChecker::CheckDoTest(const syntax::Do::Test &test) {
  if (!test.condition) return nullptr;
  ExpressionPointer condition = CheckCondition(*test.condition, test.isUntil ? "\"Until\"" : "\"While\"");
  const Span span = condition->span;
  return test.isUntil ? Fold(MakeNot(TypeKind::kBoolean, span, std::move(condition))) : std::move(condition);
}

StatementPointer StatementChecker::CheckDo(const syntax::Do &statement) {
  auto node = std::make_unique<LoopStatement>();
  Recover([&] { node->before = CheckDoTest(statement.before); });
  node->body = CheckLoopBody(statement.body, syntax::JumpTarget::kDo, {}, node.get());
  Recover([&] { node->after = CheckDoTest(statement.after); });
  return node;
}

StatementPointer StatementChecker::CheckJump(const syntax::Jump &statement) {
  const bool isExit = statement.kind == StatementKind::kExit;
  if (statement.target == syntax::JumpTarget::kSub || statement.target == syntax::JumpTarget::kFunction) {
    const bool isFunction = statement.target == syntax::JumpTarget::kFunction;
    if (IsInMain() || isFunction != !resultType_.IsNone()) {
      Fail(statement.span, fmt::format("there is no {} around this to leave", isFunction ? "Function" : "Sub"));
    }
    return std::make_unique<ReturnStatement>(nullptr);
  }
  for (auto target = targets_.rbegin(); target != targets_.rend(); ++target) {
    const bool isSelect = target->kind == syntax::JumpTarget::kSelect;
    if (statement.target == syntax::JumpTarget::kInnermost ? isSelect : statement.target != target->kind) continue;
    if (!statement.variable.empty() && !SameName(statement.variable, target->variable)) continue;
    return std::make_unique<JumpStatement>(isExit ? Flow::kExit : Flow::kContinue, target->node);
  }
  static constexpr std::string_view kNames[] = {"loop", "\"For\"", "\"While\"", "\"Do\"", "", "", "\"Select\""};
  Fail(statement.span, fmt::format("there is no {}{} around this", kNames[static_cast<int>(statement.target)],
                                   statement.variable.empty() ? "" : fmt::format(" over \"{}\"", statement.variable)));
}

}  // namespace quillbar::language
