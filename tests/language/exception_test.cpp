// SPDX-License-Identifier: MIT
#include <filesystem>

#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using ExceptionTest = ScriptTest;

TEST_F(ExceptionTest, TheStackTraceNamesEveryCall) {
  EXPECT_EQ(ErrorOutput(R"(Dim list() As Integer = Array(1)
Outer(5)
Sub Outer(n As Integer)
  Dim x As Integer = Inner(n)
End Sub
Function Inner(n As Integer) As Integer
  Return list(n)
End Function)"),
            R"(test.xojo_script:7:15: OutOfBoundsException: the index is 5, but the array ends at 0
    7 |   Return list(n)
      |               ^
  in Function Inner, line 7, column 15
  in Sub Outer, line 4, column 22
  in the script, line 2, column 1
)");
}

TEST_F(ExceptionTest, RunTimeErrorsSayWhatAndWhere) {
  ExpectErrors({
      {"Dim a() As Integer\nPrint(a(0))", "2:9: OutOfBoundsException: the index is 0, but the array is empty"},
      {"Dim a() As Integer\na(-1) = 5", "2:3: OutOfBoundsException: the index is -1, but the array is empty"},
      {"Dim n As Integer\nPrint(5 \\ n)", "2:7: DivideByZeroException: an integer was divided by zero"},
      {"Dim n As Integer\nPrint(5 Mod n)", "2:7: DivideByZeroException: an integer was divided by zero"},
      {"Dim f As FolderItem\nPrint(f.Name)", "2:7: NilObjectException: \"Name\" was used on Nil"},
      {"Dim a(1) As Integer\nRedim a(-5)",
       "2:9: OutOfBoundsException: the last index of an array can't be -5; -1 makes it empty"},
      {"Dim a(99999999999) As Integer",
       "1:7: OutOfMemoryException: an array has at most 50000000 elements, the limit of --max-elements"},
      {"Dim a() As Integer\nPrint(a.Pop)", "2:7: OutOfBoundsException: the array is empty"},
      {"Raise New RuntimeException", "1:1: RuntimeException: (without a message)"},
  });
}

TEST_F(ExceptionTest, AFileThatCannotBeOpenedIsNamedWithTheReason) {
  // Absolute, and in the platform's own form.
  const std::filesystem::path path = std::filesystem::absolute("/nowhere/at/all").make_preferred();
  EXPECT_EQ(FirstError("Dim s As TextInputStream = TextInputStream.Open(New FolderItem(\"/nowhere/at/all\"))"),
            "1:28: IOException: opening \"" + path.string() + "\" failed: No such file or directory");
}

TEST_F(ExceptionTest, EndlessRecursionEndsInAnException) {
  const ScriptRun run = Run("F(1)\nSub F(n As Integer)\nF(n + 1)\nEnd Sub");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors.find("test.xojo_script:3:1: StackOverflowException: calls are nested too deeply"), 0u)
      << run.errors;
  EXPECT_NE(run.errors.find("more calls …"), std::string::npos);
  EXPECT_EQ(Output(R"(Try
F(1)
Catch e As StackOverflowException
Print("caught")
End Try
Sub F(n As Integer)
F(n + 1)
End Sub)"),
            "caught\n");
}

TEST_F(ExceptionTest, CatchTakesTheFirstClassThatFits) {
  const std::string text =
      R"(Dim list() As Integer
Try
Print(list(3))
Catch e As IOException
Print("io")
Catch e As OutOfBoundsException
Print("bounds: " + e.Message)
Catch
Print("any")
End Try)";
  EXPECT_EQ(Output(text), "bounds: the index is 3, but the array is empty\n");
  EXPECT_EQ(Output(R"(Try
Raise New NilObjectException
Catch e As RuntimeException
Print(e IsA NilObjectException)
End Try)"),
            "True\n");
}

TEST_F(ExceptionTest, FinallyRunsOnEveryWayOut) {
  EXPECT_EQ(Output(R"(Try
Print(1)
Finally
Print(2)
End Try)"),
            "1\n2\n");
  EXPECT_EQ(Output(R"(Try
Try
Raise New IOException
Finally
Print("finally")
End Try
Catch e As IOException
Print("caught")
End Try)"),
            "finally\ncaught\n");
  EXPECT_EQ(Output(R"(Print(F)
Function F() As Integer
Try
Return 1
Finally
Print("f")
End Try
End Function)"),
            "f\n1\n");
  EXPECT_EQ(Output(R"(For i As Integer = 1 To 3
Try
If i = 2 Then Exit For
Finally
Print(i)
End Try
Next)"),
            "1\n2\n");
}

TEST_F(ExceptionTest, WhatIsPrintedBeforeAnExceptionStays) {
  const ScriptRun run = Run("Print(1)\nRaise New RuntimeException(\"stop\")");
  EXPECT_EQ(run.output, "1\n");
  EXPECT_EQ(run.status, 1);
}

}  // namespace
}  // namespace quillbar::language::testing
