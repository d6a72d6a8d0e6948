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
namespace {

using host::Type;
using host::TypeKind;
using syntax::StatementKind;

Block CheckLoopBody(Checker &checker, const syntax::Statement &loop, const syntax::Block &body, syntax::JumpTarget kind,
                    const std::string &variable, const JumpTarget *node) {
  checker.targets.push_back({kind, variable, node});
  Block checked = CheckBlock(checker, body);
  if (body.empty()) checked.SetPlace(loop.span);
  checker.targets.pop_back();
  return checked;
}

Symbol LoopVariable(Checker &checker, const std::optional<syntax::TypeName> &type, const std::string &name, Span span) {
  if (type) {
    Symbol symbol;
    symbol.name = name;
    symbol.span = span;
    checker.Recover([&] {
      symbol.type = checker.ResolveType(*type);
      symbol.kind = Symbol::Kind::kLocal;
      symbol.slot = checker.NewLocal(symbol.type);
    });
    return checker.Declare(std::move(symbol));
  }
  const Symbol *found = checker.FindSymbol(name);
  if (found != nullptr && found->kind == Symbol::Kind::kBroken) checker.Fail(span, {});
  if (found == nullptr || found->kind == Symbol::Kind::kConstant || (!found->isDeclared && checker.IsInMain())) {
    checker.Fail(span, fmt::format("there is no variable \"{}\"; declare it here: For {} As …", name, name));
  }
  return *found;
}

template <class Node>
StatementPointer FinishFor(Checker &checker, const syntax::For &statement, const Symbol &variable) {
  auto node = std::make_unique<Node>();
  node->isDown = statement.isDown;
  checker.Recover([&] {
    node->variable = checker.MakeVariable(variable, statement.variableSpan);
    node->first = CheckValue(checker, *statement.first, variable.type, "the first value of the loop");
    node->last = CheckValue(checker, *statement.last, variable.type, "the last value of the loop");
    if (statement.step) {
      const Type type = host::IsInteger(variable.type.kind()) ? Type(TypeKind::kInt64) : variable.type;
      node->step = CheckValue(checker, *statement.step, type, "the step of the loop");
      const std::int64_t *constant = ConstantInteger(*node->step);
      if (constant != nullptr && *constant == 0)
        checker.Fail(node->step->span, "a loop with a step of 0 would never end");
    } else if (variable.type.kind() == TypeKind::kCurrency) {
      const host::Value one = host::Value(1).ConvertedTo(variable.type);
      node->step = MakeConstant(one, statement.variableSpan);
    }
  });
  node->body =
      CheckLoopBody(checker, statement, statement.body, syntax::JumpTarget::kFor, statement.variable, node.get());
  return node;
}

/// What "For Each" walks through: an array as it is, a container as the array that its class makes of it.
ExpressionPointer Iterated(Checker &checker, ExpressionPointer list) {
  const Span span = list->span;
  const host::ClassInfo *info = list->type.IsObject() ? list->type.objectClass() : nullptr;
  for (; info != nullptr; info = info->superclass) {
    for (const LibraryFunction *function :
         FindLibraryFunctions("Operator_Iterate", LibraryFunction::Form::kMethod, info->name)) {
      Arguments arguments;
      arguments.push_back(std::move(list));
      return function->make(MakeCallable(*function, {}, {}, checker.Registry()).result, span, std::move(arguments));
    }
  }
  return list;
}

ExpressionPointer CheckDoTest(Checker &checker, const syntax::Do::Test &test) {
  if (!test.condition) return nullptr;
  ExpressionPointer condition = CheckCondition(checker, *test.condition, test.isUntil ? "\"Until\"" : "\"While\"");
  const Span span = condition->span;
  return test.isUntil ? checker.Fold(MakeNot(TypeKind::kBoolean, span, std::move(condition))) : std::move(condition);
}

/// The array through which `For Each` walks for an object whose class the library gives elements, such as a RowSet;
/// nothing for any other value.
ExpressionPointer ElementsOf(Checker &checker, ExpressionPointer &object) {
  if (!object->type.IsObject()) return nullptr;
  const Span span = object->span;
  Resolution callee;
  callee.span = span;
  callee.name = "Iterate";
  const auto functions =
      FindLibraryFunctions(callee.name, LibraryFunction::Form::kMethod, object->type.objectClass()->name);
  for (const LibraryFunction *function : functions) {
    callee.callables.push_back(MakeCallable(*function, object->type, {}, checker.Registry()));
  }
  if (callee.callables.empty()) return nullptr;
  callee.value = std::move(object);
  return Call(checker, std::move(callee), {}, span);
}

}  // namespace

StatementPointer CheckFor(Checker &checker, const syntax::For &statement) {
  const Checker::BlockScope scope(checker);
  Symbol variable;
  // The rest is checked even when the variable has an error.
  checker.Recover([&] {
    variable = LoopVariable(checker, statement.type, statement.variable, statement.variableSpan);
    if (variable.kind != Symbol::Kind::kBroken && !host::IsNumeric(variable.type.kind())) {
      checker.Fail(statement.variableSpan,
                   fmt::format("the variable of \"For\" is a number, but this is {}", Named(variable.type)));
    }
  });
  if (host::IsFloating(variable.type.kind())) return FinishFor<RealFor>(checker, statement, variable);
  return FinishFor<IntegerFor>(checker, statement, variable);
}

StatementPointer CheckForEach(Checker &checker, const syntax::ForEach &statement) {
  const Checker::BlockScope scope(checker);
  auto node = std::make_unique<ForEachStatement>();
  checker.Recover([&] {
    node->list = Iterated(checker, CheckValue(checker, *statement.list));
    if (ExpressionPointer elements = ElementsOf(checker, node->list)) node->list = std::move(elements);
    if (!node->list->type.IsArray()) {
      checker.Fail(statement.list->span,
                   fmt::format("\"For Each\" walks through an array, but this is {}", Named(node->list->type)));
    }
  });
  checker.Recover([&] {
    const Symbol variable = LoopVariable(checker, statement.type, statement.variable, statement.variableSpan);
    node->variable = checker.MakeVariable(variable, statement.variableSpan);
    if (!node->list || !node->list->type.IsArray()) return;
    const Type element = node->list->type.Element();
    const std::optional<int> cost = host::ConversionCost(element, variable.type);
    if (!cost) {
      checker.Fail(statement.variableSpan, fmt::format("the variable can't hold the elements: it is {}, they are {}",
                                                       Named(variable.type), Named(element)));
    }
    if (element == variable.type || element.IsObject()) return;
    // Elements of another number type go through a variable of their own.
    const Symbol holder = checker.NewTemporary(element);
    node->variable = checker.MakeVariable(holder, statement.variableSpan);
    node->body.Add(MakeAssignment(
        checker.MakeVariable(variable, statement.variableSpan),
        MakeConversion(checker.MakeVariable(holder, statement.variableSpan), variable.type, statement.variableSpan)));
  });
  checker.targets.push_back({syntax::JumpTarget::kFor, statement.variable, node.get()});
  node->body.SetPlace(statement.span);
  CheckStatements(checker, statement.body, node->body);
  checker.targets.pop_back();
  return node;
}

StatementPointer CheckWhile(Checker &checker, const syntax::While &statement) {
  auto node = std::make_unique<LoopStatement>();
  checker.Recover([&] { node->before = CheckCondition(checker, *statement.condition, "\"While\""); });
  node->body = CheckLoopBody(checker, statement, statement.body, syntax::JumpTarget::kWhile, {}, node.get());
  return node;
}

StatementPointer CheckDo(Checker &checker, const syntax::Do &statement) {
  auto node = std::make_unique<LoopStatement>();
  checker.Recover([&] { node->before = CheckDoTest(checker, statement.before); });
  node->body = CheckLoopBody(checker, statement, statement.body, syntax::JumpTarget::kDo, {}, node.get());
  checker.Recover([&] { node->after = CheckDoTest(checker, statement.after); });
  return node;
}

StatementPointer CheckJump(Checker &checker, const syntax::Jump &statement) {
  const bool isExit = statement.kind == StatementKind::kExit;
  if (statement.target == syntax::JumpTarget::kSub || statement.target == syntax::JumpTarget::kFunction) {
    const bool isFunction = statement.target == syntax::JumpTarget::kFunction;
    if (checker.IsInMain() || isFunction != !checker.resultType.IsNone()) {
      checker.Fail(statement.span, fmt::format("there is no {} around this to leave", isFunction ? "Function" : "Sub"));
    }
    return std::make_unique<ReturnStatement>(nullptr);
  }
  for (auto target = checker.targets.rbegin(); target != checker.targets.rend(); ++target) {
    const bool isSelect = target->kind == syntax::JumpTarget::kSelect;
    if (statement.target == syntax::JumpTarget::kInnermost ? isSelect : statement.target != target->kind) continue;
    if (!statement.variable.empty() && !SameName(statement.variable, target->variable)) continue;
    return std::make_unique<JumpStatement>(isExit ? Flow::kExit : Flow::kContinue, target->node);
  }
  static constexpr std::string_view kNames[] = {"loop", "\"For\"", "\"While\"", "\"Do\"", "", "", "\"Select\""};
  checker.Fail(statement.span,
               fmt::format("there is no {}{} around this", kNames[static_cast<int>(statement.target)],
                           statement.variable.empty() ? "" : fmt::format(" over \"{}\"", statement.variable)));
}

}  // namespace quillbar::language
