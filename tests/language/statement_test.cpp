// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using StatementTest = ScriptTest;

TEST_F(StatementTest, DeclarationsInAllForms) {
  EXPECT_EQ(Output("Dim a, b As Integer = 4\nVar s As String = \"x\"\nDim list(2) As Integer\nDim none(-1) As String\n"
                   "Dim made As New FolderItem(\"f\")\nDim names() As String = Array(\"p\", \"q\")\n"
                   "Print(a + "
                   "b)\nPrint(s)\nPrint(list.LastIndex)\nPrint(none.LastIndex)\nPrint(made.Name)\nPrint(names(1))"),
            "8\nx\n2\n-1\nf\nq\n");
}

TEST_F(StatementTest, ADeclarationInALoopStartsAnewEachTime) {
  EXPECT_EQ(Output("For i As Integer = 1 To 2\nDim n As Integer\nDim list() As Integer\nn = n + "
                   "i\nlist.Add(i)\nPrint(Str(n) + \" \" + Str(list.Count))\nNext"),
            "1 1\n2 1\n");
}

TEST_F(StatementTest, StaticVariablesKeepTheirValues) {
  EXPECT_EQ(Output("Count\nCount\nCount\nSub Count()\nStatic n As Integer = 10\nn += 1\nPrint(n)\nEnd Sub"),
            "11\n12\n13\n");
}

TEST_F(StatementTest, BlocksHaveTheirOwnNames) {
  EXPECT_EQ(Output("Dim x As Integer = 1\nIf True Then\nDim y As Integer = 2\nDim x As Integer = 3\nPrint(x "
                   "+ y)\nEnd If\nPrint(x)"),
            "5\n1\n");
  ExpectErrors({{"If True Then\nDim y As Integer\nEnd If\nPrint(y)", "4:7: error: \"y\" is not known"},
                {"For i As Integer = 1 To 2\nNext\nPrint(i)", "3:7: error: \"i\" is not known"},
                {"Dim x As Integer\nDim X As String", "2:5: error: \"X\" is declared already in line 1"},
                {"Sub S(a As Integer)\nDim a As String\nEnd Sub", "2:5: error: \"a\" is declared already in line 1"},
                {"Print(late)\nDim late As Integer", "1:7: error: \"late\" is used before its declaration in line 2"},
                {"Dim self As Integer = self + 1", "1:23: error: \"self\" is used before its declaration in line 1"}});
}

TEST_F(StatementTest, VariablesOfTheScriptAreSeenByItsProcedures) {
  EXPECT_EQ(Output("Dim total As Integer = 5\nAdd(3)\nPrint(total)\nSub Add(n As Integer)\ntotal = total + "
                   "n\nEnd Sub"),
            "8\n");
  EXPECT_EQ(Output("Show\nDim words() As String = Array(\"a\")\nDim n As Integer = 2\nShow\nSub "
                   "Show()\nPrint(Str(n) + Str(words.Count))\nEnd Sub"),
            "00\n21\n");
}

TEST_F(StatementTest, AssignmentsWithAnOperator) {
  EXPECT_EQ(Output("Dim n As Integer = 7\nn += 3\nn -= 1\nn *= 4\nPrint(n)\nDim d As Double = 9\nd /= "
                   "2\nPrint(d)\nDim s As String = \"a\"\ns += \"b\"\nPrint(s)"),
            "36\n4.5\nab\n");
}

TEST_F(StatementTest, AssignmentsWithAnOperatorEvaluateTheTargetOnce) {
  EXPECT_EQ(Output("Dim list() As Integer = Array(1, 2, 3)\nlist(Next1()) += 10\nPrint(list(1))\n"
                   "Function Next1() As Integer\nPrint(\"called\")\nReturn 1\nEnd Function"),
            "called\n12\n");
}

TEST_F(StatementTest, IfWithElseIfAndElse) {
  const std::string text =
      "For n As Integer = 1 To 4\nIf n = 1 Then\nPrint(\"one\")\nElseIf n = 2 Then\nPrint(\"two\")\nElse If "
      "n = 3 Then\nPrint(\"three\")\nElse\n"
      "Print(\"more\")\nEnd If\nNext";
  EXPECT_EQ(Output(text), "one\ntwo\nthree\nmore\n");
  EXPECT_EQ(Output("If 1 = 2 Then Print \"a\" Else Print \"b\""), "b\n");
}

TEST_F(StatementTest, SelectCaseWithValuesRangesComparisonsAndLists) {
  const std::string select =
      "Function Name(n As Double) As String\nSelect Case n\nCase 1\nReturn \"one\"\nCase 2, 3\nReturn "
      "\"few\"\nCase 4 To 9\nReturn \"some\"\n"
      "Case Is >= 100, Is < 0\nReturn \"far\"\nCase Else\nReturn \"many\"\nEnd Select\nEnd Function\n";
  EXPECT_EQ(
      Output(select + "For Each n As Double In Array(1.0, 3.0, 4.0, 9.0, 9.5, 100.0, -1.0)\nPrint(Name(n))\nNext"),
      "one\nfew\nsome\nsome\nmany\nfar\nfar\n");
  EXPECT_EQ(Output("Select Case \"Blue\"\nCase \"red\"\nPrint(1)\nCase "
                   "\"BLUE\"\nPrint(2)\nElse\nPrint(3)\nEnd Select"),
            "2\n");
  EXPECT_EQ(Output("Select Case True\nCase 1 = 2\nPrint(1)\nCase 2 = 2\nPrint(2)\nEnd Select"), "2\n");
  EXPECT_EQ(Output("Dim o As FolderItem\nSelect Case o\nCase Nil\nPrint(\"nil\")\nEnd Select"), "nil\n");
}

TEST_F(StatementTest, SelectEvaluatesItsSubjectOnce) {
  EXPECT_EQ(Output("Select Case F\nCase 1, 2\nPrint(\"no\")\nCase 3\nPrint(\"yes\")\nEnd Select\nFunction "
                   "F() As Integer\nPrint(\"F\")\nReturn 3\nEnd Function"),
            "F\nyes\n");
}

TEST_F(StatementTest, ForCountsInAllDirections) {
  const auto counted = [&](const std::string &head) {
    return Output("Dim s As String\n" + head + "\ns = s + Str(i) + \" \"\nNext\nPrint(s)");
  };
  EXPECT_EQ(counted("For i As Integer = 1 To 3"), "1 2 3 \n");
  EXPECT_EQ(counted("For i As Integer = 3 DownTo 1"), "3 2 1 \n");
  EXPECT_EQ(counted("For i As Integer = 1 To 10 Step 4"), "1 5 9 \n");
  EXPECT_EQ(counted("For i As Integer = 10 To 1 Step -4"), "10 6 2 \n");
  EXPECT_EQ(counted("For i As Integer = 9 DownTo 1 Step 4"), "9 5 1 \n");
  EXPECT_EQ(counted("For i As Integer = 3 To 1"), "\n");
  EXPECT_EQ(counted("For i As Double = 0 To 1 Step 0.25"), "0 0.25 0.5 0.75 1 \n");
  EXPECT_EQ(counted("For i As UInt8 = 253 To 255"), "253 254 255 \n");
  EXPECT_EQ(counted("For i As UInt8 = 2 DownTo 0"), "2 1 0 \n");
  EXPECT_EQ(counted("For i As Integer = " + kLargestInteger + " - 1 To " + kLargestInteger),
            std::to_string(INTPTR_MAX - 1) + " " + kLargestInteger + " \n");
  EXPECT_EQ(counted("For i As UInt64 = &hFFFFFFFFFFFFFFFE To &hFFFFFFFFFFFFFFFF"),
            "18446744073709551614 18446744073709551615 \n");
  EXPECT_EQ(counted("Dim i As Integer\nFor i = 1 To 2"), "1 2 \n");
}

TEST_F(StatementTest, ForEvaluatesItsBoundsOnceAndReadsItsVariableEachTime) {
  EXPECT_EQ(Output("Dim last As Integer = 3\nDim i As Integer\nFor i = 1 To last\nlast = 10\nIf i = 2 Then i "
                   "= 5\nPrint(i)\nNext\nPrint(i)"),
            "1\n5\n6\n");
}

TEST_F(StatementTest, ForEachWalksThroughAnArray) {
  EXPECT_EQ(Output("For Each s As String In Array(\"a\", \"b\")\nPrint(s)\nNext"), "a\nb\n");
  EXPECT_EQ(Output("Dim n As Double\nFor Each n In Array(1, 2)\nPrint(n / 2)\nNext"), "0.5\n1\n");
  EXPECT_EQ(Output("Dim list() As Integer = Array(1, 2)\nFor Each n As Integer In list\nIf list.Count < 4 "
                   "Then list.Add(n * 10)\nPrint(n)\nNext"),
            "1\n2\n10\n20\n");
  EXPECT_EQ(Output("Dim list() As Integer = Array(1, 2, 3)\nFor Each n As Integer In "
                   "list\nPrint(n)\nlist.RemoveAll\nNext"),
            "1\n");
}

TEST_F(StatementTest, WhileAndDoLoops) {
  EXPECT_EQ(Output("Dim n As Integer\nWhile n < 2\nn = n + 1\nPrint(n)\nWend"), "1\n2\n");
  EXPECT_EQ(Output("Dim n As Integer\nDo\nn += 1\nLoop Until n >= 3\nPrint(n)"), "3\n");
  EXPECT_EQ(Output("Dim n As Integer\nDo\nn += 1\nLoop While n < 3\nPrint(n)"), "3\n");
  EXPECT_EQ(Output("Dim n As Integer\nDo Until n = 3\nn += 1\nLoop\nPrint(n)"), "3\n");
  EXPECT_EQ(Output("Dim n As Integer = 9\nDo While n < 3\nn += 1\nLoop\nPrint(n)"), "9\n");
  EXPECT_EQ(Output("Dim n As Integer\nDo\nn += 1\nIf n = 4 Then Exit\nLoop\nPrint(n)"), "4\n");
}

TEST_F(StatementTest, ExitAndContinueAimAtTheLoopThatIsNamed) {
  EXPECT_EQ(Output("For i As Integer = 1 To 5\nIf i = 2 Then Continue\nIf i = 4 Then Exit\nPrint(i)\nNext"), "1\n3\n");
  EXPECT_EQ(Output("For i As Integer = 1 To 3\nFor j As Integer = 1 To 3\nIf j = 2 Then Continue For i\nIf i "
                   "= 3 Then Exit For i\nPrint(i * 10 + j)\nNext\nNext"),
            "11\n21\n");
  EXPECT_EQ(Output("For i As Integer = 1 To 2\nWhile True\nExit While\nWend\nDo\nExit "
                   "For\nLoop\nNext\nPrint(\"end\")"),
            "end\n");
  EXPECT_EQ(Output("For i As Integer = 1 To 3\nSelect Case i\nCase 2\nExit For\nElse\nPrint(i)\nEnd Select\nNext"),
            "1\n");
  EXPECT_EQ(Output("Select Case 1\nCase 1\nExit Select\nPrint(\"no\")\nEnd Select\nPrint(\"yes\")"), "yes\n");
  EXPECT_EQ(Output("S\nPrint(F)\nSub S()\nExit Sub\nPrint(\"no\")\nEnd Sub\nFunction F() As Integer\nExit "
                   "Function\nEnd Function"),
            "0\n");
}

TEST_F(StatementTest, ProceduresTakeTheirArgumentsByValueOrByRef) {
  EXPECT_EQ(Output("Dim a As Integer = 1\nDim b As Integer = 1\nChange(a, b)\nPrint(Str(a) + Str(b))\n"
                   "Sub Change(ByVal x As Integer, ByRef y As Integer)\nx = 5\ny = 6\nEnd Sub"),
            "16\n");
  EXPECT_EQ(Output("Dim s As String = \"a\"\nTwice(s)\nPrint(s)\nSub Twice(ByRef t As "
                   "String)\nAppend(t)\nAppend(t)\nEnd Sub\n"
                   "Sub Append(ByRef t As String)\nt = t + \"x\"\nEnd Sub"),
            "axx\n");
}

TEST_F(StatementTest, ElementsOfArraysGoByRefToo) {
  EXPECT_EQ(Output("Dim list() As Integer = Array(1, 2)\nDouble2(list(At()))\nPrint(list(1))\nSub "
                   "Double2(ByRef n As Integer)\nn = n * 2\nEnd Sub\n"
                   "Function At() As Integer\nPrint(\"at\")\nReturn 1\nEnd Function"),
            "at\n4\n");
  EXPECT_EQ(FirstError("Dim list() As Integer = Array(1)\nShrink(list(0), list)\nSub Shrink(ByRef n As "
                       "Integer, all() As Integer)\nall.RemoveAll\nn = 2\nEnd Sub"),
            "2:13: OutOfBoundsException: the index is 0, but the array is empty");
}

TEST_F(StatementTest, ArraysArePassedAsThemselves) {
  EXPECT_EQ(Output("Dim list() As Integer\nFill(list)\nPrint(list.Count)\nSub Fill(a() As "
                   "Integer)\na.Add(1)\na.Add(2)\nEnd Sub"),
            "2\n");
  EXPECT_EQ(Output("Dim list() As Integer\nReplace2(list)\nPrint(list.Count)\nSub Replace2(ByRef a() As "
                   "Integer)\na = Array(1, 2, 3)\nEnd Sub"),
            "3\n");
}

TEST_F(StatementTest, OptionalParametersTakeTheirDefaults) {
  const std::string procedures =
      "Function F(a As Integer, b As Integer = 10, Optional c As String) As String\nReturn Str(a) + \" \" + "
      "Str(b) + \" [\" + c + \"]\"\nEnd Function\n"
      "Function G(a As Integer = 2 + 3, list() As String = Array()) As Integer\nReturn a\nEnd Function\n";
  EXPECT_EQ(FirstError(procedures), "4:53: error: a default value is made of literals, constants and operators");
  const std::string fine = procedures.substr(0, procedures.find("Function G"));
  EXPECT_EQ(Output(fine + "Print(F(1))\nPrint(F(1, 2))\nPrint(F(1, 2, \"x\"))"), "1 10 []\n1 2 []\n1 2 [x]\n");
}

TEST_F(StatementTest, AParamArrayGathersTheRest) {
  EXPECT_EQ(Output("Print(Sum())\nPrint(Sum(1))\nPrint(Sum(1, 2, 3))\nFunction Sum(ParamArray numbers As "
                   "Integer) As Integer\nDim total As Integer\n"
                   "For Each n As Integer In numbers\ntotal += n\nNext\nReturn total\nEnd Function"),
            "0\n1\n6\n");
}

TEST_F(StatementTest, OverloadsAreChosenByTypesAndCount) {
  const std::string overloads =
      "Function What(n As Integer) As String\nReturn \"integer\"\nEnd Function\nFunction What(n As Double) "
      "As String\nReturn \"double\"\nEnd Function\n"
      "Function What(s As String) As String\nReturn \"string\"\nEnd Function\nFunction What(s As String, t "
      "As String) As String\nReturn \"two\"\nEnd Function\n"
      "Function What(o As FolderItem) As String\nReturn \"object\"\nEnd Function\n";
  EXPECT_EQ(Output(overloads + "Dim b As UInt8\nDim s As "
                               "Single\nPrint(What(1))\nPrint(What(b))\nPrint(What(1.5))\nPrint(What(s))"
                               "\nPrint(What(\"a\"))\nPrint(What(\"a\", \"b\"))\nPrint(What(Nil))"),
            "integer\ninteger\ndouble\ndouble\nstring\ntwo\nobject\n");
  EXPECT_EQ(FirstError(overloads + "Print(What(True))"), "16:7: error: no \"What\" takes these arguments; there is");
}

TEST_F(StatementTest, RecursionWorks) {
  EXPECT_EQ(Output("Print(Fibonacci(20))\nFunction Fibonacci(n As Integer) As Integer\nIf n < 2 Then Return "
                   "n\nReturn Fibonacci(n - 1) + Fibonacci(n - 2)\nEnd Function"),
            "6765\n");
  EXPECT_EQ(Output("Print(Depth(3000))\nFunction Depth(n As Integer) As Integer\nIf n = 0 Then Return "
                   "0\nReturn Depth(n - 1) + 1\nEnd Function"),
            "3000\n");
}

TEST_F(StatementTest, AFunctionThatEndsWithoutReturnGivesZero) {
  EXPECT_EQ(Output("Print(F)\nPrint(G.Length)\nPrint(H.Count)\nFunction F() As Integer\nEnd "
                   "Function\nFunction G() As String\nEnd Function\nFunction H() As Integer()\nEnd Function"),
            "0\n0\n0\n");
}

TEST_F(StatementTest, ReturnEndsTheScriptToo) { EXPECT_EQ(Output("Print(1)\nReturn\nPrint(2)"), "1\n"); }

TEST_F(StatementTest, CallDropsAResult) {
  EXPECT_EQ(Output("Call F(1)\nFunction F(n As Integer) As Integer\nPrint(n)\nReturn n\nEnd Function"), "1\n");
  EXPECT_EQ(FirstError("F(1)\nFunction F(n As Integer) As Integer\nReturn n\nEnd Function"),
            "1:1: error: this gives a value of type Integer that isn't used; write \"Call\" before it to drop it");
}

TEST_F(StatementTest, NamesIgnoreCase) {
  EXPECT_EQ(Output("DIM Count AS integer = 1\ncOUNT = COUNT + 1\nPRINT(count)\nshow(COUNT)\nsub Show(N as "
                   "Integer)\nprint(n)\nEND SUB"),
            "2\n2\n");
}

TEST_F(StatementTest, ArgumentsOfTheCommandLine) {
  const ScriptRun run =
      Run("Print(Arguments.Count)\nFor Each a As String In Arguments\nPrint(a)\nNext\nPrint(System.CommandLine)",
          {"one", "zwö"});
  EXPECT_EQ(run.output, "2\none\nzwö\none zwö\n");
}

TEST_F(StatementTest, FaultsInStatements) {
  ExpectErrors({
      {"x = 5", "1:1: error: \"x\" is not known"},
      {"Dim count As Integer\nPrint(cuont)", "2:7: error: \"cuont\" is not known; did you mean \"count\"?"},
      {"Prnt(1)", "1:1: error: \"Prnt\" is not known; did you mean \"Print\"?"},
      {"5 = 5", "1:1: error: expected a statement, found a number"},
      {"Dim x As Integer\nx", "2:1: error: this is a value, not a statement; was \"=\" forgotten?"},
      {"Dim x As Integer\nx(1) = 5",
       "2:1: error: this is Integer, neither an array nor a method, so nothing can stand in parentheses "
       "behind it"},
      {"Dim x As Integer = Print(1)", "1:20: error: this is the call of a Sub, which has no value"},
      {"S = 1\nSub S()\nEnd Sub", "1:1: error: \"S\" is a method, which can't be assigned to"},
      {"Integer = 1", "1:1: error: \"Integer\" is a type, which can't be assigned to"},
      {"Print(Integer)", "1:7: error: Integer is a type, but a value is needed"},
      {"Print(System)", "1:7: error: \"System\" is a module, but a value is needed"},
      {"If 1 Then Print(1)", "1:4: error: the condition of \"If\" is a Boolean, but this is Integer"},
      {"While \"a\"\nWend", "1:7: error: the condition of \"While\" is a Boolean, but this is String"},
      {"Do Until 1\nLoop", "1:10: error: the condition of \"Until\" is a Boolean, but this is Integer"},
      {"For s As String = \"a\" To \"b\"\nNext", "1:5: error: the variable of \"For\" is a number, but this is String"},
      {"For i = 1 To 2\nNext", "1:5: error: there is no variable \"i\"; declare it here: For i As …"},
      {"For i As Integer = 1 To 5 Step 0\nNext", "1:32: error: a loop with a step of 0 would never end"},
      {"For Each x As Integer In 5\nNext", "1:26: error: \"For Each\" walks through an array, but this is Integer"},
      {"For Each x As Integer In Array(\"a\")\nNext",
       "1:10: error: the variable can't hold the elements: it is Integer, they are String"},
      {"Exit", "1:1: error: there is no loop around this"},
      {"Continue For", "1:1: error: there is no \"For\" around this"},
      {"For i As Integer = 1 To 2\nExit For j\nNext", "2:1: error: there is no \"For\" over \"j\" around this"},
      {"Exit Sub", "1:1: error: there is no Sub around this to leave"},
      {"Function F() As Integer\nExit Sub\nEnd Function", "2:1: error: there is no Sub around this to leave"},
      {"Return 5", "1:8: error: the script itself returns no value"},
      {"Sub S()\nReturn 5\nEnd Sub", "2:8: error: a Sub returns no value"},
      {"Function F() As Integer\nReturn\nEnd Function",
       "2:1: error: this Function returns Integer: a value is missing"},
      {"Function F() As Integer\nReturn \"a\"\nEnd Function",
       "2:8: error: Integer is needed for the result, but this is String; convert it with Val(…)"},
      {"Select Case 1\nCase \"a\"\nEnd Select",
       "2:6: error: \"=\" can't compare Integer and String; convert one with Str(…) or Val(…)"},
      {"Redim x(5)", "1:7: error: \"x\" is not known"},
      {"Dim s As String\nRedim s(5)", "2:7: error: \"Redim\" changes the size of an array, but this is String"},
      {"Dim a(5) As Integer = Array(1)", "1:23: error: an array with a given size takes no initial value"},
      {"Sub S()\nEnd Sub\nSub s()\nEnd Sub", "3:5: error: \"s\" with these parameters is declared already in line 1"},
      {"Sub S(a As Integer, A As String)\nEnd Sub", "1:21: error: \"A\" is declared already in line 1"},
      {"Sub S(Optional a As Integer, b As Integer)\nEnd Sub",
       "1:30: error: after an Optional parameter all others must be Optional too"},
      {"Sub S(ByRef a As Integer = 5)\nEnd Sub", "1:7: error: a ByRef parameter can't be Optional"},
  });
}

TEST_F(StatementTest, WrongArgumentsAreExplained) {
  ExpectErrors({
      {"S(1)\nSub S(number As Integer, word As String)\nEnd Sub",
       "1:1: error: \"S\" takes 2 arguments, 1 is given: Sub S(number As Integer, word As String)"},
      {"S\nSub S(number As Integer)\nEnd Sub",
       "1:1: error: \"S\" takes 1 argument, none is given: Sub S(number As Integer)"},
      {"S(1, \"a\", 2)\nSub S(number As Integer, Optional word As String)\nEnd Sub",
       "1:1: error: \"S\" takes 1 to 2 arguments, 3 are given: Sub S(number As Integer, Optional word As "
       "String)"},
      {"S(\"a\")\nSub S(number As Integer)\nEnd Sub",
       "1:3: error: Integer is needed for the argument \"number\" of S, but this is String; convert it with "
       "Val(…)"},
      {"Dim d As Double\nS(d)\nSub S(ByRef number As Integer)\nEnd Sub",
       "2:3: error: a variable of exactly the type Integer is needed for the argument \"number\" of S "
       "(ByRef), but this is Double"},
      {"S(5)\nSub S(ByRef number As Integer)\nEnd Sub",
       "1:3: error: the argument \"number\" of S is ByRef: it needs a variable or an element of an array"},
      {"Print(Left(\"abc\"))",
       "1:7: error: \"Left\" takes 2 arguments, 1 is given: Function Left(text As String, count As Integer) "
       "As String"},
      {"Print(\"abc\".Left(\"a\"))",
       "1:18: error: Integer is needed for the argument \"count\" of Left, but this is String; convert it "
       "with Val(…)"},
      {"Print(New FolderItem(\"a\"))",
       "1:7: error: a number, a text or a Boolean is needed for the argument \"value\" of Print, but this is "
       "FolderItem"},
      {"Print(Ubound(5))", "1:14: error: an array is needed for the argument \"list\" of Ubound, but this is Integer"},
  });
}

}  // namespace
}  // namespace quillbar::language::testing
