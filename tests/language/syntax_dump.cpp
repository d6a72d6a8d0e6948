// SPDX-License-Identifier: MIT
#include "tests/language/syntax_dump.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include "host/language/syntax/parser.h"

namespace quillbar::language::testing {
namespace {

using namespace syntax;

template <class Node>
const Node &To(const auto &node) {
  return static_cast<const Node &>(node);
}

std::string List(const std::vector<ExpressionPointer> &items) {
  std::string text;
  for (const ExpressionPointer &item : items) text += " " + Dump(*item);
  return text;
}

std::string Optional(const ExpressionPointer &expression) { return expression ? Dump(*expression) : "-"; }

std::string Optional(const std::optional<TypeName> &type) { return type ? Dump(*type) : "-"; }

std::string DumpTest(const Select::Test &test) {
  if (test.type) return "isa " + Dump(*test.type);
  if (test.last) return fmt::format("{} to {}", Dump(*test.first), Dump(*test.last));
  return fmt::format("{} {}", Spelling(test.operation), Dump(*test.first));
}

std::string DumpDoTest(const Do::Test &test) {
  if (!test.condition) return "-";
  return fmt::format("{} {}", test.isUntil ? "until" : "while", Dump(*test.condition));
}

}  // namespace

/// The bounds of an array's dimensions, or a comma between dimensions without one.
std::string DumpAll(const std::vector<ExpressionPointer> &bounds, int rank) {
  std::string text;
  for (int i = 0; i < rank; ++i) {
    if (i > 0) text += ",";
    if (static_cast<std::size_t>(i) < bounds.size()) text += Dump(*bounds[static_cast<std::size_t>(i)]);
  }
  return text;
}

std::string Dump(const Statement &statement) {
  switch (statement.kind) {
    case StatementKind::kDeclare: {
      const auto &node = To<Declare>(statement);
      std::string names;
      for (const auto &variable : node.variables) {
        names += " " + variable.name;
        if (variable.rank > 0) names += "[" + DumpAll(variable.upperBounds, variable.rank) + "]";
      }
      return fmt::format("({}{} as {} = {})", node.isStatic ? "static" : "dim", names, Dump(node.type),
                         Optional(node.initial));
    }
    case StatementKind::kConstant: {
      const auto &node = To<Constant>(statement);
      return fmt::format("(const {} as {} = {})", node.name, Optional(node.type), Dump(*node.value));
    }
    case StatementKind::kAssign: {
      const auto &node = To<Assign>(statement);
      return fmt::format("({}= {} {})", node.operation ? Spelling(*node.operation) : "", Dump(*node.target),
                         Dump(*node.value));
    }
    case StatementKind::kCall: {
      const auto &node = To<CallStatement>(statement);
      return fmt::format("({} {})", node.dropsResult ? "drop" : "do", Dump(*node.call));
    }
    case StatementKind::kIf: {
      const auto &node = To<If>(statement);
      std::string text = "(if";
      for (const auto &branch : node.branches) {
        text += fmt::format(" {} {}", Dump(*branch.condition), Dump(branch.body));
      }
      return text + " else " + Dump(node.otherwise) + ")";
    }
    case StatementKind::kSelect: {
      const auto &node = To<Select>(statement);
      std::string text = "(select " + Dump(*node.subject);
      for (const auto &branch : node.cases) {
        text += " (case";
        for (const auto &test : branch.tests) text += fmt::format(" [{}]", DumpTest(test));
        text += " " + Dump(branch.body) + ")";
      }
      return text + " else " + Dump(node.otherwise) + ")";
    }
    case StatementKind::kFor: {
      const auto &node = To<For>(statement);
      return fmt::format("(for {} as {} = {} {} {} step {} {})", node.variable, Optional(node.type), Dump(*node.first),
                         node.isDown ? "downto" : "to", Dump(*node.last), Optional(node.step), Dump(node.body));
    }
    case StatementKind::kForEach: {
      const auto &node = To<ForEach>(statement);
      return fmt::format("(each {} as {} in {} {})", node.variable, Optional(node.type), Dump(*node.list),
                         Dump(node.body));
    }
    case StatementKind::kWhile: {
      const auto &node = To<While>(statement);
      return fmt::format("(while {} {})", Dump(*node.condition), Dump(node.body));
    }
    case StatementKind::kDo: {
      const auto &node = To<Do>(statement);
      return fmt::format("(do {} {} {})", DumpDoTest(node.before), Dump(node.body), DumpDoTest(node.after));
    }
    case StatementKind::kExit:
    case StatementKind::kContinue: {
      const auto &node = To<Jump>(statement);
      static constexpr const char *kTargets[] = {"", " for", " while", " do", " sub", " function", " select"};
      return fmt::format("({}{}{}{})", statement.kind == StatementKind::kExit ? "exit" : "continue",
                         kTargets[static_cast<int>(node.target)], node.variable.empty() ? "" : " ", node.variable);
    }
    case StatementKind::kReturn:
      return fmt::format("(return {})", Optional(To<Return>(statement).value));
    case StatementKind::kRedim: {
      const auto &node = To<Redim>(statement);
      return fmt::format("(redim {} {})", Dump(*node.list),
                         DumpAll(node.upperBounds, static_cast<int>(node.upperBounds.size())));
    }
    case StatementKind::kHandler: {
      const auto &node = To<Handler>(statement);
      return fmt::format("({} {} {})", node.adds ? "add" : "remove", Dump(*node.event), Dump(*node.procedure));
    }
    case StatementKind::kTry: {
      const auto &node = To<Try>(statement);
      std::string text = "(try " + Dump(node.body);
      for (const auto &handler : node.catches) {
        text += fmt::format(" (catch {} as {} {})", handler.variable.empty() ? "-" : handler.variable,
                            Optional(handler.type), Dump(handler.body));
      }
      return text + " finally " + Dump(node.finally) + ")";
    }
    case StatementKind::kUsing:
      return fmt::format("(using {})", Dump(To<Using>(statement).module));
    case StatementKind::kRaise:
      return fmt::format("(raise {})", Dump(*To<Raise>(statement).exception));
  }
  return "?";
}

std::string Dump(const TypeName &type) {
  return fmt::format("{}{}", fmt::join(type.parts, "."), type.rank == 0 ? "" : "(" + DumpAll({}, type.rank) + ")");
}

std::string Dump(const Expression &expression) {
  switch (expression.kind) {
    case ExpressionKind::kInteger:
      return fmt::format("{}", To<IntegerLiteral>(expression).value);
    case ExpressionKind::kColor:
      return fmt::format("&c{:08X}", To<IntegerLiteral>(expression).value);
    case ExpressionKind::kReal:
      return fmt::format("{}", To<RealLiteral>(expression).value);
    case ExpressionKind::kText:
      return fmt::format("'{}'", To<TextLiteral>(expression).value);
    case ExpressionKind::kBoolean:
      return To<BooleanLiteral>(expression).value ? "true" : "false";
    case ExpressionKind::kNil:
      return "nil";
    case ExpressionKind::kName:
      return To<Name>(expression).name;
    case ExpressionKind::kMember: {
      const auto &node = To<Member>(expression);
      return fmt::format("{}.{}", Dump(*node.base), node.name);
    }
    case ExpressionKind::kCall: {
      const auto &node = To<Call>(expression);
      return fmt::format("({}{})", Dump(*node.callee), List(node.arguments));
    }
    case ExpressionKind::kNew: {
      const auto &node = To<New>(expression);
      return fmt::format("(new {}{})", Dump(node.type), List(node.arguments));
    }
    case ExpressionKind::kUnary: {
      const auto &node = To<Unary>(expression);
      static constexpr const char *kOperators[] = {"-", "+", "not "};
      return fmt::format("({}{})", kOperators[static_cast<int>(node.operation)], Dump(*node.operand));
    }
    case ExpressionKind::kBinary: {
      const auto &node = To<Binary>(expression);
      return fmt::format("({} {} {})", Dump(*node.left), Spelling(node.operation), Dump(*node.right));
    }
    case ExpressionKind::kIsA: {
      const auto &node = To<IsA>(expression);
      return fmt::format("({} isa {})", Dump(*node.operand), Dump(node.type));
    }
    case ExpressionKind::kConditional: {
      const auto &node = To<Conditional>(expression);
      return fmt::format("(if {} {} {})", Dump(*node.condition), Dump(*node.first), Dump(*node.second));
    }
    case ExpressionKind::kPair: {
      const auto &node = To<PairOf>(expression);
      return fmt::format("(pair {} {})", Dump(*node.left), Dump(*node.right));
    }
    case ExpressionKind::kAddressOf:
      return fmt::format("(addressof {})", Dump(*To<AddressOf>(expression).method));
    case ExpressionKind::kRaiseEvent:
      return fmt::format("(raiseevent {})", To<RaiseEvent>(expression).name);
  }
  return "?";
}

std::string Dump(const Block &block) {
  std::string text = "(";
  for (const StatementPointer &statement : block) {
    if (text.size() > 1) text += " ";
    text += Dump(*statement);
  }
  return text + ")";
}

std::string ParseAndDump(const std::string &text) {
  const SourceText source("test", text);
  Diagnostics diagnostics;
  const Script script = Parse(source, diagnostics);
  for (const Diagnostic &diagnostic : diagnostics.List()) ADD_FAILURE() << Format(source, diagnostic);
  return Dump(script.body);
}

std::string ParseAndDumpExpression(const std::string &text) {
  const SourceText source("test", "x = " + text);
  Diagnostics diagnostics;
  const Script script = Parse(source, diagnostics);
  for (const Diagnostic &diagnostic : diagnostics.List()) ADD_FAILURE() << Format(source, diagnostic);
  if (script.body.size() != 1 || script.body[0]->kind != StatementKind::kAssign) return "no assignment";
  return Dump(*To<Assign>(*script.body[0]).value);
}

std::string ParseDiagnostics(const std::string &text) {
  const SourceText source("test", text);
  Diagnostics diagnostics;
  Parse(source, diagnostics);
  std::string messages;
  for (const Diagnostic &diagnostic : diagnostics.List()) {
    const Position at = source.Locate(diagnostic.span.begin);
    if (!messages.empty()) messages += "\n";
    messages += fmt::format("{}:{}: {}", at.line, at.column, diagnostic.message);
  }
  return messages;
}

}  // namespace quillbar::language::testing
