// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using PluginObjectTest = ProbeScriptTest;

TEST_F(PluginObjectTest, MembersWithAndWithoutTheModulesName) {
  EXPECT_EQ(Output("Dim p As New Probe(5)\nDim q As ProbeModule.Probe = New "
                   "ProbeModule.Probe\nPrint(p.Number)\nq.number = 4\n"
                   "Print(q.Number)\nPrint(p.EchoString(\"ä\"))\nPrint(p.EchoSingle(0.5))\nPrint(p.EchoUInt8(300))\n"
                   "Print(p.EchoColor(&c102030))\nPrint(p.WithDefaults(1))\nPrint(p.WithDefaults(1, 2, False))"),
            "5\n7\nä\n0.5\n44\n&h00102030\n1021\n3\n");
}

TEST_F(PluginObjectTest, EnumerationsOfClasses) {
  EXPECT_EQ(Output("Dim probe As New Probe\nDim m As Probe.Mode = Probe.Mode.LAST\nPrint(m)\n"
                   "Print(probe.EchoMode(ProbeModule.Probe.Mode.BELOW))\nPrint(probe.EchoSmall(Probe.Small.HUGE))\n"
                   "m = CType(1, Probe.Mode)\nPrint(m = Probe.Mode.Second)"),
            "255\n-5\n200\nTrue\n");
}

TEST_F(PluginObjectTest, ByRefArgumentsComeBack) {
  EXPECT_EQ(Output("Dim p As New Probe\nDim i As Integer = 4\np.DoubleInteger(i)\nPrint(i)\nDim s As Single = 1.5\n"
                   "p.DoubleSingle(s)\nPrint(s)\nDim t As String\np.Greet(t)\nPrint(t)\nDim list() As Double = "
                   "Array(1.0, 2.0)\n"
                   "p.DoubleDouble(list(1))\nPrint(list(1))\nDim o As Probe\np.Replace(o)\nPrint(o Is p)\n"
                   "o = Nil\nByRefParameter(i)\nPrint(i)\nSub ByRefParameter(ByRef n As Integer)\nDim q As New "
                   "Probe\nq.DoubleInteger(n)\nEnd Sub"),
            "8\n3\nhello nobody\n4\nTrue\n16\n");
}

TEST_F(PluginObjectTest, ArraysReachThePlugin) {
  EXPECT_EQ(Output("Dim p As New Probe\nDim a() As UInt16 = Array(1, 2, "
                   "65535)\nPrint(p.Sum(a))\nPrint(p.Sum(Array(3, 4)))"),
            "65538\n7\n");
}

TEST_F(PluginObjectTest, SubclassesStandForTheirSuperclasses) {
  EXPECT_EQ(Output("Dim p As Probe = New LoudProbe\nPrint(p IsA "
                   "LoudProbe)\nPrint(LoudProbe(p).EchoInt8(1))\nDim q As New Probe\n"
                   "Print(q IsA LoudProbe)\nPrint(q.EchoObject(p) Is p)"),
            "True\n99\nFalse\nTrue\n");
  EXPECT_EQ(FirstError("Dim p As New Probe\nDim q As LoudProbe = LoudProbe(p)"),
            "2:22: IllegalCastException: this is a Probe, not a LoudProbe");
}

TEST_F(PluginObjectTest, EventsReachTheirHandlers) {
  EXPECT_EQ(Output("Dim p As New Probe\nPrint(p.RaiseChange(4))\nAddHandler p.Change, AddressOf OnChange\n"
                   "AddHandler p.Words, AddressOf OnWords\nPrint(p.RaiseChange(4))\nPrint(p.RaiseWords(\"x\"))\n"
                   "RemoveHandler p.Change, AddressOf OnChange\nPrint(p.RaiseChange(4))\n"
                   "Function OnChange(sender As Probe, ByRef number As Integer) As Boolean\nnumber = number * "
                   "10\nReturn True\nEnd Function\n"
                   "Function OnWords(sender As Probe, text As String, other As Probe) As String\nReturn text + "
                   "Str(sender Is other)\nEnd Function"),
            "4\n40\nxTrue\n4\n");
}

TEST_F(PluginObjectTest, AnExceptionInAHandlerPassesThroughThePluginToTheScript) {
  const std::string handler =
      "\nFunction OnChange(sender As Probe, ByRef number As Integer) As Boolean\nRaise New "
      "IOException(\"no\", 7)\nEnd Function";
  EXPECT_EQ(Output("Dim p As New Probe\nAddHandler p.Change, AddressOf OnChange\nTry\nCall "
                   "p.RaiseChange(1)\nCatch e As IOException\n"
                   "Print(e.Message + Str(e.ErrorNumber))\nEnd Try" +
                   handler),
            "no7\n");
  EXPECT_EQ(ErrorOutput("Dim p As New Probe\nAddHandler p.Change, AddressOf OnChange\nCall p.RaiseChange(1)" + handler),
            "test.xojo_script:5:1: IOException: no\n"
            "    5 | Raise New IOException(\"no\", 7)\n"
            "      | ^^^^^^^^^^^^^^^^^^^^^^^^^^^^^^\n"
            "  in Function OnChange, line 5, column 1\n"
            "  in the script, line 3, column 6\n");
}

TEST_F(PluginObjectTest, WrongUsesAreRefusedBeforeAnythingRuns) {
  ExpectErrors({
      {"Dim p As New Probe\np.Ratio = 1", "2:1: error: the property Probe.Ratio is read-only"},
      {"Dim p As New Sealed",
       "1:10: error: objects of the class Sealed can't be made with \"New\"; methods of other classes give "
       "them"},
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
       "1:22: error: LoudProbe is needed for the variable \"p\", but this is Probe; convert it with "
       "LoudProbe(…)"},
  });
}

TEST_F(PluginObjectTest, AMemberOfNilNamesTheMember) {
  EXPECT_EQ(ErrorOutput("Sub S(p As Probe)\n  p.Keep(Nil)\nEnd Sub\nS(Nil)"),
            "test.xojo_script:2:3: NilObjectException: \"Keep\" was used on Nil\n"
            "    2 |   p.Keep(Nil)\n"
            "      |   ^^^^^^^^^^^\n"
            "  in Sub S, line 2, column 3\n"
            "  in the script, line 4, column 1\n");
}

}  // namespace
}  // namespace quillbar::language::testing
