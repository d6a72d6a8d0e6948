// SPDX-License-Identifier: MIT
// If and Select Case.
#include "host/language/check/statement_checker.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/tree/members.h"
#include "host/language/tree/operators.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

ExpressionPointer CheckCaseTest(Checker &checker, const syntax::Select::Test &test, const Symbol &subject) {
  const auto compare = [&](syntax::BinaryOperator operation, const syntax::Expression &with) {
    ExpressionPointer value = CheckValue(checker, with);
    const Span span = value->span;
    return MakeBinary(checker, operation, span, span, checker.MakeVariable(subject, subject.span), std::move(value));
  };
  if (test.type) {
    const Type type = checker.ResolveType(*test.type);
    if (!type.IsObject() || !(subject.type.IsObject() || subject.type.IsVariant()))
      checker.Fail(test.span, "\"IsA\" asks an object for its class");
    return std::make_unique<IsANode>(test.span, checker.MakeVariable(subject, test.span), *type.objectClass());
  }
  if (!test.last) return compare(test.operation, *test.first);
  return MakeLogic(syntax::BinaryOperator::kAnd, TypeKind::kBoolean, test.span,
                   compare(syntax::BinaryOperator::kGreaterEqual, *test.first),
                   compare(syntax::BinaryOperator::kLessEqual, *test.last));
}

}  // namespace

StatementPointer CheckIf(Checker &checker, const syntax::If &statement) {
  auto node = std::make_unique<IfStatement>();
  for (const syntax::If::Branch &branch : statement.branches) {
    IfStatement::Branch &checked = node->branches.emplace_back();
    checker.Recover([&] {
      if (branch.condition) checked.condition = CheckCondition(checker, *branch.condition, "\"If\"");
    });
    checked.body = CheckBlock(checker, branch.body);
  }
  node->otherwise = CheckBlock(checker, statement.otherwise);
  return node;
}

StatementPointer CheckSelect(Checker &checker, const syntax::Select &statement) {
  auto node = std::make_unique<SelectStatement>();
  Symbol subject;
  subject.span = statement.subject->span;
  checker.Recover([&] {
    ExpressionPointer value = CheckValue(checker, *statement.subject);
    if (value->type.IsArray() || value->type.IsNil()) {
      checker.Fail(value->span, fmt::format("\"Select Case\" can't choose by {}", Named(value->type)));
    }
    subject = checker.NewTemporary(value->type);
    subject.span = value->span;
    node->store = MakeAssignment(checker.MakeVariable(subject, subject.span), std::move(value));
  });
  checker.targets.push_back({syntax::JumpTarget::kSelect, {}, node.get()});
  for (const syntax::Select::Case &branch : statement.cases) {
    SelectStatement::Case &checked = node->cases.emplace_back();
    for (const syntax::Select::Test &test : branch.tests) {
      checker.Recover([&] { checked.tests.push_back(CheckCaseTest(checker, test, subject)); });
    }
    checked.body = CheckBlock(checker, branch.body);
  }
  node->otherwise = CheckBlock(checker, statement.otherwise);
  checker.targets.pop_back();
  return node;
}

}  // namespace quillbar::language
