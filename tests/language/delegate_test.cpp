// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

class DelegateTest : public ProbeScriptTest {};

const std::string kCounter = R"(Delegate Function Compute(x As Integer, ByRef log As String) As Integer
Delegate Sub Note(text As String)
Class Counter
  Delegate Sub Change(sender As Counter)
  Property Total As Integer
  Property OnChange As Change
  Property Name As String
  Function Add(x As Integer, ByRef log As String) As Integer
    Total = Total + x
    log = log + Name
    If OnChange <> Nil Then OnChange(Self)
    Return Total
  End Function
  Shared Function Triple(x As Integer, ByRef log As String) As Integer
    log = log + "t"
    Return x * 3
  End Function
  Function Doubling() As Compute
    Return AddressOf Twice
  End Function
  Private Function Twice(x As Integer, ByRef log As String) As Integer
    Total = Total + 2 * x
    Return Total
  End Function
  Sub Destructor()
    Print "gone " + Name
  End Sub
End Class
Class Loud Inherits Counter
  Function Add(x As Integer, ByRef log As String) As Integer
    Return Super.Add(x * 10, log)
  End Function
End Class
Module Math2
  Function Square(x As Integer, ByRef log As String) As Integer
    log = log + "s"
    Return x * x
  End Function
End Module
Function Half(x As Integer, ByRef log As String) As Integer
  log = log + "h"
  Return x \ 2
End Function
)";

TEST_F(DelegateTest, TheyCallProceduresAndMethodsOfModulesClassesAndObjects) {
  EXPECT_EQ(Output(R"(Dim c As New Loud
c.Name = "c"
Dim log As String
Dim all() As Compute
all.Append(AddressOf Half)
all.Append(AddressOf Math2.Square)
all.Append(AddressOf Counter.Triple)
all.Append(AddressOf c.Add)
all.Append(c.Doubling)
For Each f As Compute In all
  Print Str(f.Invoke(6, log)) + " " + Str(f(6, log)) + " " + log
Next
Print Str(Apply(AddressOf Half, 9))
Function Apply(f As Compute, x As Integer) As Integer
  Dim ignored As String
  Return f(x, ignored)
End Function
)" + kCounter),
            "3 3 hh\n36 36 hhss\n18 18 hhsstt\n60 120 hhssttcc\n132 144 hhssttcc\n4\ngone c\n");
}

TEST_F(DelegateTest, TheyKeepTheirObjectAlive) {
  EXPECT_EQ(Output(R"(Dim log As String
Dim f As Compute = Make
Print Str(f(1, log)) + Str(f(1, log))
f = Nil
Print "end"
Function Make() As Compute
  Dim c As New Counter
  c.Name = "m"
  Return AddressOf c.Add
End Function
)" + kCounter),
            "12\ngone m\nend\n");
}

TEST_F(DelegateTest, DelegatesOfClassesTellAboutChanges) {
  EXPECT_EQ(Output(R"(Dim c As New Counter
Dim log As String
c.OnChange = AddressOf Watch
Call c.Add(5, log)
c.OnChange = Nil
Call c.Add(5, log)
Dim n As Note
Try
  n("x")
Catch e As NilObjectException
  Print "nil"
End Try
n = AddressOf Say
n "hello"
Sub Watch(sender As Counter)
  Print "now " + Str(sender.Total)
End Sub
Sub Say(text As String)
  Print text
End Sub
)" + kCounter),
            "now 5\nnil\nhello\ngone \n");
}

TEST_F(DelegateTest, OverloadsAreChosenByTheDelegate) {
  EXPECT_EQ(Output(R"(Dim a As TakesText = AddressOf Say
Dim b As TakesNumber = AddressOf Say
a("x")
b(1)
Delegate Sub TakesText(s As String)
Delegate Sub TakesNumber(n As Integer)
Sub Say(s As String)
  Print "text"
End Sub
Sub Say(n As Integer)
  Print "number"
End Sub
)"),
            "text\nnumber\n");
}

TEST_F(DelegateTest, MethodsOfObjectsHandleEventsOfPlugins) {
  EXPECT_EQ(Output(R"(Dim p As New Probe
Dim w As New Watcher
AddHandler p.Change, AddressOf w.OnChange
Print Str(p.RaiseChange(3))
RemoveHandler p.Change, AddressOf w.OnChange
Print Str(p.RaiseChange(3))
Class Watcher
  Property Seen As Integer = 40
  Function OnChange(sender As Probe, ByRef value As Integer) As Boolean
    Seen = Seen + value
    value = Seen * 2
    Print Str(Seen)
    Return True
  End Function
End Class
)"),
            "43\n86\n3\n");
}

TEST_F(DelegateTest, WrongUsesAreRefused) {
  const std::string declared = "Delegate Sub D(x As Integer)\nSub S(x As String)\nEnd Sub\n";
  ExpectErrors({
      {"Dim d As D2 = AddressOf S\nDelegate Sub D2(x As Integer)\nSub S(x As String)\nEnd Sub",
       "1:15: error: for the delegate D2 the method must be declared as: Sub S(x As Integer)"},
      {"Dim d As String = AddressOf S\nSub S()\nEnd Sub",
       "1:19: error: String is needed for the variable \"d\", but this is the address of a method"},
      {"Dim d As D2 = AddressOf Len\nDelegate Sub D2()",
       "1:25: error: \"Len\" is not a Sub or Function of this script"},
      {"Dim d As D2\nd(1)\nDelegate Sub D2()", "2:1: error: \"Invoke\" takes 0 arguments, 1 is given: Sub Invoke()"},
      {"Delegate Sub D2()\nDelegate Sub D2()", "2:14: error: there is a type \"D2\" already"},
      {"Dim d As New D2\nDelegate Sub D2()", "1:10: error: D2 is a delegate; \"AddressOf\" a method makes one"},
  });
}

class EventTest : public ProbeScriptTest {};

const std::string kMachine = R"(Class Machine
  Event Started(speed As Integer) As Boolean
  Event Stopped()
  Function Start(speed As Integer) As Boolean
    If RaiseEvent Started(speed) Then Return True
    Return Started(speed * 2)
  End Function
  Sub Stop()
    RaiseEvent Stopped
    RaiseEvent Started(0)
  End Sub
End Class
Class Mill Inherits Machine
  Property Seen As String
  Function Started(speed As Integer) As Boolean
    Seen = Seen + Str(speed) + ";"
    Return speed > 5
  End Function
End Class
Class FastMill Inherits Mill
  Sub Stopped()
    Seen = Seen + "stop;"
  End Sub
End Class
)";

TEST_F(EventTest, SubclassesHandleThem) {
  EXPECT_EQ(Output(R"(Dim plain As New Machine
Print Str(plain.Start(9))
Dim m As New FastMill
Print Str(m.Start(3)) + Str(m.Start(2))
m.Stop
Print m.Seen
)" + kMachine),
            "False\nTrueFalse\n3;6;2;4;stop;0;\n");
}

TEST_F(EventTest, AddHandlerAttachesAMethod) {
  EXPECT_EQ(Output(R"(Dim m As New Machine
AddHandler m.Started, AddressOf Watch
Print Str(m.Start(4))
RemoveHandler m.Started, AddressOf Watch
Print Str(m.Start(4))
Function Watch(sender As Machine, speed As Integer) As Boolean
  Print "watched " + Str(speed)
  Return speed = 8
End Function
)" + kMachine),
            "watched 4\nwatched 8\nTrue\nFalse\n");
}

TEST_F(EventTest, WrongUsesAreRefused) {
  ExpectErrors({
      {"Class A\nEvent E()\nEnd Class\nClass B Inherits A\nSub F()\nRaiseEvent E\nEnd Sub\nEnd Class",
       "6:12: error: the event \"E\" is raised by the class A alone, which declares it"},
      {"Class A\nSub F()\nRaiseEvent E\nEnd Sub\nEnd Class", "3:12: error: the class A declares no event \"E\""},
      {"RaiseEvent E", "1:12: error: an event is raised by the methods of the class that declares it"},
      {"Class A\nEvent E(x As Integer)\nEnd Class\nClass B Inherits A\nSub E()\nEnd Sub\nEnd Class",
       "5:5: error: the handler of the event E must be declared as: Sub E(x As Integer)"},
      {"Class A\nEvent E()\nProperty E As Integer\nEnd Class", "2:7: error: the class A has a member \"E\" already"},
      {"Module M\nEvent E()\nEnd Module", "2:1: error: a module raises no events"},
  });
}

TEST_F(DelegateTest, IsCalledByItsBareName) {
  EXPECT_EQ(Output("Delegate Sub Task()\nDelegate Function Source() As Integer\nDelegate Sub Sink(n As Integer)\n"
                   "Class Holder\nProperty Ready As Task\nSub Go()\nReady\nSelf.Ready\nEnd Sub\nEnd Class\n"
                   "Dim t As Task = AddressOf Say\nDim s As Source = AddressOf Five\nDim k As Sink = AddressOf Tell\n"
                   "t\nCall t\nCall s\nk 7\nDim h As New Holder\nh.Ready = t\nh.Go\nh.Ready\n"
                   "Sub Say()\nPrint \"said\"\nEnd Sub\nFunction Five() As Integer\nPrint \"five\"\nReturn 5\n"
                   "End Function\nSub Tell(n As Integer)\nPrint Str(n)\nEnd Sub\n"),
            "said\nsaid\nfive\n7\nsaid\nsaid\nsaid\n");
  const std::string head =
      "Delegate Function Source() As Integer\nDelegate Sub Sink(n As Integer)\n"
      "Function Five() As Integer\nReturn 5\nEnd Function\nSub Tell(n As Integer)\nEnd Sub\n";
  EXPECT_EQ(FirstError(head + "Dim s As Source = AddressOf Five\ns\n"),
            "9:1: error: this gives a value of type Integer that isn't used; write \"Call\" before it to drop it");
  EXPECT_NE(FirstError(head + "Dim k As Sink = AddressOf Tell\nk\n").find("takes 1 argument"), std::string::npos);
  EXPECT_NE(FirstError("Dim n As Integer\nn\n").find("this is a value, not a statement"), std::string::npos);
}

}  // namespace
}  // namespace quillbar::language::testing
