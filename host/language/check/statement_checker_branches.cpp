// SPDX-License-Identifier: MIT
// If and Select Case.
#include "host/language/check/statement_checker.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/tree/members.h"
#include "host/language/tree/operators.h"

namespace quillbar::language {

using host::Type;
using host::TypeKind;

StatementPointer StatementChecker::CheckIf(const syntax::If &statement) {
  auto node = std::make_unique<IfStatement>();
  for (const syntax::If::Branch &branch : statement.branches) {
    IfStatement::Branch &checked = node->branches.emplace_back();
    Recover([&] {
      if (branch.condition) checked.condition = CheckCondition(*branch.condition, "\"If\"");
    });
    checked.body = CheckBlock(branch.body);
  }
  node->otherwise = CheckBlock(statement.otherwise);
  return node;
}

StatementPointer StatementChecker::CheckSelect(const syntax::Select &statement) {
  auto node = std::make_unique<SelectStatement>();
  Symbol subject;
  subject.span = statement.subject->span;
  Recover([&] {
    ExpressionPointer value = CheckValue(*statement.subject);
    if (value->type.IsArray() || value->type.IsNil()) {
      Fail(value->span, fmt::format("\"Select Case\" can't choose by {}", Named(value->type)));
    }
    subject = NewTemporary(value->type);
    subject.span = value->span;
    node->store = std::make_unique<Assignment>(MakeVariable(subject, value->span), std::move(value));
  });
  targets_.push_back({syntax::JumpTarget::kSelect, {}, node.get()});
  for (const syntax::Select::Case &branch : statement.cases) {
    SelectStatement::Case &checked = node->cases.emplace_back();
    for (const syntax::Select::Test &test : branch.tests) {
      Recover([&] { checked.tests.push_back(CheckCaseTest(test, subject)); });
    }
    checked.body = CheckBlock(branch.body);
  }
  node->otherwise = CheckBlock(statement.otherwise);
  targets_.pop_back();
  return node;
}

ExpressionPointer StatementChecker::CheckCaseTest(const syntax::Select::Test &test, const Symbol &subject) {
  const auto compare = [&](syntax::BinaryOperator operation, const syntax::Expression &with) {
    ExpressionPointer value = CheckValue(with);
    const Span span = value->span;
    return MakeBinary(operation, span, span, MakeVariable(subject, subject.span), std::move(value));
  };
  if (test.type) {
    const Type type = ResolveType(*test.type);
    if (!type.IsObject() || !subject.type.IsObject()) Fail(test.span, "\"IsA\" asks an object for its class");
    return std::make_unique<IsANode>(test.span, MakeVariable(subject, test.span), *type.objectClass());
  }
  if (!test.last) return compare(test.operation, *test.first);
  return MakeLogic(syntax::BinaryOperator::kAnd, TypeKind::kBoolean, test.span,
                   compare(syntax::BinaryOperator::kGreaterEqual, *test.first),
                   compare(syntax::BinaryOperator::kLessEqual, *test.last));
}

}  // namespace quillbar::language
