// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

class ClassTest : public ProbeScriptTest {};

TEST_F(ClassTest, PropertiesStartWithTheirFirstValues) {
  EXPECT_EQ(Output(R"(Dim a As New Account
Print a.Owner + Str(a.Balance) + Str(a.Entries.LastIndex) + Str(a.Slots.LastIndex) + Str(a.Open)
a.Balance = a.Balance + 2
a.Balance += 0.5
a.Entries.Append("x")
a.Slots(3) = 7
Print Str(a.Balance) + Str(a.Entries.LastIndex) + Str(a.Slots(3))
Dim b As New Account
Print Str(b.Balance) + Str(b.Entries.LastIndex)
Class Account
  Property Owner As String = "nobody"
  Public Balance As Double = 1.5
  Property Entries() As String
  Property Slots(4) As Integer
  Property Open As Boolean = True
End Class
)"),
            "nobody1.5-14True\n407\n1.5-1\n");
}

TEST_F(ClassTest, ComputedPropertiesRunTheirCode) {
  EXPECT_EQ(Output(R"(Dim t As New Temperature
t.Fahrenheit = 212
Print Str(t.Celsius)
t.Fahrenheit += 18
Print Str(t.Fahrenheit)
Print t.Unit
Class Temperature
  Property Celsius As Double
  Property Fahrenheit As Double
    Get
      Return Celsius * 1.8 + 32
    End Get

    Set
      Celsius = (value - 32) / 1.8
    End Set
  End Property
  Property Unit As String
    Get
      Return "C"
    End Get
  End Property
End Class
)"),
            "100\n230\nC\n");
  ExpectErrors(
      {{"Dim c As New C\nc.P = 1\nClass C\nProperty P As Integer\nGet\nReturn 1\nEnd Get\nEnd Property\nEnd Class",
        "2:1: error: the property C.P is read-only"}});
}

TEST_F(ClassTest, SubclassesOverrideAndSuperReachesWhatTheyOverride) {
  EXPECT_EQ(Output(R"(Dim shapes() As Shape
shapes.Append(New Shape("s"))
shapes.Append(New Square("q", 3))
For Each s As Shape In shapes
  Print s.Describe + " " + Str(s IsA Square)
Next
Class Square Inherits Shape
  Private side As Double
  Sub Constructor(name As String, side As Double)
    Super.Constructor(name)
    Self.side = side
  End Sub
  Function Area() As Double
    Return side * side + Super.Area
  End Function
End Class
Class Shape
  Protected name As String
  Sub Constructor(name As String)
    Me.name = name
  End Sub
  Function Area() As Double
    Return 0.5
  End Function
  Function Describe() As String
    Return name + ":" + Str(Area)
  End Function
End Class
)"),
            "s:0.5 False\nq:9.5 True\n");
}

TEST_F(ClassTest, SharedMembersAndConstantsBelongToTheClass) {
  EXPECT_EQ(Output(R"(Print Str(Counter.kStart) + Str(Counter.Total)
Dim a As New Counter
Dim b As New Counter
Counter.Bump(5)
Print Str(Counter.Total) + Str(a.Total)
Class Counter
  Const kStart = 10
  Shared Total As Integer = kStart + 1
  Sub Constructor()
    Total = Total + 1
  End Sub
  Shared Sub Bump(by As Integer)
    Total = Total + by
  End Sub
End Class
)"),
            "1011\n1818\n");
}

TEST_F(ClassTest, DestructorsRunWhenTheLastReferenceGoes) {
  EXPECT_EQ(Output(R"(Dim a As New Noisy("a")
Dim b As Noisy = a
a = Nil
Print "still"
b = Nil
Print "gone"
Work
Dim last As New Louder("z")
Sub Work()
  Dim local As New Noisy("l")
End Sub
Class Noisy
  Property Name As String
  Sub Constructor(n As String)
    Name = n
  End Sub
  Sub Destructor()
    Print "-" + Name
  End Sub
End Class
Class Louder Inherits Noisy
  Sub Destructor()
    Print "!"
  End Sub
End Class
)"),
            "still\n-a\ngone\n-l\n!\n-z\n");
}

TEST_F(ClassTest, ObjectsThatReferToEachOtherAreGivenBackAtTheEnd) {
  EXPECT_EQ(
      Output(
          "Dim a As New Node\nDim b As New Node\na.Other = b\nb.Other = a\na.Text = \"x\" + Str(1)\nPrint a.Other.Other.Text\n"
          "Class Node\nProperty Other As Node\nProperty Text As String\nEnd Class"),
      "x1\n");
}

TEST_F(ClassTest, LongChainsOfObjectsAreReleasedWithoutMuchStack) {
  EXPECT_EQ(
      Output("Dim list As Node\nFor i As Integer = 1 To 100000\nDim n As New Node\nn.Rest = list\nlist = n\nNext\n"
             "list = Nil\nPrint \"done\"\nClass Node\nProperty Rest As Node\nEnd Class"),
      "done\n");
}

TEST_F(ClassTest, AnObjectThatItsDestructorKeepsStaysAlive) {
  EXPECT_EQ(
      Output(
          "Dim kept As Phoenix\nMake\nPrint kept.Name\nkept = Nil\nPrint \"end\"\nSub Make()\nDim p As New Phoenix\nEnd Sub\n"
          "Class Phoenix\nProperty Name As String = \"p\"\nSub Destructor()\nkept = Self\nPrint \"burns\"\nEnd Sub\nEnd Class"),
      "burns\np\nend\n");
}

TEST_F(ClassTest, RecursionWithoutEndIsAnException) {
  const std::string error = FirstError(
      "Dim c As New C\nPrint Str(c.P)\nClass C\nProperty P As Integer\nGet\nReturn P + 1\nEnd Get\nEnd Property\nEnd Class");
  EXPECT_TRUE(error.starts_with("6:8: StackOverflowException: calls are nested too deeply")) << error;
}

TEST_F(ClassTest, MethodsNamedLikeAnEventOfThePluginsClassHandleIt) {
  EXPECT_EQ(Output(R"(Dim p As New Listener(3)
Print Str(p.RaiseChange(4))
Print p.RaiseWords("x")
Dim q As Probe = p
Print Str(q IsA Listener)
Class Listener Inherits Probe
  Private factor As Integer
  Sub Constructor(factor As Integer)
    Super.Constructor
    Self.factor = factor
  End Sub
  Function Change(ByRef number As Integer) As Boolean
    number = number * factor
    Return True
  End Function
  Function Words(text As String, sender As Probe) As String
    Return text + "!" + Str(factor) + Str(sender Is Self)
  End Function
End Class
)"),
            "12\nx!3True\nTrue\n");
  ExpectErrors(
      {{"Class L Inherits Probe\nSub Change(n As Integer)\nEnd Sub\nEnd Class",
        "2:5: error: the handler of the event Change must be declared as: Function Change(ByRef number As Integer) "
        "As Boolean"}});
}

TEST_F(ClassTest, ExceptionsOfTheScriptAreCaughtByTheirClass) {
  EXPECT_EQ(Output(R"(Try
  Raise New BadInvoice("no lines", 7)
Catch e As BadInvoice
  Print e.Message + Str(e.Number)
End Try
Class BadInvoice Inherits RuntimeException
  Property Number As Integer
  Sub Constructor(message As String, number As Integer)
    Super.Constructor(message)
    Self.Number = number
  End Sub
End Class
)"),
            "no lines7\n");
}

TEST_F(ClassTest, OperatorMethodsTakePartInExpressions) {
  EXPECT_EQ(Output(R"(Dim a As New Money(5)
Dim b As New Money(7)
Print Str(a < b) + Str(a = b) + Str(a <> b) + Str(a Is a)
Print Str((a + b).Amount)
Dim s As String = a + b
Print s
Dim t As New Table
t(2) = "two"
t(3) = t(2) + "!"
Print t(3) + Str(t = Nil)
Class Money
  Property Amount As Double
  Sub Constructor(amount As Double)
    Self.Amount = amount
  End Sub
  Function Operator_Compare(other As Money) As Integer
    Return Sign(Amount - other.Amount)
  End Function
  Function Operator_Add(other As Money) As Money
    Return New Money(Amount + other.Amount)
  End Function
  Function Operator_Convert() As String
    Return Format(Amount, "0.00")
  End Function
End Class
Class Table
  Private items(9) As String
  Function Operator_Subscript(index As Integer) As String
    Return items(index)
  End Function
  Sub Operator_Subscript(index As Integer, Assigns text As String)
    items(index) = text
  End Sub
End Class
)"),
            "TrueFalseTrueTrue\n12\n12.00\ntwo!False\n");
}

TEST_F(ClassTest, AssignsAndExtendsMakeMethodsLookLikeMembers) {
  EXPECT_EQ(Output(R"(Dim c As New C
c.Level = 3
c.Cell(2) = 4
Print Str(c.Sum) + "ab".Twice + Str(c.Sum.Plus(1))
Class C
  Property Sum As Integer
  Sub Level(Assigns n As Integer)
    Sum = Sum + n
  End Sub
  Sub Cell(i As Integer, Assigns n As Integer)
    Sum = Sum + i * n
  End Sub
End Class
Function Twice(Extends s As String) As String
  Return s + s
End Function
Function Plus(Extends n As Integer, more As Integer) As Integer
  Return n + more
End Function
)"),
            "11abab12\n");
}

TEST_F(ClassTest, PropertiesCanBePassedByReference) {
  EXPECT_EQ(Output("Dim c As New C\nDouble2(c.N)\nPrint Str(c.N)\nSub Double2(ByRef n As Integer)\nn = n * 2\nEnd Sub\n"
                   "Class C\nProperty N As Integer = 4\nEnd Class"),
            "8\n");
}

TEST_F(ClassTest, MistakesAreExplained) {
  const std::string secret = "\nClass C\nPrivate x As Integer\nProtected Sub M()\nEnd Sub\nEnd Class";
  ExpectErrors({
      {"Class A Inherits B\nEnd Class\nClass B Inherits A\nEnd Class",
       "1:18: error: the class A would inherit from itself"},
      {"Class A Inherits A\nEnd Class", "1:18: error: the class A would inherit from itself"},
      {"Class Probe\nEnd Class", "1:7: error: there is a type \"Probe\" already"},
      {"Class A Inherits Integer\nEnd Class", "1:18: error: Integer is not a class to inherit from"},
      {"Class A\nProperty x As Integer\nProperty X As String\nEnd Class",
       "3:10: error: the class A has a member \"X\" already"},
      {"Print Self", "1:7: error: \"Self\" is only known in the methods of classes"},
      {"Class A\nShared Sub M()\nPrint Str(Self Is Nil)\nEnd Sub\nEnd Class",
       "3:11: error: a shared method has no object, so there is no Self"},
      {"Class A\nSub M()\nSuper.M\nEnd Sub\nEnd Class", "3:1: error: the class A inherits from no other"},
      {"Dim a As A\na.M\nClass A\nSub M()\nEnd Sub\nEnd Class", "2:1: NilObjectException: \"M\" was used on Nil"},
      {"Dim a As A\na.X = 1\nClass A\nProperty X As Integer\nEnd Class",
       "2:1: NilObjectException: \"X\" was used on Nil"},
      {"Class A\nSub Destructor(n As Integer)\nEnd Sub\nEnd Class",
       "2:5: error: a Destructor is declared as: Sub Destructor()"},
      {"Class A\nPrint 1\nEnd Class", "2:1: error: \"Print\" is not part of this host; docs/language.md lists what is"},
      {"Sub S(n As Integer, Extends t As String)\nEnd Sub",
       "1:21: error: \"Extends\" is for the first parameter of a Sub or Function outside of classes"},
  });
  EXPECT_EQ(FirstError("Dim c As New C\nc.x = 1" + secret), "2:1: error: \"x\" is private in the class C");
  EXPECT_EQ(FirstError("Dim c As New C\nc.M" + secret), "2:1: error: \"M\" is protected in the class C");
}

TEST_F(ClassTest, SignsLogicAndConversionsIntoAClass) {
  EXPECT_EQ(Output(R"(Dim a As Money = 5
Dim b As Money = "7.5"
Print "" + (-a).Text + " " + (-(-b)).Text + " " + (a + 1).Text
Print Both(3, a) + Str(a = 5)
Dim f As Flags = 12
Print Str((f And 8).Bits) + Str((f Or 1).Bits) + Str((f Xor 4).Bits) + Str((Not f).Bits) + Str((3 And f).Bits)
Function Both(x As Money, y As Money) As String
  Return x.Text + y.Text
End Function
Class Money
  Private cents As Integer
  Sub Operator_Convert(value As Double)
    cents = Round(value * 100)
  End Sub
  Sub Operator_Convert(value As String)
    cents = Round(Val(value) * 100)
  End Sub
  Function Operator_Negate() As Money
    Return -cents / 100
  End Function
  Function Operator_Add(other As Money) As Money
    Return (cents + other.cents) / 100
  End Function
  Function Operator_Compare(other As Money) As Integer
    Return cents - other.cents
  End Function
  Function Text() As String
    Return Format(cents / 100, "0.00")
  End Function
End Class
Class Flags
  Property Bits As Integer
  Sub Operator_Convert(value As Integer)
    Bits = value
  End Sub
  Function Operator_And(other As Integer) As Flags
    Return Bits And other
  End Function
  Function Operator_AndRight(other As Integer) As Flags
    Return Bits And other + 100
  End Function
  Function Operator_Or(other As Integer) As Flags
    Return Bits Or other
  End Function
  Function Operator_Xor(other As Integer) As Flags
    Return Bits Xor other
  End Function
  Function Operator_Not() As Flags
    Return Not Bits
  End Function
End Class
)"),
            "-5.00 7.50 6.00\n3.005.00True\n8138-13" + std::to_string(12 & 103) + "\n");
}

}  // namespace
}  // namespace quillbar::language::testing
