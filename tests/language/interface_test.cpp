// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"
#include "tests/support/sample.h"

namespace quillbar::language::testing {
namespace {

class InterfaceTest : public ProbeScriptTest {};

const std::string kShapes = R"(Interface Named
  Function Name() As String
End Interface
Interface Shape Implements Named
  Function Area(scale As Double) As Double
  End Function
  Sub Scale(ByRef factor As Double)
End Interface
Class Square
  Implements Shape
  Protected side As Double
  Sub Constructor(side As Double)
    Self.side = side
  End Sub
  Function Name() As String
    Return "square"
  End Function
  Function Area(scale As Double) As Double
    Return side * side * scale
  End Function
  Sub Scale(ByRef factor As Double)
    side = side * factor
    factor = 0
  End Sub
End Class
Class Cube Inherits Square
  Function Area(scale As Double) As Double
    Return Super.Area(scale) * 6
  End Function
End Class
Class Report Inherits Probe Implements Named
  Function Name() As String
    Return "report"
  End Function
End Class
)";

TEST_F(InterfaceTest, ObjectsOfAnyClassThatImplementsItAreUsedThroughIt) {
  EXPECT_EQ(Output(R"(Dim shapes() As Shape = Array(New Square(2), New Cube(2))
For Each s As Shape In shapes
  Dim factor As Double = 3
  s.Scale(factor)
  Print s.Name + " " + Str(s.Area(1)) + " " + Str(factor)
Next
Dim n As Named = shapes(1)
Print n.Name
n = New Report
Print n.Name
)" + kShapes),
            "square 36 0\nsquare 216 0\nsquare\nreport\n");
}

TEST_F(InterfaceTest, AnObjectIsAskedForItsInterfacesAndConvertedToThem) {
  EXPECT_EQ(Output(R"(Dim n As Named = New Cube(1)
Print Str(n IsA Shape) + Str(n IsA Square) + Str(n IsA Report) + Str(n Is Nil)
Dim p As Probe = New Report
Print Str(p IsA Named) + Str(p IsA Shape)
Print Str(Shape(n).Area(2)) + Named(p).Name + Cube(n).Name
Select Case n
Case IsA Shape
  Print "a shape"
End Select
Try
  Dim s As Shape = CType(p, Shape)
Catch e As IllegalCastException
  Print e.Message
End Try
Dim none As Named
Try
  Print none.Name
Catch e As NilObjectException
  Print "nil"
End Try
)" + kShapes),
            "TrueTrueFalseFalse\nTrueFalse\n12reportsquare\na shape\nthis is a Report, not a Shape\nnil\n");
}

TEST_F(InterfaceTest, WhatAClassLacksIsNamed) {
  const std::string declared = "Interface I\nSub A(x As Integer)\nFunction B() As String\nEnd Interface\n";
  const ScriptRun run =
      Run(declared + "Class C Implements I\nFunction B() As Integer\nReturn 1\nEnd Function\nEnd Class");
  EXPECT_TRUE(
      run.errors.starts_with("test.xojo_script:5:7: error: the class C doesn't have all methods of the interface "
                             "I; missing:\n  Sub A(x As Integer)\n  Function B() As String, not Function B() As "
                             "Integer\n"))
      << run.errors;
}

TEST_F(InterfaceTest, WrongInterfacesAreRefused) {
  ExpectErrors({
      {"Class C Implements D\nEnd Class\nClass D\nEnd Class",
       "1:20: error: D is not an interface; a class \"Inherits\" from another"},
      {"Class C Inherits I\nEnd Class\nInterface I\nEnd Interface",
       "1:18: error: I is an interface; a class \"Implements\" it"},
      {"Class C Implements J\nEnd Class", "1:20: error: there is no type \"J\""},
      {"Interface I Implements J\nEnd Interface\nInterface J Implements I\nEnd Interface",
       "1:24: error: the interface I would extend itself"},
      {"Interface I\nProperty A As Integer\nEnd Interface",
       "2:1: error: expected \"Sub\" or \"Function\": an interface has methods alone, found \"Property\""},
      {"Interface I\nSub Constructor()\nEnd Interface", "2:5: error: an interface has the methods of objects alone"},
      {"Interface I\nSub A()\nSub A()\nEnd Interface",
       "3:5: error: \"A\" with these parameters is declared already in line 2"},
      {"Dim i As New I\nInterface I\nEnd Interface",
       "1:10: error: I is an interface; \"New\" makes objects of classes that implement it"},
      {"Interface I\nSub A()", "1:1: error: this \"Interface\" has no \"End Interface\""},
  });
}

TEST_F(InterfaceTest, LongAndTangledHierarchiesEndInMessages) {
  std::string chain = "Class C0\nEnd Class\n";
  std::string ladder = "Interface A0\nEnd Interface\nInterface B0\nEnd Interface\n";
  const int levels = test::TakesSamples() ? 600 : 3000;
  for (int i = 1; i < levels; ++i) {
    const std::string before = std::to_string(i - 1);
    const std::string now = std::to_string(i);
    chain += "Class C" + now + " Inherits C" + before + "\nEnd Class\n";
    ladder += "Interface A" + now + " Implements A" + before + ", B" + before + "\nEnd Interface\n";
    ladder += "Interface B" + now + " Implements A" + before + ", B" + before + "\nEnd Interface\n";
  }
  EXPECT_EQ(FirstError(chain), "1003:21: error: the class C501 would inherit over more than 500 levels");
  EXPECT_EQ(FirstError(ladder), "2005:27: error: A501 would have more than 1000 interfaces");
  // Those of the first forty rungs are two to the power of forty paths.
  const std::string rungs = ladder.substr(0, ladder.find("Interface A40 "));
  EXPECT_EQ(Output("Dim b As B1\nDim c As New C\nb = c\nPrint Str(c IsA A0)\n" + rungs +
                   "Class C Implements B39\nEnd Class\n"),
            "True\n");
}

}  // namespace
}  // namespace quillbar::language::testing
