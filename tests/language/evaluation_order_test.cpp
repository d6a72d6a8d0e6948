// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

// Values are used where they are stored, without references of their own, as long as no code of the script runs. Here
// such code runs at each place, and takes away what is in use.
namespace quillbar::language::testing {
namespace {

using EvaluationOrderTest = ScriptTest;

TEST_F(EvaluationOrderTest, AnIndexMayReplaceTheArray) {
  EXPECT_EQ(Output(R"(Dim list() As String = Array("old 0", "old 1")
Print(list(Replace))
Print(list(1))
Function Replace() As Integer
  list = Array("new 0", "new 1")
  Return 1
End Function)"),
            "old 1\nnew 1\n");
}

TEST_F(EvaluationOrderTest, AnIndexMayReplaceTheArrayThatIsAssignedTo) {
  EXPECT_EQ(Output(R"(Dim list() As Integer = Array(1, 2)
Dim kept() As Integer = list
list(Replace) = 5
Print(Str(kept(1)) + " " + Str(list(1)))
Function Replace() As Integer
  list = Array(3, 4)
  Return 1
End Function)"),
            "5 4\n");
}

TEST_F(EvaluationOrderTest, AValueMayChangeTheArrayBeforeItIsStored) {
  EXPECT_EQ(Output(R"(Dim list() As Double
list(0) = Add
Print(Str(list(0)))
Function Add() As Double
  list.Append(1)
  Return 2.5
End Function)"),
            "2.5\n");
}

TEST_F(EvaluationOrderTest, AValueMayTakeAwayTheObjectWhoseFieldIsAssigned) {
  EXPECT_EQ(Output(R"(Dim box As New Box
box.number = Drop
Print(If(box Is Nil, "Nil", "kept"))
Class Box
  Dim number As Integer
  Sub Destructor()
    Print("number " + Str(number))
  End Sub
End Class
Function Drop() As Integer
  box = Nil
  Return 7
End Function)"),
            "number 7\nNil\n");
}

TEST_F(EvaluationOrderTest, AnOldValueMayTakeAwayTheObjectItWasIn) {
  EXPECT_EQ(Output(R"(Dim box As New Box
box.part = New Part
box.part = Nil
Print(If(box Is Nil, "Nil", "kept"))
Class Part
  Sub Destructor()
    box = Nil
  End Sub
End Class
Class Box
  Dim part As Part
  Sub Destructor()
    Print("box")
  End Sub
End Class)"),
            "box\nNil\n");
}

TEST_F(EvaluationOrderTest, AnOldElementMayChangeTheArrayItWasIn) {
  EXPECT_EQ(Output(R"(Dim parts() As Part
parts.Append(New Part)
parts(0) = Nil
Print(Str(parts.Count))
Class Part
  Sub Destructor()
    Redim parts(-1)
  End Sub
End Class)"),
            "0\n");
}

TEST_F(EvaluationOrderTest, FieldsOfObjectsThatNothingElseHolds) {
  EXPECT_EQ(Output(R"(Print(Make.name)
Print(Str(Make.numbers(1)))
Print(Make.inner.name)
Class Box
  Dim name As String
  Dim numbers() As Integer
  Dim inner As Box
End Class
Function Make() As Box
  Dim box As New Box
  box.name = "outer"
  box.numbers = Array(1, 2)
  box.inner = New Box
  box.inner.name = "inner"
  Return box
End Function)"),
            "outer\n2\ninner\n");
}

TEST_F(EvaluationOrderTest, ElementsKeepTheirType) {
  EXPECT_EQ(Output(R"(Dim bytes(0) As UInt8
Dim singles(0) As Single
Dim flags(0) As Boolean
bytes(0) = 300
singles(0) = 0.1
flags(0) = True
bytes(0) = bytes(0) + 1
Print(Str(bytes(0)) + " " + Str(singles(0)) + " " + Str(flags(0)))
Print(Str(singles(0) = 0.1)))"),
            "45 0.1 True\nFalse\n");
}

TEST_F(EvaluationOrderTest, NilIsNamedBeforeTheValueIsComputed) {
  EXPECT_EQ(FirstError(R"(Dim box As Box
Dim list() As Integer
box.number = list(3)
Class Box
  Dim number As Integer
End Class)"),
            "3:1: NilObjectException: \"number\" was used on Nil");
}

}  // namespace
}  // namespace quillbar::language::testing
