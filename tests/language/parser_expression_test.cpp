// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "tests/language/syntax_dump.h"
#include "tests/support/sample.h"

namespace quillbar::language::testing {
namespace {

struct Precedence {
  const char *text;
  const char *grouped;
};

class OperatorPrecedence : public ::testing::TestWithParam<Precedence> {};

TEST_P(OperatorPrecedence, GroupsOperands) { EXPECT_EQ(ParseAndDumpExpression(GetParam().text), GetParam().grouped); }

// Each rank against its neighbours, in both orders.
INSTANTIATE_TEST_SUITE_P(
    All, OperatorPrecedence,
    ::testing::Values(Precedence{"a ^ b IsA T", "(a ^ (b isa T))"}, Precedence{"-a ^ b", "(-(a ^ b))"},
                      Precedence{"a ^ -b", "(a ^ (-b))"}, Precedence{"a ^ b ^ c", "((a ^ b) ^ c)"},
                      Precedence{"Not -a", "(not (-a))"}, Precedence{"-a * b", "((-a) * b)"},
                      Precedence{"a * -b", "(a * (-b))"}, Precedence{"Not a * b", "((not a) * b)"},
                      Precedence{"Not a = b", "((not a) = b)"}, Precedence{"Not a And b", "((not a) And b)"},
                      Precedence{"Not x IsA T", "(not (x isa T))"}, Precedence{"a + b * c", "(a + (b * c))"},
                      Precedence{"a * b + c", "((a * b) + c)"}, Precedence{"a - b - c", "((a - b) - c)"},
                      Precedence{"a / b * c", "((a / b) * c)"}, Precedence{"a \\ b / c", "((a \\ b) / c)"},
                      Precedence{"a Mod b * c", "((a Mod b) * c)"}, Precedence{"a + b = c + d", "((a + b) = (c + d))"},
                      Precedence{"a < b = c", "((a < b) = c)"}, Precedence{"a = b And c = d", "((a = b) And (c = d))"},
                      Precedence{"a <> b Or c >= d", "((a <> b) Or (c >= d))"},
                      Precedence{"a Is Nil And b", "((a Is nil) And b)"},
                      Precedence{"a Or b And c", "(a Or (b And c))"}, Precedence{"a And b Or c", "((a And b) Or c)"},
                      Precedence{"a Xor b Or c", "((a Xor b) Or c)"}, Precedence{"a Or b Xor c", "((a Or b) Xor c)"},
                      Precedence{"(a + b) * c", "((a + b) * c)"}, Precedence{"+a - +b", "((+a) - (+b))"},
                      Precedence{"- - a", "(-(-a))"}, Precedence{"2 ^ -1 ^ 2", "(2 ^ (-(1 ^ 2)))"}));

TEST(ExpressionParser, ReadsMembersCallsAndElements) {
  EXPECT_EQ(ParseAndDumpExpression("a.b.c"), "a.b.c");
  EXPECT_EQ(ParseAndDumpExpression("f()"), "(f)");
  EXPECT_EQ(ParseAndDumpExpression("f(1, g(2), \"x\").h(3).i"), "((f 1 (g 2) 'x').h 3).i");
  EXPECT_EQ(ParseAndDumpExpression("list(1)(2)"), "((list 1) 2)");
  EXPECT_EQ(ParseAndDumpExpression("\"abc\".Length"), "'abc'.Length");
}

TEST(ExpressionParser, ReadsTheOtherForms) {
  EXPECT_EQ(ParseAndDumpExpression("New A.B"), "(new A.B)");
  EXPECT_EQ(ParseAndDumpExpression("New A(1, 2)"), "(new A 1 2)");
  EXPECT_EQ(ParseAndDumpExpression("If(a, b, c)"), "(if a b c)");
  EXPECT_EQ(ParseAndDumpExpression("AddressOf M"), "(addressof M)");
  EXPECT_EQ(ParseAndDumpExpression("a IsA B.C"), "(a isa B.C)");
  EXPECT_EQ(ParseAndDumpExpression("True Xor FALSE"), "(true Xor false)");
  EXPECT_EQ(ParseAndDumpExpression("Nil"), "nil");
}

TEST(ExpressionParser, AChainAtTheLimitIsReadAndALongerOneRefused) {
  const auto chain = [](int operators) {
    std::string text = "x = 1";
    for (int i = 0; i < operators; ++i) text += "+1";
    return text;
  };
  EXPECT_EQ(ParseDiagnostics(chain(999)), "");
  EXPECT_EQ(ParseDiagnostics(chain(1000)),
            "1:2004: this expression has too many operators; at most 999 in a row are read");
  EXPECT_NE(ParseDiagnostics(chain(500000)), "");
}

TEST(ExpressionParser, DeepNestingIsRefusedInsteadOfOverflowingTheStack) {
  const auto nested = [](int depth) {
    return "x = " + std::string(static_cast<std::size_t>(depth), '(') + "1" +
           std::string(static_cast<std::size_t>(depth), ')');
  };
  EXPECT_EQ(ParseDiagnostics(nested(199)), "");
  EXPECT_EQ(ParseDiagnostics(nested(200)), "1:205: this is nested too deeply; at most 200 levels are read");
  // Even the fewer ones would take more of the stack than there is.
  const int kDeep = test::TakesSamples() ? 100'000 : 1'000'000;
  EXPECT_NE(ParseDiagnostics(nested(kDeep)), "");
  EXPECT_NE(ParseDiagnostics("x = " + std::string(static_cast<std::size_t>(kDeep), '-') + "1"), "");
  std::string calls = "x = ";
  for (int i = 0; i < kDeep / 10; ++i) calls += "f(";
  EXPECT_NE(ParseDiagnostics(calls), "");
  std::string members = "x = a";
  for (int i = 0; i < kDeep / 10; ++i) members += ".b";
  EXPECT_EQ(ParseDiagnostics(members), "1:5: this chain of members is too long");
}

}  // namespace
}  // namespace quillbar::language::testing
