// SPDX-License-Identifier: MIT
// Scripts in several files, and files of classes and modules as projects store them.
#include <filesystem>
#include <sstream>
#include <vector>

#include "host/language/run/run_script.h"
#include "host/runtime/platform/file_system.h"
#include "tests/language/script_fixture.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::language::testing {
namespace {

class ProjectFileTest : public ProbeScriptTest {
 protected:
  struct File {
    std::string name;
    std::string text;
  };

  ScriptRun RunFiles(const std::string &main, const std::vector<File> &files) {
    std::vector<std::filesystem::path> others;
    for (const File &file : files) {
      others.push_back(folder_ / file.name);
      test::WriteFile(others.back(), file.text);
    }
    std::ostringstream output;
    std::ostringstream errors;
    std::istringstream input;
    ScriptRun run;
    run.status = RunText(host(), "main.xojo_script", main, {}, output, errors, input, others);
    run.output = output.str();
    run.errors = errors.str();
    // The messages name the files without their folder here.
    for (std::size_t i = 0; i < files.size(); ++i) {
      const std::string path = host::platform::Utf8Path(others[i]);
      for (std::size_t at; (at = run.errors.find(path)) != std::string::npos;) {
        run.errors.replace(at, path.size(), files[i].name);
      }
    }
    return run;
  }
  std::string OutputOf(const std::string &main, const std::vector<File> &files) {
    const ScriptRun run = RunFiles(main, files);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, 0);
    return run.output;
  }
  std::string FirstErrorOf(const std::string &main, const std::vector<File> &files) {
    const ScriptRun run = RunFiles(main, files);
    EXPECT_EQ(run.status, 1);
    return run.errors.substr(0, run.errors.find('\n'));
  }

 private:
  test::TemporaryFolder folder_;
};

TEST_F(ProjectFileTest, FilesSeeEachOther) {
  EXPECT_EQ(OutputOf("Dim a As New A\nPrint a.Name + kSuffix\nConst kMain = \"m\"\n",
                     {{"a.xojo_code",
                       "\xEF\xBB\xBF"
                       "Class A\r\nFunction Name() As String\r\nReturn Helper(kMain)\r\nEnd "
                       "Function\r\nEnd Class"},
                      {"b.xojo_script",
                       "Const kSuffix = \"!\"\nFunction Helper(s As String) As String\nReturn s + "
                       "\"h\"\nEnd Function"}}),
            "mh!\n");
}

TEST_F(ProjectFileTest, ErrorsNameTheirFile) {
  EXPECT_EQ(RunFiles("Dim a As New A\nPrint a.Nam\n",
                     {{"a.xojo_code", "Class A\n  Sub S()\n    x = 1\n  End Sub\nEnd Class\n"}})
                .errors,
            "main.xojo_script:2:9: error: A has no member \"Nam\"\n"
            "    2 | Print a.Nam\n"
            "      |         ^^^\n"
            "a.xojo_code:3:5: error: \"x\" is not known\n"
            "    3 |     x = 1\n"
            "      |     ^\n"
            "2 errors\n");
  EXPECT_EQ(RunFiles("Dim a As New A\na.Fail\n",
                     {{"a.xojo_code", "Class A\nSub Fail()\nRaise New IOException\nEnd Sub\nEnd Class"}})
                .errors,
            "a.xojo_code:3:1: IOException: (without a message)\n"
            "    3 | Raise New IOException\n"
            "      | ^^^^^^^^^^^^^^^^^^^^^\n"
            "  in Sub A.Fail, line 3, column 1 of a.xojo_code\n"
            "  in the script, line 2, column 1\n");
  EXPECT_EQ(FirstErrorOf("Sub S()\nEnd Sub\n", {{"a.xojo_code", "\nSub S()\nEnd Sub"}}),
            "a.xojo_code:2:5: error: \"S\" with these parameters is declared already in line 1 of main.xojo_script");
  EXPECT_EQ(
      FirstErrorOf("Print 1\n", {{"a.xojo_code", "Const k = 1\nPrint 2\n"}}),
      "a.xojo_code:2:1: error: statements run from the first file alone; the others declare classes, modules, Subs "
      "and Functions");
  EXPECT_EQ(FirstErrorOf("Print 1\n", {{"a.xojo_code", "Class A\n"}, {"b.xojo_code", "End Class\n"}}),
            "a.xojo_code:1:1: error: this \"Class\" has no \"End Class\"");
}

TEST_F(ProjectFileTest, AFileThatIsNotThereIsNamed) {
  std::ostringstream output;
  std::ostringstream errors;
  std::istringstream input;
  const std::filesystem::path missing("missing.xojo_code");
  EXPECT_EQ(RunText(host(), "main", "Print 1", {}, output, errors, input, {&missing, 1}), 1);
  EXPECT_TRUE(errors.str().starts_with("missing.xojo_code: error: the script can't be read: ")) << errors.str();
  EXPECT_EQ(output.str(), "");
}

const std::string kInvoice = R"(#tag Class
Protected Class Invoice
Inherits Document
Implements Printable, Named
	#tag Event
		Function Change(ByRef number As Integer) As Boolean
		  number = number + 1
		  Return True
		End Function
	#tag EndEvent

	#tag Method, Flags = &h0, Description = 412073656E74656E6365
		Sub Add(name As String, price As Double)
		  // Prices are net.
		  names.Append(name)
		  prices.Append(price)
		  RaiseEvent Added(name)
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h0
		Sub Constructor(number As String)
		  // Calling the overridden superclass constructor.
		  Super.Constructor
		  mNumber = number
		  
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h0
		Attributes( Deprecated = "Show" )  Function Text() As String
		  Return mNumber + ": " + Format(Total, "0.00") + kCurrency
		End Function
	#tag EndMethod

	#tag Method, Flags = &h0
		Function Name() As String
		  #If TargetConsole Then
		    Return kPrefix + Str(State = States.Paid)
		  #Else
		    MsgBox("none")
		  #EndIf
		End Function
	#tag EndMethod

	#tag Method, Flags = &h21
		Private Shared Function Sum(list() As Double) As Double
		  Dim result As Double
		  For Each item As Double In list
		    result = result + item
		  Next
		  Return result
		End Function
	#tag EndMethod


	#tag Hook, Flags = &h0
		Event Added(name As String)
	#tag EndHook

	#tag DelegateDeclaration, Flags = &h0
		Delegate Function Discount(total As Double) As Double
	#tag EndDelegateDeclaration

	#tag Note, Name = Read me
		"It's a note: anything” goes, even #tag EndClass in the middle
	#tag EndNote


	#tag ComputedProperty, Flags = &h0
		#tag Note
			The sum's own note
		#tag EndNote
		#tag Getter
			Get
			  Dim sum As Double = Sum(prices)
			  If Discounts <> Nil Then sum = Discounts(sum)
			  Return sum * (1 + kTax)
			End Get
		#tag EndGetter
		Total As Double
	#tag EndComputedProperty

	#tag ComputedProperty, Flags = &h0
		#tag Getter
			Get
			  Return mNumber
			End Get
		#tag EndGetter
		#tag Setter
			Set
			  mNumber = value
			  
			End Set
		#tag EndSetter
		Number As String
	#tag EndComputedProperty

	#tag Property, Flags = &h0
		Discounts As Discount
	#tag EndProperty

	#tag Property, Flags = &h21
		#tag Note
			Its number; a ' here
		#tag EndNote
		Private mNumber As String = "none"
	#tag EndProperty

	#tag Property, Flags = &h21
		Private names() As String
	#tag EndProperty

	#tag Property, Flags = &h21
		Private prices() As Double
	#tag EndProperty

	#tag Property, Flags = &h0
		State As States = States.Paid
	#tag EndProperty


	#tag Constant, Name = kCurrency, Type = String, Dynamic = False, Default = \" \xE2\x82\xAC\x2C \"net\"", Scope = Public
	#tag EndConstant

	#tag Constant, Name = kPrefix, Type = String, Dynamic = True, Default = \"Invoice ", Scope = Protected
		#Tag Instance, Platform = Any, Language = de, Definition  = \"Rechnung "
	#tag EndConstant

	#tag Constant, Name = kTax, Type = Double, Dynamic = False, Default = \"0.19", Scope = Private
	#tag EndConstant


	#tag Enum, Name = States, Type = Integer, Flags = &h0
		Open
		Paid = 4
	#tag EndEnum


	#tag ViewBehavior
		#tag ViewProperty
			Name="Index"
			Visible=true
			Group="ID"
			InitialValue="-2147483648"
			Type="Integer"
			EditorType=""
		#tag EndViewProperty
	#tag EndViewBehavior
End Class
#tag EndClass
)";

const std::string kModule = R"(#tag Module
Protected Module Shapes
	#tag Method, Flags = &h1
		Protected Function Twice(Extends x As Double) As Double
		  Return 2 * x * kOne
		End Function
	#tag EndMethod

	#tag Constant, Name = kOne, Type = Number, Dynamic = False, Default = \"1", Scope = Private
	#tag EndConstant

	#tag Constant, Name = kRed, Type = Color, Dynamic = False, Default = \"&cFF0000", Scope = Protected
	#tag EndConstant

	#tag Constant, Name = kYes, Type = Boolean, Dynamic = False, Default = \"True", Scope = Public
	#tag EndConstant
End Module
#tag EndModule
)";

const std::string kInterfaces = R"(#tag Interface
Protected Interface Printable
	#tag Method, Flags = &h0
		Function Text() As String
		  
		End Function
	#tag EndMethod
End Interface
#tag EndInterface
)";

TEST_F(ProjectFileTest, ClassesModulesAndInterfacesOfProjectsRunAsTheyAre) {
  const std::vector<File> files = {{"Invoice.xojo_code", kInvoice},
                                   {"Shapes.xojo_code", kModule},
                                   {"Printable.xojo_code", kInterfaces},
                                   {"rest.xojo_code",
                                    "Interface Named\nFunction Name() As String\nEnd Interface\n"
                                    "Class Document Inherits Probe\nSub Constructor()\nEnd Sub\nEnd Class\n"}};
  EXPECT_EQ(OutputOf(R"(Using Shapes
Dim i As New Loud("4711")
i.Add("Paper", 100)
Dim p As Printable = i
Print p.Text
i.Discounts = AddressOf Half
i.Number = "5"
Print i.Text
Print i.Name
Dim d As Double = 4
Print Str(d.Twice) + Str(Shapes.kRed.Red) + Str(kYes)
Print Str(i.RaiseChange(3))
Function Half(total As Double) As Double
  Return total / 2
End Function
Class Loud Inherits Invoice
  Sub Added(name As String)
    Print "added " + name
  End Sub
End Class
)",
                     files),
            "added Paper\n4711: 119.00 \u20AC, \"net\"\n5: 59.50 \u20AC, \"net\"\nInvoice True\n8255True\n4\n");
}

TEST_F(ProjectFileTest, WrongTagsAreExplained) {
  const auto error = [&](const std::string &text) { return FirstErrorOf("Print 1", {{"a", text}}); };
  EXPECT_EQ(error("#tag Class\nClass A\n#tag Method, Flags = &h0\nSub S()\nEnd Sub\nEnd Class\n#tag EndClass"),
            "a:3:1: error: this \"#tag Method\" has no \"#tag EndMethod\"");
  EXPECT_EQ(error("#tag Class\nClass A\nEnd Class\n"), "a:1:1: error: this \"#tag Class\" has no \"#tag EndClass\"");
  EXPECT_EQ(error("Class A\n#tag Note\nwords'\nEnd Class\n"),
            "a:2:1: error: this \"#tag Note\" has no \"#tag EndNote\"");
  EXPECT_EQ(error("Class A\nEnd Class\n#tag EndClass\n"), "a:3:1: error: \"#tag EndClass\" closes nothing here");
  EXPECT_EQ(error("#tag DesktopWindow\nBegin DesktopWindow W\n  x = 1\nEnd\n#tag EndDesktopWindow\n"),
            "a:1:1: error: \"#tag DesktopWindow\" is not part of this host; docs/language.md lists what is");
  EXPECT_EQ(error("Module A\n#tag Structure, Name = S, Flags = &h0\nx As Integer\n#tag EndStructure\nEnd Module\n"),
            "a:2:1: error: \"#tag Structure\" is not part of this host; docs/language.md lists what is");
  EXPECT_EQ(error("Class A\n#tag Event\nSub Open()\nEnd Sub\n#tag EndEvent\nEnd Class\n"),
            "a:3:5: error: the class A inherits no event \"Open\"");
  EXPECT_EQ(
      error("Class A\n#tag ComputedProperty, Flags = &h0\n#tag Getter\nGet\nReturn 1\nEnd Get\n#tag EndGetter\n#tag "
            "EndComputedProperty\nEnd Class\n"),
      "a:2:1: error: this tag has no declaration: Name As Type");
  EXPECT_EQ(error("Class A\n#tag Constant, Type = Double\n#tag EndConstant\nEnd Class\n"),
            "a:2:1: error: this tag has no \"Name = …\"");
  EXPECT_EQ(error("<?xml version=\"1.0\"?>\n<RBProject>"),
            "a:1:1: error: this file is in a project format other than text; save the project as text");
}

TEST_F(ProjectFileTest, HostileClassesEndInMessages) {
  EXPECT_EQ(FirstErrorOf("Print 1", {{"a", "Class A Inherits C\nEnd Class"},
                                     {"b", "Class B Inherits A\nEnd Class"},
                                     {"c", "Class C Inherits B\nEnd Class"}}),
            "a:1:18: error: the class A would inherit from itself");
  EXPECT_EQ(FirstErrorOf("Print 1", {{"a", "Class Probe\nEnd Class"}}),
            "a:1:7: error: there is a type \"Probe\" already");
  const ScriptRun run = RunFiles("Dim a As New A\nPrint Str(a.Value)\n",
                                 {{"a",
                                   "#tag Class\nClass A\n#tag ComputedProperty, Flags = &h0\n#tag Getter\nGet\nReturn "
                                   "Value + 1\nEnd Get\n#tag EndGetter\nValue As Integer\n#tag "
                                   "EndComputedProperty\nEnd Class\n#tag EndClass\n"}});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.errors.starts_with("a:6:8: StackOverflowException: calls are nested too deeply (")) << run.errors;
  EXPECT_EQ(OutputOf("Module Keeper\nProperty Kept As A\nEnd Module\nDim a As New A\na = Nil\nPrint Keeper.Kept.Name\n"
                     "Keeper.Kept = Nil\nPrint \"end\"\n",
                     {{"a",
                       "Class A\nProperty Name As String = \"risen\"\nSub Destructor()\nPrint \"dying\"\nKeeper.Kept = "
                       "Self\nEnd Sub\nEnd Class\n"}}),
            "dying\nrisen\nend\n");
}

}  // namespace
}  // namespace quillbar::language::testing
