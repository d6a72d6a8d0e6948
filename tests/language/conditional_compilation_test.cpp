// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

class ConditionalCompilationTest : public ScriptTest {};

TEST_F(ConditionalCompilationTest, OnlyTheBranchThatHoldsIsRead) {
  EXPECT_EQ(Output(R"(Const kEdition = 2
Const kName As String = "plus"
#If kEdition = 1 Then
  this is "no script at all
  Dim x As Nothing
#ElseIf kEdition = 2 And kName = "PLUS" Then ' a comment
  Print "two"
  #If Not DebugBuild
    Print "released"
  #Else
    Print "being debugged"
  #EndIf
#ElseIf True
  Print "true"
#Else
  Nonsense
#EndIf
#If Shop.kOpen Or False Then
Class Extra
  #If Self.kOpen
  Const kInner = 5
  #Else
  Const kInner = 6
  #End If
  Const kOpen = False
End Class
#EndIf
Print Str(Extra.kInner)
Module Shop
  Const kOpen = True
End Module
)"),
            "two\nreleased\n6\n");
}

TEST_F(ConditionalCompilationTest, TheTargetIsKnownToConditionsAndToScripts) {
  EXPECT_EQ(Output(R"(#If TargetWindows Xor TargetLinux Xor TargetMacOS
Print "one system"
#EndIf
#If TargetConsole And Not TargetDesktop And Not TargetWeb And XojoVersion >= 2019.02
Print "console"
#EndIf
Print Str(Target32Bit <> Target64Bit) + Str(TargetX86 <> TargetARM) + Str(DebugBuild)
)"),
            "one system\nconsole\nTrueTrueFalse\n");
#ifdef _WIN32
  const std::string system = "TargetWindows";
#else
  const std::string system = "TargetLinux";
#endif
  EXPECT_EQ(Output("#If " + system + " Then\nPrint \"here\"\n#EndIf"), "here\n");
  EXPECT_EQ(
      Output("Print If(" + std::string(sizeof(void *) == 8 ? "Target64Bit" : "Target32Bit") + ", \"wide\", \"\")"),
      "wide\n");
}

TEST_F(ConditionalCompilationTest, WrongDirectivesAreRefused) {
  ExpectErrors({
      {"#If TargetLinx Then\n#EndIf",
       "1:5: error: \"TargetLinx\" is no constant that #If knows; did you mean \"TargetLinux\"?"},
      {"#If 1 Then\n#EndIf", "1:5: error: the condition of #If is a Boolean"},
      {"#If True Then\nPrint 1", "1:1: error: this \"#If\" has no \"#EndIf\""},
      {"#Else", "1:1: error: this has no \"#If\" before it"},
      {"#EndIf", "1:1: error: this has no \"#If\" before it"},
      {"#If False\n#Else\n#Else\n#EndIf", "3:1: error: this follows the \"#Else\" of its \"#If\""},
      {"#If 1 = \"a\"\n#EndIf", "1:7: error: these constants have different types"},
      {"#If True And\n#EndIf", "1:13: error: expected a value, found the end of the script"},
      {"#If kA\n#EndIf\nConst kA = kB\nConst kB = kA", "4:12: error: the constant \"kA\" depends on itself"},
      {"#If kA\n#EndIf\nModule A\nConst kA = True\nEnd Module\nModule B\nConst kA = True\nEnd Module",
       "1:5: error: there are several constants \"kA\"; write the class or module before it"},
      {"#If Len(\"\") = 0\n#EndIf", "1:5: error: #If takes literals, constants and operators alone"},
      {"#Bad True", "1:1: error: the directives are #If, #ElseIf, #Else, #EndIf and #Pragma (which is ignored)"},
      {"#If False\nx = \"\n#EndIf\ny = \"", "4:5: error: this text has no closing quotation mark"},
  });
}

}  // namespace
}  // namespace quillbar::language::testing
