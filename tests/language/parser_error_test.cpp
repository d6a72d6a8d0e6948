// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>

#include "host/language/diagnostics.h"
#include "host/language/parser.h"
#include "tests/language/syntax_dump.h"

namespace quillbar::language::testing {
namespace {

struct Fault {
  const char *text;
  const char *expected;
};

class SyntaxFault : public ::testing::TestWithParam<Fault> {};

TEST_P(SyntaxFault, IsReportedWithItsPlace) { EXPECT_EQ(ParseFaults(GetParam().text), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    All, SyntaxFault,
    ::testing::Values(
        Fault{"x = ", "1:5: expected a value, found the end of the line"},
        Fault{"x = (1", "1:7: expected \")\", found the end of the line"},
        Fault{"x = f(1", "1:8: expected \",\" or \")\", found the end of the line"},
        Fault{"x = 1 2", "1:7: expected the end of the line, found a number"},
        Fault{"x = a.1", "1:7: expected the name of a member after \".\", found a number"},
        Fault{"Dim x", "1:6: expected \"As\" and a type (Dim name As Type), found the end of the line"},
        Fault{"Dim For As Integer", "1:5: \"For\" is a reserved word and can't be the name of a variable"},
        Fault{"Dim a(1, 2) As Integer", "1:8: arrays have one dimension"},
        Fault{"If a", "1:5: expected \"Then\" after the condition of \"If\", found the end of the line"},
        Fault{"If a Then\nF", "1:1: this \"If\" has no \"End If\""},
        Fault{"If a Then\nF\nEnd While",
              "3:1: expected \"End If\" for the \"If\" of line 1, found \"End\" and \"While\""},
        Fault{"For i = 1 To 2\nF\nWend", "3:1: expected \"Next\" for the \"For\" of line 1, found \"Wend\""},
        Fault{"For i = 1 To 2\nF\nNext j", "3:6: this \"Next\" belongs to the loop over \"i\""},
        Fault{"For i = 1 Two 2\nNext",
              "1:11: expected \"To\" or \"DownTo\", found \"Two\""
              "\n2:1: \"Next\" closes or continues nothing here"},
        Fault{"Do\nF", "1:1: this \"Do\" has no \"Loop\""},
        Fault{"While True\nF", "1:1: this \"While\" has no \"Wend\""},
        Fault{"Sub S()\nF", "1:1: this \"Sub\" has no \"End Sub\""},
        Fault{"Sub S() As Integer\nEnd Sub", "1:9: a \"Sub\" has no result; use \"Function\""},
        Fault{"Function F()\nEnd Function",
              "1:13: expected \"As\" and the type of the function's result, found the end of the line"},
        Fault{"End If", "1:1: \"End If\" closes or continues nothing here"},
        Fault{"If a Then\nSub S()\nEnd If", "2:1: a \"Sub\" is declared outside of every other block"},
        Fault{"Class C", "1:1: \"Class\" is no part of this host's language"},
        Fault{"Select Case x\nF\nEnd Select",
              "2:1: expected \"Case\" or \"End Select\", found \"F\""
              "\n3:1: \"End Select\" closes or continues nothing here"},
        Fault{"Try\nF\nEnd Try", "1:1: this \"Try\" has neither \"Catch\" nor \"Finally\""},
        Fault{"Exit Page", "1:6: \"Exit\" can't leave \"Page\""},
        Fault{"Continue Sub", "1:10: \"Continue\" needs a loop, not \"Sub\""},
        Fault{"Redim list", "1:7: \"Redim\" takes an array and its new last index: Redim list(9)"},
        Fault{"AddHandler d.E", "1:15: expected \",\" and \"AddressOf\" with a method, found the end of the line"},
        Fault{"x = If(a, b)", "1:5: \"If\" inside an expression takes a condition and two values: If(condition, a, b)"},
        Fault{"#If DebugBuild", "1:1: of directives, only #Pragma is known (and passed over)"},
        Fault{"1 = x", "1:1: expected a statement, found a number"}));

TEST(SyntaxFaults, AreAllReportedInOneRun) {
  EXPECT_EQ(ParseFaults("x = \nDim y\nz = 1\nw = )"),
            "1:5: expected a value, found the end of the line\n"
            "2:6: expected \"As\" and a type (Dim name As Type), found the end of the line\n"
            "4:5: expected a value, found \")\"");
}

TEST(SyntaxFaults, StopAtTwenty) {
  std::string text;
  for (int i = 0; i < 50; ++i) text += "x = \n";
  const std::string faults = ParseFaults(text);
  EXPECT_EQ(std::count(faults.begin(), faults.end(), '\n') + 1, 20);
}

std::string FirstFault(const std::string &text) {
  const SourceText source("folder/my.xojo_script", text);
  Diagnostics diagnostics;
  Parse(source, diagnostics);
  return diagnostics.Empty() ? "" : Format(source, diagnostics.List().front());
}

TEST(ErrorMessage, ShowsFileLineColumnTheLineAndTheSpot) {
  EXPECT_EQ(FirstFault("a = 1\nIf a = 1 The\n"),
            "folder/my.xojo_script:2:10: error: expected \"Then\" after the condition of \"If\", found \"The\"\n"
            "    2 | If a = 1 The\n"
            "      |          ^^^\n");
}

TEST(ErrorMessage, CountsCharactersAndKeepsTabs) {
  EXPECT_EQ(FirstFault("\tä = \"ö\" = )"),
            "folder/my.xojo_script:1:12: error: expected a value, found \")\"\n"
            "    1 | \tä = \"ö\" = )\n"
            "      | \t          ^\n");
}

TEST(ErrorMessage, PointsBehindTheLineWhenSomethingIsMissing) {
  EXPECT_EQ(FirstFault("x ="),
            "folder/my.xojo_script:1:4: error: expected a value, found the end of the line\n"
            "    1 | x =\n"
            "      |    ^\n");
}

TEST(ErrorMessage, KeepsToTheFirstLineOfALongSpan) {
  EXPECT_EQ(FirstFault("x = If(a, _\nb)"),
            "folder/my.xojo_script:1:5: error: \"If\" inside an expression takes a condition and two values: "
            "If(condition, a, b)\n"
            "    1 | x = If(a, _\n"
            "      |     ^^^^^^^\n");
}

}  // namespace
}  // namespace quillbar::language::testing
