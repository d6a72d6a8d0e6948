// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "host/language/syntax/parser.h"
#include "tests/language/syntax_dump.h"

namespace quillbar::language::testing {
namespace {

struct Example {
  const char *text;
  const char *dump;
};

class Statements : public ::testing::TestWithParam<Example> {};

TEST_P(Statements, AreRead) { EXPECT_EQ(ParseAndDump(GetParam().text), GetParam().dump); }

INSTANTIATE_TEST_SUITE_P(Declarations, Statements,
                         ::testing::Values(Example{"Dim a As Integer", "((dim a as Integer = -))"},
                                           Example{"Var a, b As Double = 1", "((dim a b as Double = 1))"},
                                           Example{"Dim a() As String", "((dim a[] as String = -))"},
                                           Example{"Dim a(9), b As Integer", "((dim a[9] b as Integer = -))"},
                                           Example{"Dim a(-1) As Integer", "((dim a[(-1)] as Integer = -))"},
                                           Example{"Dim p As New A.B(1)", "((dim p as A.B = (new A.B 1)))"},
                                           Example{"Static n As Integer = 5", "((static n as Integer = 5))"},
                                           Example{"Const k = 1 + 2", "((const k as - = (1 + 2)))"},
                                           Example{"Const k As Double = 3", "((const k as Double = 3))"}));

INSTANTIATE_TEST_SUITE_P(
    Simple, Statements,
    ::testing::Values(Example{"a = b = c", "((= a (b = c)))"}, Example{"a.b(1) = 2", "((= (a.b 1) 2))"},
                      Example{"a += 1", "((+= a 1))"}, Example{"a(1) *= 2", "((*= (a 1) 2))"}, Example{"F", "((do F))"},
                      Example{"F()", "((do (F)))"}, Example{"F(1)", "((do (F 1)))"},
                      Example{"F 1, 2", "((do (F 1 2)))"}, Example{"p.LineTo x, y", "((do (p.LineTo x y)))"},
                      Example{"F -1", "((do (F (-1))))"}, Example{"Print (1 + 2) * 3", "((do (Print ((1 + 2) * 3))))"},
                      Example{"F (1), 2", "((do (F 1 2)))"}, Example{"F(1).G", "((do (F 1).G))"},
                      Example{"a.b(1).c 2", "((do ((a.b 1).c 2)))"}, Example{"Call F(1)", "((drop (F 1)))"},
                      Example{"Return", "((return -))"}, Example{"Return a + b", "((return (a + b)))"},
                      Example{"Redim list(n - 1)", "((redim list (n - 1)))"},
                      Example{"AddHandler d.E, AddressOf H", "((add d.E (addressof H)))"},
                      Example{"RemoveHandler d.E, AddressOf H", "((remove d.E (addressof H)))"},
                      Example{"Raise New E", "((raise (new E)))"}, Example{"Exit", "((exit))"},
                      Example{"Exit For i", "((exit for i))"}, Example{"Exit Sub", "((exit sub))"},
                      Example{"Continue While", "((continue while))"},
                      Example{"#Pragma DisableBackgroundTasks\nF", "((do F))"}));

INSTANTIATE_TEST_SUITE_P(
    Branches, Statements,
    ::testing::Values(Example{"If a Then\nF\nEnd If", "((if a ((do F)) else ()))"},
                      Example{"If a Then\nF\nElseIf b Then\nG\nElse If c Then\nH\nElse\nI\nEnd",
                              "((if a ((do F)) b ((do G)) c ((do H)) else ((do I))))"},
                      Example{"If a Then F", "((if a ((do F)) else ()))"},
                      Example{"If a Then F 1 Else G 2", "((if a ((do (F 1))) else ((do (G 2)))))"},
                      Example{"If a Then If b Then F Else G", "((if a ((if b ((do F)) else ((do G)))) else ()))"},
                      Example{"If a Then x = 1 Else Return", "((if a ((= x 1)) else ((return -))))"},
                      Example{"Select Case x\n\nCase 1, 2\nF\nCase 3 To 5, Is > 9\nG\nCase Else\nH\nEnd Select",
                              "((select x (case [= 1] [= 2] ((do F))) (case [3 to 5] [> 9] ((do G))) else ((do H))))"},
                      Example{"Select Case x\nCase IsA T\nF\nElse\nG\nEnd",
                              "((select x (case [isa T] ((do F))) else ((do G))))"}));

INSTANTIATE_TEST_SUITE_P(
    Loops, Statements,
    ::testing::Values(Example{"For i = 1 To 3\nF\nNext", "((for i as - = 1 to 3 step - ((do F))))"},
                      Example{"For i As Integer = 9 DownTo 1 Step 2\nNext i",
                              "((for i as Integer = 9 downto 1 step 2 ()))"},
                      Example{"For Each p As A.B In list\nF\nNext", "((each p as A.B in list ((do F))))"},
                      Example{"For Each p In f(1)\nNext p", "((each p as - in (f 1) ()))"},
                      Example{"While a\nF\nWend", "((while a ((do F))))"},
                      Example{"While a\nEnd While", "((while a ()))"}, Example{"Do\nF\nLoop", "((do - ((do F)) -))"},
                      Example{"Do Until a\nLoop", "((do until a () -))"},
                      Example{"Do\nLoop While a = 1", "((do - () while (a = 1)))"}));

INSTANTIATE_TEST_SUITE_P(Exceptions, Statements,
                         ::testing::Values(Example{
                             "Try\nF\nCatch e As IOException\nG\nCatch e\nH\nCatch\nI\nFinally\nJ\nEnd Try",
                             "((try ((do F)) (catch e as IOException ((do G))) (catch e as - ((do H))) "
                             "(catch - as - ((do I))) finally ((do J))))"}));

syntax::Script ParseScript(const std::string &text) {
  const SourceText source("test", text);
  Diagnostics diagnostics;
  syntax::Script script = Parse(source, diagnostics);
  for (const Diagnostic &diagnostic : diagnostics.List()) ADD_FAILURE() << Format(source, diagnostic);
  return script;
}

TEST(ScriptParser, ReadsProceduresApartFromWhatRuns) {
  const syntax::Script script = ParseScript(
      R"(F
Function Add(a As Integer, ByVal b As Integer = 2, Optional c As A.B, ByRef d() As Double) As String()
Return a
End Function
Sub Go
End Sub
Sub Many(ParamArray items As Integer)
End
G
)");
  EXPECT_EQ(Dump(script.body), "((do F) (do G))");
  ASSERT_EQ(script.procedures.size(), 3u);
  const syntax::Procedure &add = *script.procedures[0];
  EXPECT_EQ(add.name, "Add");
  ASSERT_TRUE(add.result);
  EXPECT_EQ(Dump(*add.result), "String()");
  ASSERT_EQ(add.parameters.size(), 4u);
  EXPECT_EQ(Dump(add.parameters[0].type), "Integer");
  EXPECT_FALSE(add.parameters[0].isOptional);
  EXPECT_TRUE(add.parameters[1].isOptional);
  EXPECT_EQ(Dump(*add.parameters[1].defaultValue), "2");
  EXPECT_TRUE(add.parameters[2].isOptional);
  EXPECT_FALSE(add.parameters[2].defaultValue);
  EXPECT_TRUE(add.parameters[3].byReference);
  EXPECT_EQ(Dump(add.parameters[3].type), "Double()");
  EXPECT_FALSE(script.procedures[1]->result);
  EXPECT_TRUE(script.procedures[2]->parameters[0].isList);
}

TEST(ScriptParser, ReadsEnumerations) {
  const syntax::Script script = ParseScript(R"(Enum Suit As UInt8
  Clubs

  Hearts = 5 ' red
  Spades
End Enum
)");
  ASSERT_EQ(script.enumerations.size(), 1u);
  const syntax::Enumeration &suit = *script.enumerations[0];
  EXPECT_EQ(suit.name, "Suit");
  EXPECT_EQ(Dump(*suit.type), "UInt8");
  ASSERT_EQ(suit.values.size(), 3u);
  EXPECT_EQ(suit.values[1].name, "Hearts");
  EXPECT_EQ(Dump(*suit.values[1].value), "5");
}

}  // namespace
}  // namespace quillbar::language::testing
