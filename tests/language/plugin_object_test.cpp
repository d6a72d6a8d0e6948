// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using PluginObjectTest = ProbeScriptTest;

TEST_F(PluginObjectTest, MembersWithAndWithoutTheModulesName) {
  EXPECT_EQ(Output(R"(Dim p As New Probe(5)
Dim q As ProbeModule.Probe = New ProbeModule.Probe
Print(p.Number)
q.number = 4
Print(q.Number)
Print(p.EchoString("ä"))
Print(p.EchoSingle(0.5))
Print(p.EchoUInt8(300))
Print(p.EchoColor(&c102030))
Print(p.WithDefaults(1))
Print(p.WithDefaults(1, 2, False)))"),
            "5\n7\nä\n0.5\n44\n&h00102030\n1021\n3\n");
}

TEST_F(PluginObjectTest, EnumerationsOfClasses) {
  EXPECT_EQ(Output(R"(Dim probe As New Probe
Dim m As Probe.Mode = Probe.Mode.LAST
Print(m)
Print(probe.EchoMode(ProbeModule.Probe.Mode.BELOW))
Print(probe.EchoSmall(Probe.Small.HUGE))
m = CType(1, Probe.Mode)
Print(m = Probe.Mode.Second))"),
            "255\n-5\n200\nTrue\n");
}

TEST_F(PluginObjectTest, ByRefArgumentsComeBack) {
  EXPECT_EQ(Output(R"(Dim p As New Probe
Dim i As Integer = 4
p.DoubleInteger(i)
Print(i)
Dim s As Single = 1.5
p.DoubleSingle(s)
Print(s)
Dim t As String
p.Greet(t)
Print(t)
Dim list() As Double = Array(1.0, 2.0)
p.DoubleDouble(list(1))
Print(list(1))
Dim o As Probe
p.Replace(o)
Print(o Is p)
o = Nil
ByRefParameter(i)
Print(i)
Sub ByRefParameter(ByRef n As Integer)
Dim q As New Probe
q.DoubleInteger(n)
End Sub)"),
            "8\n3\nhello nobody\n4\nTrue\n16\n");
}

TEST_F(PluginObjectTest, ArraysReachThePlugin) {
  EXPECT_EQ(Output(R"(Dim p As New Probe
Dim a() As UInt16 = Array(1, 2, 65535)
Print(p.Sum(a))
Print(p.Sum(Array(3, 4))))"),
            "65538\n7\n");
}

TEST_F(PluginObjectTest, SubclassesStandForTheirSuperclasses) {
  EXPECT_EQ(Output(R"(Dim p As Probe = New LoudProbe
Print(p IsA LoudProbe)
Print(LoudProbe(p).EchoInt8(1))
Dim q As New Probe
Print(q IsA LoudProbe)
Print(q.EchoObject(p) Is p))"),
            "True\n99\nFalse\nTrue\n");
  EXPECT_EQ(FirstError("Dim p As New Probe\nDim q As LoudProbe = LoudProbe(p)"),
            "2:22: IllegalCastException: this is a Probe, not a LoudProbe");
}

TEST_F(PluginObjectTest, EventsReachTheirHandlers) {
  EXPECT_EQ(Output(R"(Dim p As New Probe
Print(p.RaiseChange(4))
AddHandler p.Change, AddressOf OnChange
AddHandler p.Words, AddressOf OnWords
Print(p.RaiseChange(4))
Print(p.RaiseWords("x"))
RemoveHandler p.Change, AddressOf OnChange
Print(p.RaiseChange(4))
Function OnChange(sender As Probe, ByRef number As Integer) As Boolean
number = number * 10
Return True
End Function
Function OnWords(sender As Probe, text As String, other As Probe) As String
Return text + Str(sender Is other)
End Function)"),
            "4\n40\nxTrue\n4\n");
}

TEST_F(PluginObjectTest, AnExceptionInAHandlerPassesThroughThePluginToTheScript) {
  const std::string handler =
      R"(
Function OnChange(sender As Probe, ByRef number As Integer) As Boolean
Raise New IOException("no", 7)
End Function)";
  EXPECT_EQ(Output(R"(Dim p As New Probe
AddHandler p.Change, AddressOf OnChange
Try
Call p.RaiseChange(1)
Catch e As IOException
Print(e.Message + Str(e.ErrorNumber))
End Try)" + handler),
            "no7\n");
  EXPECT_EQ(ErrorOutput("Dim p As New Probe\nAddHandler p.Change, AddressOf OnChange\nCall p.RaiseChange(1)" + handler),
            R"(test.xojo_script:5:1: IOException: no
    5 | Raise New IOException("no", 7)
      | ^^^^^^^^^^^^^^^^^^^^^^^^^^^^^^
  in Function OnChange, line 5, column 1
  in the script, line 3, column 6
)");
}

TEST_F(PluginObjectTest, WrongUsesAreRefusedBeforeAnythingRuns) {
  ExpectErrors({
      {"Dim p As New Probe\np.Ratio = 1", "2:1: error: the property Probe.Ratio is read-only"},
      {"Dim p As New Sealed",
       "1:10: error: objects of the class Sealed can't be made with \"New\"; methods of other classes give them"},
      {"Dim p As New Probe\np.Nmber = 1", "2:3: error: Probe has no member \"Nmber\"; did you mean \"Number\"?"},
      {"Dim p As New Probe(\"a\")",
       "1:20: error: Integer is needed for the argument \"number\" of New Probe, but this is String; convert "
       "it with Val(…)"},
      {"Dim p As New Probe\nPrint(p.Change)",
       "2:9: error: \"Change\" is an event of Probe; AddHandler attaches a method to it"},
      {"Dim p As New Probe\nAddHandler p.Chnge, AddressOf S\nSub S()\nEnd Sub",
       "2:14: error: Probe has no event \"Chnge\"; did you mean \"Change\"?"},
      {"Dim p As New Probe\nAddHandler p.Change, AddressOf S\nSub S()\nEnd Sub",
       "2:22: error: the handler of Change must be declared as: Function S(sender As Probe, ByRef number As "
       "Integer) As Boolean"},
      {"Dim p As New Probe\nDim d As Double\np.DoubleInteger(d)",
       "3:17: error: a variable of exactly the type Integer is needed for the argument \"value\" of "
       "DoubleInteger (ByRef), but this is Double"},
      {"Dim p As LoudProbe = New Probe",
       "1:22: error: LoudProbe is needed for the variable \"p\", but this is Probe; convert it with LoudProbe(…)"},
  });
}

TEST_F(PluginObjectTest, AMemberOfNilNamesTheMember) {
  EXPECT_EQ(ErrorOutput("Sub S(p As Probe)\n  p.Keep(Nil)\nEnd Sub\nS(Nil)"),
            R"(test.xojo_script:2:3: NilObjectException: "Keep" was used on Nil
    2 |   p.Keep(Nil)
      |   ^^^^^^^^^^^
  in Sub S, line 2, column 3
  in the script, line 4, column 1
)");
}

}  // namespace
}  // namespace quillbar::language::testing
