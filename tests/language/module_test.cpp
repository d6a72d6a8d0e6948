// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

class ModuleTest : public ProbeScriptTest {};

const std::string kTax = R"(Module Tax
  Const kRate = 0.19
  Protected Const kReduced = kRate - 0.12
  Private used As Integer
  Property Names() As String = Array("full", "reduced")
  Protected Function Of(amount As Double, kind As Rate = Rate.Full) As Double
    used = used + 1
    Return amount * If(kind = Rate.Full, kRate, kReduced)
  End Function
  Property Count As Integer
    Get
      Return used
    End Get
  End Property
  Function WithTax(Extends amount As Double) As Double
    Return amount + Of(amount)
  End Function
  Enum Rate
    Full
    Reduced = 7
  End Enum
  Class Line
    Property Amount As Double
    Function Total() As Double
      used = used + 10
      Return Amount.WithTax
    End Function
  End Class
  Module Inner
    Function Twice(x As Integer) As Integer
      used = used + 100
      Return x * 2
    End Function
  End Module
End Module
)";

TEST_F(ModuleTest, MembersAreUsedWithAndWithoutTheModulesName) {
  EXPECT_EQ(
      Output(R"(Print Str(Tax.Of(100)) + " " + Str(Tax.Of(100, Tax.Rate.Reduced)) + " " + Str(Tax.Of(100, Rate.Reduced))
Print Str(kRate) + " " + Str(Tax.kReduced) + " " + Names(1) + Tax.Names(0)
Print Str(CType(100, Double).WithTax) + " " + Str(WithTax(200))
Print Str(Count) + " " + Str(Tax.Count)
Names.Append("none")
Print Str(Tax.Names.LastIndex)
)" + kTax),
      "19 7 7\n0.19 0.07 reducedfull\n119 238\n5 5\n2\n");
}

TEST_F(ModuleTest, ClassesAndModulesInsideSeeWhatTheirModuleHas) {
  EXPECT_EQ(Output(R"(Dim a As New Line
Dim b As New Tax.Line
a.Amount = 100
Print Str(a.Total) + " " + Str(b IsA Line)
Print Str(Inner.Twice(4)) + Str(Tax.Inner.Twice(5))
Print Str(Tax.Count)
)" + kTax),
            "119 True\n810\n211\n");
}

TEST_F(ModuleTest, UsingMakesProtectedMembersKnownByTheirNames) {
  EXPECT_EQ(Output("Using Tax\nUsing ProbeModule\nPrint Str(Of(100)) + Str(kReduced)\n" + kTax), "190.07\n");
}

TEST_F(ModuleTest, WhatAModuleKeepsToItselfIsRefused) {
  ExpectErrors({
      {"Print Str(Of(1))\nModule M\nProtected Function Of(x As Integer) As Integer\nReturn x\nEnd Function\nEnd Module",
       "1:11: error: \"Of\" is protected in the module M; write M.Of, or \"Using M\""},
      {"Print Str(M.x)\nModule M\nPrivate x As Integer\nEnd Module", "1:11: error: \"x\" is private in the module M"},
      {"Print Str(x)\nModule M\nPrivate x As Integer\nEnd Module", "1:11: error: \"x\" is not known"},
      {"Dim c As M.C\nModule M\nPrivate Class C\nEnd Class\nEnd Module",
       "1:10: error: \"M.C\" is private in the module M"},
      {"Dim m As Mo\nModule Mo\nEnd Module", "1:10: error: \"Mo\" is a module, not a type"},
      {"Print Mo\nModule Mo\nEnd Module", "1:7: error: \"Mo\" is a module, but a value is needed"},
      {"Mo.Bing\nModule Mo\nSub Ping()\nEnd Sub\nEnd Module",
       "1:4: error: Mo has no member \"Bing\"; did you mean \"Ping\"?"},
      {"Print Str(A)\nModule M\nConst A = 1\nEnd Module\nModule N\nConst A = 2\nEnd Module",
       "1:11: error: \"A\" is in several modules; write M.A or N.A"},
      {"Using Nothing", "1:7: error: there is no module \"Nothing\""},
      {"Module M\nConst a = 1\nEnd Module\nModule M\nEnd Module", "4:8: error: there is a type \"M\" already"},
      {"Module M\nConst kA = kB\nConst kB = kA\nEnd Module", "3:12: error: the constant \"kA\" depends on itself"},
      {"Module M\nModule M2\nClass C", "1:1: error: this \"Module\" has no \"End Module\""},
      {"Class C\nClass D\nEnd Class\nEnd Class", "2:1: error: a class contains no other; declare it beside it"},
  });
}

TEST_F(ModuleTest, FirstValuesOfPropertiesAreReadyBeforeTheScriptStarts) {
  EXPECT_EQ(Output(R"(Print Str(Counters.Start) + Str(Counters.List.LastIndex)
Module Counters
  Property Start As Integer = 3 + kMore
  Property List(4) As Integer
  Const kMore = 4
End Module
)"),
            "74\n");
}

TEST_F(ModuleTest, ClassesHaveEnumerationsOfTheirOwn) {
  EXPECT_EQ(Output(R"(Dim d As New Door
d.State = Door.States.Open
Print Str(CType(d.State, Integer)) + Str(d.IsOpen) + Str(CType(d.Other, Integer))
Class Door
  Enum States
    Closed
    Open = 5
  End Enum
  Property State As States
  Function IsOpen() As Boolean
    Return State = States.Open
  End Function
  Function Other(s As States = States.Closed) As States
    Return s
  End Function
End Class
Class Gate Inherits Door
  Property Last As States = States.Open
End Class
)"),
            "5True0\n");
  ExpectErrors({{"Dim s As States\nClass C\nEnum States\nA\nEnd Enum\nEnd Class",
                 "1:10: error: there is no type \"States\"; did you mean \"C.States\"?"}});
}

TEST_F(ModuleTest, IsUsedWithinABlock) {
  const std::string module =
      "Module M\nProtected Const kOne = 1\nProtected Function Two() As Integer\nReturn 2\nEnd Function\nEnd Module\n";
  EXPECT_EQ(
      Output(module + "Sub S()\nUsing M\nPrint Str(kOne + Two)\nIf Two = 2 Then\nPrint Str(kOne)\nEnd If\nEnd Sub\n"
                      "Class C\nSub Go()\nUsing M\nPrint Str(Two)\nEnd Sub\nEnd Class\nS\nDim c As New C\nc.Go\n"
                      "If True Then\nusing M\nPrint Str(Two + 1)\nEnd If\n"),
      "3\n1\n2\n3\n");
  EXPECT_EQ(FirstError(module + "Sub S()\nUsing M\nPrint Str(Two)\nEnd Sub\nPrint Str(Two)\n"),
            "11:11: error: \"Two\" is protected in the module M; write M.Two, or \"Using M\"");
  EXPECT_EQ(FirstError(module + "If True Then\nUsing M\nEnd If\nPrint Str(kOne)\n").substr(0, 6), "10:11:");
  EXPECT_EQ(FirstError("Sub S()\nUsing Nowhere\nEnd Sub\n"), "2:7: error: there is no module \"Nowhere\"");
}

}  // namespace
}  // namespace quillbar::language::testing
