// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using StatementTest = ScriptTest;

TEST_F(StatementTest, DeclarationsInAllForms) {
  EXPECT_EQ(Output(R"(Dim a, b As Integer = 4
Var s As String = "x"
Dim list(2) As Integer
Dim none(-1) As String
Dim made As New FolderItem("f")
Dim names() As String = Array("p", "q")
Print(a + b)
Print(s)
Print(list.LastIndex)
Print(none.LastIndex)
Print(made.Name)
Print(names(1)))"),
            "8\nx\n2\n-1\nf\nq\n");
}

TEST_F(StatementTest, ADeclarationInALoopStartsAnewEachTime) {
  EXPECT_EQ(Output(R"(For i As Integer = 1 To 2
Dim n As Integer
Dim list() As Integer
n = n + i
list.Add(i)
Print(Str(n) + " " + Str(list.Count))
Next)"),
            "1 1\n2 1\n");
}

TEST_F(StatementTest, StaticVariablesKeepTheirValues) {
  EXPECT_EQ(Output(R"(Count
Count
Count
Sub Count()
Static n As Integer = 10
n += 1
Print(n)
End Sub)"),
            "11\n12\n13\n");
}

TEST_F(StatementTest, BlocksHaveTheirOwnNames) {
  EXPECT_EQ(Output(R"(Dim x As Integer = 1
If True Then
Dim y As Integer = 2
Dim x As Integer = 3
Print(x + y)
End If
Print(x))"),
            "5\n1\n");
  ExpectErrors({{"If True Then\nDim y As Integer\nEnd If\nPrint(y)", "4:7: error: \"y\" is not known"},
                {"For i As Integer = 1 To 2\nNext\nPrint(i)", "3:7: error: \"i\" is not known"},
                {"Dim x As Integer\nDim X As String", "2:5: error: \"X\" is declared already in line 1"},
                {"Sub S(a As Integer)\nDim a As String\nEnd Sub", "2:5: error: \"a\" is declared already in line 1"},
                {"Print(late)\nDim late As Integer", "1:7: error: \"late\" is used before its declaration in line 2"},
                {"Dim self As Integer = self + 1", "1:23: error: \"self\" is used before its declaration in line 1"}});
}

TEST_F(StatementTest, VariablesOfTheScriptAreSeenByItsProcedures) {
  EXPECT_EQ(Output(R"(Dim total As Integer = 5
Add(3)
Print(total)
Sub Add(n As Integer)
total = total + n
End Sub)"),
            "8\n");
  EXPECT_EQ(Output(R"(Show
Dim words() As String = Array("a")
Dim n As Integer = 2
Show
Sub Show()
Print(Str(n) + Str(words.Count))
End Sub)"),
            "00\n21\n");
}

TEST_F(StatementTest, AssignmentsWithAnOperator) {
  EXPECT_EQ(Output(R"(Dim n As Integer = 7
n += 3
n -= 1
n *= 4
Print(n)
Dim d As Double = 9
d /= 2
Print(d)
Dim s As String = "a"
s += "b"
Print(s))"),
            "36\n4.5\nab\n");
}

TEST_F(StatementTest, AssignmentsWithAnOperatorEvaluateTheTargetOnce) {
  EXPECT_EQ(Output(R"(Dim list() As Integer = Array(1, 2, 3)
list(Next1()) += 10
Print(list(1))
Function Next1() As Integer
Print("called")
Return 1
End Function)"),
            "called\n12\n");
}

TEST_F(StatementTest, IfWithElseIfAndElse) {
  const std::string text =
      R"(For n As Integer = 1 To 4
If n = 1 Then
Print("one")
ElseIf n = 2 Then
Print("two")
Else If n = 3 Then
Print("three")
Else
Print("more")
End If
Next)";
  EXPECT_EQ(Output(text), "one\ntwo\nthree\nmore\n");
  EXPECT_EQ(Output("If 1 = 2 Then Print \"a\" Else Print \"b\""), "b\n");
}

TEST_F(StatementTest, SelectCaseWithValuesRangesComparisonsAndLists) {
  const std::string select =
      R"(Function Name(n As Double) As String
Select Case n
Case 1
Return "one"
Case 2, 3
Return "few"
Case 4 To 9
Return "some"
Case Is >= 100, Is < 0
Return "far"
Case Else
Return "many"
End Select
End Function
)";
  EXPECT_EQ(
      Output(select + "For Each n As Double In Array(1.0, 3.0, 4.0, 9.0, 9.5, 100.0, -1.0)\nPrint(Name(n))\nNext"),
      "one\nfew\nsome\nsome\nmany\nfar\nfar\n");
  EXPECT_EQ(Output(R"(Select Case "Blue"
Case "red"
Print(1)
Case "BLUE"
Print(2)
Else
Print(3)
End Select)"),
            "2\n");
  EXPECT_EQ(Output(R"(Select Case True
Case 1 = 2
Print(1)
Case 2 = 2
Print(2)
End Select)"),
            "2\n");
  EXPECT_EQ(Output(R"(Dim o As FolderItem
Select Case o
Case Nil
Print("nil")
End Select)"),
            "nil\n");
}

TEST_F(StatementTest, SelectEvaluatesItsSubjectOnce) {
  EXPECT_EQ(Output(R"(Select Case F
Case 1, 2
Print("no")
Case 3
Print("yes")
End Select
Function F() As Integer
Print("F")
Return 3
End Function)"),
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
  EXPECT_EQ(Output(R"(Dim last As Integer = 3
Dim i As Integer
For i = 1 To last
last = 10
If i = 2 Then i = 5
Print(i)
Next
Print(i))"),
            "1\n5\n6\n");
}

TEST_F(StatementTest, ForEachWalksThroughAnArray) {
  EXPECT_EQ(Output("For Each s As String In Array(\"a\", \"b\")\nPrint(s)\nNext"), "a\nb\n");
  EXPECT_EQ(Output("Dim n As Double\nFor Each n In Array(1, 2)\nPrint(n / 2)\nNext"), "0.5\n1\n");
  EXPECT_EQ(Output(R"(Dim list() As Integer = Array(1, 2)
For Each n As Integer In list
If list.Count < 4 Then list.Add(n * 10)
Print(n)
Next)"),
            "1\n2\n10\n20\n");
  EXPECT_EQ(Output(R"(Dim list() As Integer = Array(1, 2, 3)
For Each n As Integer In list
Print(n)
list.RemoveAll
Next)"),
            "1\n");
}

TEST_F(StatementTest, WhileAndDoLoops) {
  EXPECT_EQ(Output(R"(Dim n As Integer
While n < 2
n = n + 1
Print(n)
Wend)"),
            "1\n2\n");
  EXPECT_EQ(Output(R"(Dim n As Integer
Do
n += 1
Loop Until n >= 3
Print(n))"),
            "3\n");
  EXPECT_EQ(Output(R"(Dim n As Integer
Do
n += 1
Loop While n < 3
Print(n))"),
            "3\n");
  EXPECT_EQ(Output(R"(Dim n As Integer
Do Until n = 3
n += 1
Loop
Print(n))"),
            "3\n");
  EXPECT_EQ(Output(R"(Dim n As Integer = 9
Do While n < 3
n += 1
Loop
Print(n))"),
            "9\n");
  EXPECT_EQ(Output(R"(Dim n As Integer
Do
n += 1
If n = 4 Then Exit
Loop
Print(n))"),
            "4\n");
}

TEST_F(StatementTest, ExitAndContinueAimAtTheLoopThatIsNamed) {
  EXPECT_EQ(Output(R"(For i As Integer = 1 To 5
If i = 2 Then Continue
If i = 4 Then Exit
Print(i)
Next)"),
            "1\n3\n");
  EXPECT_EQ(Output(R"(For i As Integer = 1 To 3
For j As Integer = 1 To 3
If j = 2 Then Continue For i
If i = 3 Then Exit For i
Print(i * 10 + j)
Next
Next)"),
            "11\n21\n");
  EXPECT_EQ(Output(R"(For i As Integer = 1 To 2
While True
Exit While
Wend
Do
Exit For
Loop
Next
Print("end"))"),
            "end\n");
  EXPECT_EQ(Output(R"(For i As Integer = 1 To 3
Select Case i
Case 2
Exit For
Else
Print(i)
End Select
Next)"),
            "1\n");
  EXPECT_EQ(Output(R"(Select Case 1
Case 1
Exit Select
Print("no")
End Select
Print("yes"))"),
            "yes\n");
  EXPECT_EQ(Output(R"(S
Print(F)
Sub S()
Exit Sub
Print("no")
End Sub
Function F() As Integer
Exit Function
End Function)"),
            "0\n");
}

TEST_F(StatementTest, ProceduresTakeTheirArgumentsByValueOrByRef) {
  EXPECT_EQ(Output(R"(Dim a As Integer = 1
Dim b As Integer = 1
Change(a, b)
Print(Str(a) + Str(b))
Sub Change(ByVal x As Integer, ByRef y As Integer)
x = 5
y = 6
End Sub)"),
            "16\n");
  EXPECT_EQ(Output(R"(Dim s As String = "a"
Twice(s)
Print(s)
Sub Twice(ByRef t As String)
Append(t)
Append(t)
End Sub
Sub Append(ByRef t As String)
t = t + "x"
End Sub)"),
            "axx\n");
}

TEST_F(StatementTest, ElementsOfArraysGoByRefToo) {
  EXPECT_EQ(Output(R"(Dim list() As Integer = Array(1, 2)
Double2(list(At()))
Print(list(1))
Sub Double2(ByRef n As Integer)
n = n * 2
End Sub
Function At() As Integer
Print("at")
Return 1
End Function)"),
            "at\n4\n");
  EXPECT_EQ(FirstError(R"(Dim list() As Integer = Array(1)
Shrink(list(0), list)
Sub Shrink(ByRef n As Integer, all() As Integer)
all.RemoveAll
n = 2
End Sub)"),
            "2:13: OutOfBoundsException: the index is 0, but the array is empty");
}

TEST_F(StatementTest, ArraysArePassedAsThemselves) {
  EXPECT_EQ(Output(R"(Dim list() As Integer
Fill(list)
Print(list.Count)
Sub Fill(a() As Integer)
a.Add(1)
a.Add(2)
End Sub)"),
            "2\n");
  EXPECT_EQ(Output(R"(Dim list() As Integer
Replace2(list)
Print(list.Count)
Sub Replace2(ByRef a() As Integer)
a = Array(1, 2, 3)
End Sub)"),
            "3\n");
}

TEST_F(StatementTest, OptionalParametersTakeTheirDefaults) {
  const std::string procedures =
      R"(Function F(a As Integer, b As Integer = 10, Optional c As String) As String
Return Str(a) + " " + Str(b) + " [" + c + "]"
End Function
Function G(a As Integer = 2 + 3, list() As String = Array()) As Integer
Return a
End Function
)";
  EXPECT_EQ(FirstError(procedures), "4:53: error: a default value is made of literals, constants and operators");
  const std::string fine = procedures.substr(0, procedures.find("Function G"));
  EXPECT_EQ(Output(fine + "Print(F(1))\nPrint(F(1, 2))\nPrint(F(1, 2, \"x\"))"), "1 10 []\n1 2 []\n1 2 [x]\n");
}

TEST_F(StatementTest, AParamArrayGathersTheRest) {
  EXPECT_EQ(Output(R"(Print(Sum())
Print(Sum(1))
Print(Sum(1, 2, 3))
Function Sum(ParamArray numbers As Integer) As Integer
Dim total As Integer
For Each n As Integer In numbers
total += n
Next
Return total
End Function)"),
            "0\n1\n6\n");
}

TEST_F(StatementTest, OverloadsAreChosenByTypesAndCount) {
  const std::string overloads =
      R"(Function What(n As Integer) As String
Return "integer"
End Function
Function What(n As Double) As String
Return "double"
End Function
Function What(s As String) As String
Return "string"
End Function
Function What(s As String, t As String) As String
Return "two"
End Function
Function What(o As FolderItem) As String
Return "object"
End Function
)";
  EXPECT_EQ(Output(overloads + R"(Dim b As UInt8
Dim s As Single
Print(What(1))
Print(What(b))
Print(What(1.5))
Print(What(s))
Print(What("a"))
Print(What("a", "b"))
Print(What(Nil)))"),
            "integer\ninteger\ndouble\ndouble\nstring\ntwo\nobject\n");
  EXPECT_EQ(FirstError(overloads + "Print(What(True))"), "16:7: error: no \"What\" takes these arguments; there is");
}

TEST_F(StatementTest, RecursionWorks) {
  EXPECT_EQ(Output(R"(Print(Fibonacci(20))
Function Fibonacci(n As Integer) As Integer
If n < 2 Then Return n
Return Fibonacci(n - 1) + Fibonacci(n - 2)
End Function)"),
            "6765\n");
  EXPECT_EQ(Output(R"(Print(Depth(1000))
Function Depth(n As Integer) As Integer
If n = 0 Then Return 0
Return Depth(n - 1) + 1
End Function)"),
            "1000\n");
}

TEST_F(StatementTest, AFunctionThatEndsWithoutReturnGivesZero) {
  EXPECT_EQ(Output(R"(Print(F)
Print(G.Length)
Print(H.Count)
Function F() As Integer
End Function
Function G() As String
End Function
Function H() As Integer()
End Function)"),
            "0\n0\n0\n");
}

TEST_F(StatementTest, ReturnEndsTheScriptToo) { EXPECT_EQ(Output("Print(1)\nReturn\nPrint(2)"), "1\n"); }

TEST_F(StatementTest, CallDropsAResult) {
  EXPECT_EQ(Output(R"(Call F(1)
Function F(n As Integer) As Integer
Print(n)
Return n
End Function)"),
            "1\n");
  EXPECT_EQ(FirstError("F(1)\nFunction F(n As Integer) As Integer\nReturn n\nEnd Function"),
            "1:1: error: this gives a value of type Integer that isn't used; write \"Call\" before it to drop it");
}

TEST_F(StatementTest, NamesIgnoreCase) {
  EXPECT_EQ(Output(R"(DIM Count AS integer = 1
cOUNT = COUNT + 1
PRINT(count)
show(COUNT)
sub Show(N as Integer)
print(n)
END SUB)"),
            "2\n2\n");
}

TEST_F(StatementTest, ArgumentsOfTheCommandLine) {
  const ScriptRun run = Run(R"(Print(Arguments.Count)
For Each a As String In Arguments
Print(a)
Next
Print(System.CommandLine))",
                            {"one", "zwö"});
  EXPECT_EQ(run.output, "2\none\nzwö\none zwö\n");
}

TEST_F(StatementTest, ErrorsInStatements) {
  ExpectErrors({
      {"x = 5", "1:1: error: \"x\" is not known"},
      {"Dim count As Integer\nPrint(cuont)", "2:7: error: \"cuont\" is not known; did you mean \"count\"?"},
      {"Prnt(1)", "1:1: error: \"Prnt\" is not known; did you mean \"Print\"?"},
      {"5 = 5", "1:1: error: expected a statement, found a number"},
      {"Dim x As Integer\nx", "2:1: error: this is a value, not a statement; was \"=\" forgotten?"},
      {"Dim x As Integer\nx(1) = 5",
       "2:1: error: this is Integer, neither an array nor a method, so it can't be followed by parentheses"},
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
       "1:1: error: \"S\" takes 1 to 2 arguments, 3 are given: Sub S(number As Integer, Optional word As String)"},
      {"S(\"a\")\nSub S(number As Integer)\nEnd Sub",
       "1:3: error: Integer is needed for the argument \"number\" of S, but this is String; convert it with Val(…)"},
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

TEST_F(StatementTest, PrintTakesAnExpressionThatBeginsWithAParenthesis) {
  EXPECT_EQ(Output("Dim s As String = \"ab\"\nDim a() As Integer = Array(4, 5)\nPrint (s).Uppercase\n"
                   "print (1 + 2).ToString + \"!\"\nPrint (s)\nPrint (s) + \"c\"\n"
                   "Print (\"x,y\").NthField(\",\", 2)\na (0) = 7\nPrint Str(a(0))\n"),
            "AB\n3!\nab\nabc\ny\n7\n");
}

}  // namespace
}  // namespace quillbar::language::testing
