// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <algorithm>

#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/parser.h"
#include "tests/language/syntax_dump.h"

namespace quillbar::language::testing {
namespace {

struct DiagnosticCase {
  const char *text;
  const char *expected;
};

class SyntaxDiagnostic : public ::testing::TestWithParam<DiagnosticCase> {};

TEST_P(SyntaxDiagnostic, IsReportedWithItsPlace) { EXPECT_EQ(ParseDiagnostics(GetParam().text), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    All, SyntaxDiagnostic,
    ::testing::Values(
        DiagnosticCase{"x = ", "1:5: expected a value, found the end of the line"},
        DiagnosticCase{"x = (1", "1:7: expected \")\", found the end of the line"},
        DiagnosticCase{"x = f(1", "1:8: expected \",\" or \")\", found the end of the line"},
        DiagnosticCase{"x = 1 2", "1:7: expected the end of the line, found a number"},
        DiagnosticCase{"x = a.1", "1:7: expected the name of a member after \".\", found a number"},
        DiagnosticCase{"Dim x", "1:6: expected \"As\" and a type (Dim name As Type), found the end of the line"},
        DiagnosticCase{"Dim For As Integer", "1:5: \"For\" is a reserved word and can't be the name of a variable"},
        DiagnosticCase{"Dim a(1, 2, 3, 4) As Integer", "1:14: arrays have at most three dimensions"},
        DiagnosticCase{"If a", "1:5: expected \"Then\" after the condition of \"If\", found the end of the line"},
        DiagnosticCase{"If a Then\nF", "1:1: this \"If\" has no \"End If\""},
        DiagnosticCase{"If a Then\nF\nEnd While",
                       "3:1: expected \"End If\" for the \"If\" of line 1, found \"End\" and \"While\""},
        DiagnosticCase{"For i = 1 To 2\nF\nWend", "3:1: expected \"Next\" for the \"For\" of line 1, found \"Wend\""},
        DiagnosticCase{"For i = 1 To 2\nF\nNext j", "3:6: this \"Next\" belongs to the loop over \"i\""},
        DiagnosticCase{"For i = 1 Two 2\nNext",
                       R"(1:11: expected "To" or "DownTo", found "Two"
2:1: "Next" closes or continues nothing here)"},
        DiagnosticCase{"Do\nF", "1:1: this \"Do\" has no \"Loop\""},
        DiagnosticCase{"While True\nF", "1:1: this \"While\" has no \"Wend\""},
        DiagnosticCase{"Sub S()\nF", "1:1: this \"Sub\" has no \"End Sub\""},
        DiagnosticCase{"Sub S() As Integer\nEnd Sub", "1:9: a \"Sub\" has no result; use \"Function\""},
        DiagnosticCase{"Function F()\nEnd Function",
                       "1:13: expected \"As\" and the type of the function's result, found the end of the line"},
        DiagnosticCase{"End If", "1:1: \"End If\" closes or continues nothing here"},
        DiagnosticCase{"If a Then\nSub S()\nEnd If", "2:1: a \"Sub\" is declared outside of every other block"},
        DiagnosticCase{"Module M", "1:1: this \"Module\" has no \"End Module\""},
        DiagnosticCase{"Structure S\nDim x As Integer\nEnd Structure\nx = ;",
                       "1:1: \"Structure\" is not part of this host; docs/language.md lists what is\n"
                       "4:5: \";\" means nothing here"},
        DiagnosticCase{"End Class", "1:1: \"End Class\" closes or continues nothing here"},
        DiagnosticCase{"Private Sub X()\nEnd Sub\nPrint 1",
                       "1:1: \"Private\" is not part of this host; docs/language.md lists what is"},
        DiagnosticCase{"Property x As Integer",
                       "1:1: \"Property\" is not part of this host; docs/language.md lists what is"},
        DiagnosticCase{"Class C\nEvent As\nEnd Class", "2:9: expected the name of a type, found the end of the line"},
        DiagnosticCase{"Class C\nProperty x As Integer", "1:1: this \"Class\" has no \"End Class\""},
        DiagnosticCase{"Exception e As RuntimeException",
                       "1:1: \"Exception\" is not part of this host; docs/language.md lists what is"},
        DiagnosticCase{"Event = 1\nUsing.x = 2\nShared(3)\n=", "4:1: expected a statement, found \"=\""},
        DiagnosticCase{"Print\u00A0\"x\"",
                       "1:6: this is a no-break space (U+00A0), which looks like a plain one; use a plain space"},
        DiagnosticCase{"Print\u200B1", "1:6: this is a space without a width (U+200B), which can't be seen; delete it"},
        DiagnosticCase{"Select Case x\nF\nEnd Select",
                       R"(2:1: expected "Case" or "End Select", found "F"
3:1: "End Select" closes or continues nothing here)"},
        DiagnosticCase{"Try\nF\nEnd Try", "1:1: this \"Try\" has neither \"Catch\" nor \"Finally\""},
        DiagnosticCase{"Exit Page", "1:6: \"Exit\" can't leave \"Page\""},
        DiagnosticCase{"Continue Sub", "1:10: \"Continue\" needs a loop, not \"Sub\""},
        DiagnosticCase{"Redim list", "1:7: \"Redim\" takes an array and its new last index: Redim list(9)"},
        DiagnosticCase{"AddHandler d.E",
                       "1:15: expected \",\" and \"AddressOf\" with a method, found the end of the line"},
        DiagnosticCase{"x = If(a, b)",
                       "1:5: \"If\" inside an expression takes a condition and two values: If(condition, a, b)"},
        DiagnosticCase{"#If DebugBuild", "1:1: this \"#If\" has no \"#EndIf\""},
        DiagnosticCase{"1 = x", "1:1: expected a statement, found a number"}));

TEST(SyntaxErrors, AreAllReportedInOneRun) {
  EXPECT_EQ(ParseDiagnostics("x = \nDim y\nz = 1\nw = )"),
            R"text(1:5: expected a value, found the end of the line
2:6: expected "As" and a type (Dim name As Type), found the end of the line
4:5: expected a value, found ")")text");
}

TEST(SyntaxErrors, StopAtTwenty) {
  std::string text;
  for (int i = 0; i < 50; ++i) text += "x = \n";
  const std::string messages = ParseDiagnostics(text);
  EXPECT_EQ(std::count(messages.begin(), messages.end(), '\n') + 1, 20);
}

TEST(SyntaxErrors, SayThatThereAreMore) {
  const auto isCut = [](int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) text += "x = \n";
    const SourceText source("", text);
    Diagnostics diagnostics;
    Parse(source, diagnostics);
    return diagnostics.IsCut();
  };
  EXPECT_FALSE(isCut(20));
  EXPECT_TRUE(isCut(21));
}

std::string FirstDiagnostic(const std::string &text) {
  const SourceText source("folder/my.xojo_script", text);
  Diagnostics diagnostics;
  Parse(source, diagnostics);
  return diagnostics.Empty() ? "" : Format(source, diagnostics.List().front());
}

TEST(ErrorMessage, ShowsFileLineColumnTheLineAndTheSpot) {
  EXPECT_EQ(FirstDiagnostic("a = 1\nIf a = 1 The\n"),
            R"(folder/my.xojo_script:2:10: error: expected "Then" after the condition of "If", found "The"
    2 | If a = 1 The
      |          ^^^
)");
}

TEST(ErrorMessage, CountsCharactersAndKeepsTabs) {
  EXPECT_EQ(FirstDiagnostic("\tä = \"ö\" = )"),
            "folder/my.xojo_script:1:12: error: expected a value, found \")\"\n"
            "    1 | \tä = \"ö\" = )\n"
            "      | \t          ^\n");
}

TEST(ErrorMessage, PointsPastTheLineWhenSomethingIsMissing) {
  EXPECT_EQ(FirstDiagnostic("x ="),
            R"(folder/my.xojo_script:1:4: error: expected a value, found the end of the line
    1 | x =
      |    ^
)");
}

TEST(ErrorMessage, KeepsToTheFirstLineOfALongSpan) {
  EXPECT_EQ(FirstDiagnostic("x = If(a, _\nb)"),
            "folder/my.xojo_script:1:5: error: \"If\" inside an expression takes a condition and two values: "
            "If(condition, a, b)\n"
            "    1 | x = If(a, _\n"
            "      |     ^^^^^^^\n");
}

TEST(ErrorMessage, ShowsTheSurroundingsOfThePlaceInALongLine) {
  const std::string message =
      FirstDiagnostic("x = \"" + std::string(3'000'000, 'a') + "\" + ) + \"" + std::string(1000, 'b') + "\"");
  EXPECT_EQ(message,
            "folder/my.xojo_script:1:3000010: error: expected a value, found \")\"\n"
            "    1 | …" +
                std::string(35, 'a') + "\" + ) + \"" + std::string(74, 'b') +
                "…\n"
                "      |  " +
                std::string(39, ' ') + "^\n");
  const std::string atStart = FirstDiagnostic("x = )" + std::string(500, '+'));
  EXPECT_THAT(atStart, ::testing::HasSubstr("    1 | x = )" + std::string(113, '+') + "…\n      |     ^\n"));
  const std::string atEnd = FirstDiagnostic("x = \"" + std::string(500, 'a') + "\" + )");
  EXPECT_THAT(atEnd, ::testing::HasSubstr("    1 | …" + std::string(113, 'a') + "\" + )\n"));
}

TEST(ErrorMessage, ShowsWhatCantBeSeenAsEscapes) {
  EXPECT_EQ(FirstDiagnostic("x = \"\x1B[31m\u202E\x7F\u0085\" + )"),
            "folder/my.xojo_script:1:18: error: expected a value, found \")\"\n"
            "    1 | x = \"\\x1B[31m\\u202E\\x7F\\u0085\" + )\n"
            "      |                                  ^\n");
  const SourceText source("a\x1B[2J.xojo_script", "x\xFFy");
  EXPECT_EQ(Format(source, {{2, 3}, "the text \x07 is wrong"}),
            "a\\x1B[2J.xojo_script:1:3: error: the text \\x07 is wrong\n"
            "    1 | x\\xFFy\n"
            "      |      ^\n");
}

TEST(ErrorMessage, CountsTheColumnsOfWideCharacters) {
  EXPECT_THAT(FirstDiagnostic("x = \"新しい\" + )"), ::testing::HasSubstr("\n      |                ^\n"));
}

TEST(ErrorMessage, CutsALongMessage) {
  const SourceText source("a", "x");
  const std::string message = Format(source, {{0, 1}, "found \"" + std::string(100'000, 'a') + "\"; do this"});
  EXPECT_LT(message.size(), 600U);
  EXPECT_THAT(message, ::testing::HasSubstr("aaa\"; do this\n"));
  EXPECT_THAT(message, ::testing::StartsWith("a:1:1: error: found \"aaa"));
}

TEST(ErrorMessage, HasColorsOnRequest) {
  const SourceText source("a", "x y");
  EXPECT_EQ(Format(source, {{2, 3}, "wrong"}, kTerminalColors),
            "\x1B[1ma:1:3:\x1B[0m \x1B[1;31merror:\x1B[0m wrong\n"
            "    1 | x y\n"
            "      |   \x1B[1;31m^\x1B[0m\n");
}

}  // namespace
}  // namespace quillbar::language::testing
