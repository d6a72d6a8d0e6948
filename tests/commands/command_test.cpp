// SPDX-License-Identifier: MIT
// The command line of `quillbar`: what it prints and how it ends.
#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/judges.h"
#include "tests/support/pdf_file.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

#ifdef _WIN32
constexpr bool kTestsCanInterrupt = false;
#else
constexpr bool kTestsCanInterrupt = true;
#endif

class Commands : public testing::Test {
 protected:
  ProcessResult Run(Command arguments, ProcessOptions options = {}) const {
    arguments.insert(arguments.begin(), std::filesystem::path(QUILLBAR_PROGRAM));
    options.workingDirectory = folder_.path();
    return RunProcess(arguments, options);
  }
  // Runs a script with this text.
  ProcessResult RunText(const std::string &text, const Command &arguments = {}) const {
    WriteFile(folder_ / "script.xojo_script", text);
    Command command{"run", "script.xojo_script"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Run(command);
  }

  TemporaryFolder folder_;
};

TEST_F(Commands, VersionIsPrinted) {
  const ProcessResult result = Run({"--version"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "quillbar " QUILLBAR_VERSION "\n");
  EXPECT_THAT(result.errors, IsEmpty());
}

TEST_F(Commands, HelpNamesEveryCommandAndOption) {
  const ProcessResult result = Run({"--help"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, AllOf(HasSubstr("run"), HasSubstr("check"), HasSubstr("describe"), HasSubstr("--plugin"),
                                   HasSubstr("--version")));
  EXPECT_THAT(Run({"run", "--help"}).output, AllOf(HasSubstr("SCRIPT"), HasSubstr("--account")));
}

TEST_F(Commands, WrongCommandLinesEndWithStatus2AndSayWhy) {
  const std::vector<Command> wrong{{},
                                   {"walk"},
                                   {"run"},
                                   {"--nonsense"},
                                   {"run", "--nonsense", "a"},
                                   {"describe", "surplus"},
                                   {"check"},
                                   {"check", "a", "b"},
                                   {"--plugin"}};
  for (const Command &arguments : wrong) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    const ProcessResult result = Run(arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, Not(IsEmpty()));
    EXPECT_THAT(result.output, IsEmpty());
  }
}

TEST_F(Commands, ScriptPrintsAndFindsItsArguments) {
  const ProcessResult result =
      RunText("For Each a As String In Arguments\n  Print a\nNext\n", {"one", "--two", "\u00FC"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.output, "one\n--two\n\u00FC\n");
  EXPECT_THAT(result.errors, IsEmpty());
}

TEST_F(Commands, FilesAfterTheScriptBelongToIt) {
  WriteFile(folder_ / "greeter.xojo_code",
            "#tag Class\nProtected Class Greeter\n\t#tag Method, Flags = &h0\n\t\tSub Greet(name As String)\n"
            "\t\t  Print \"hello \" + name\n\t\tEnd Sub\n\t#tag EndMethod\nEnd Class\n#tag EndClass\n");
  WriteFile(folder_ / "names.xojo_script", "Module Names\nConst kLast = \"all\"\nEnd Module\n");
  const std::string script =
      "Dim g As New Greeter\nFor Each a As String In Arguments\n  g.Greet(a)\nNext\ng.Greet(kLast)\n";
  const ProcessResult result = RunText(script, {"greeter.xojo_code", "names.xojo_script", "one", "two.xojo_code"});
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "hello one\nhello two.xojo_code\nhello all\n");
  EXPECT_EQ(Run({"script.xojo_script", "greeter.xojo_code", "names.xojo_script", "--", "three.xojo_code"}).output,
            "hello three.xojo_code\nhello all\n");
  EXPECT_EQ(Run({"check", "script.xojo_script", "greeter.xojo_code", "names.xojo_script"}).exitStatus, 0);
  const ProcessResult missing = Run({"check", "script.xojo_script", "names.xojo_script"});
  EXPECT_EQ(missing.exitStatus, 1);
  EXPECT_THAT(missing.errors, HasSubstr("script.xojo_script:1:14: error: there is no type \"Greeter\""));
}

TEST_F(Commands, ScriptWritesADocument) {
  const ProcessResult result = RunText(
      R"(Dim document As New PDFDocument
Dim p As Page = document.AddPage
p.Rectangle(10, 20, 100, 50)
p.Draw
document.Save(New FolderItem("out.pdf"))
)");
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(JudgedFlawless(folder_ / "out.pdf"));
}

TEST_F(Commands, MissingScriptEndsWithStatus1AndItsName) {
  const ProcessResult result = Run({"run", "missing.xojo_script"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("missing.xojo_script"));
}

TEST_F(Commands, WrongScriptEndsWithStatus1AndShowsThePlaceBeforeAnythingRuns) {
  const ProcessResult result = RunText("Print \"first\"\nDim n As Integer = Nonsense\n");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.output, IsEmpty());
  EXPECT_THAT(result.errors,
              AllOf(HasSubstr("script.xojo_script:2:20"), HasSubstr("Dim n As Integer = Nonsense"), HasSubstr("^")));
}

TEST_F(Commands, CheckFindsErrorsAndRunsNothing) {
  WriteFile(folder_ / "good.xojo_script", "Print \"run\"\nDim document As New PDFDocument\n");
  const ProcessResult good = Run({"check", "good.xojo_script"});
  EXPECT_EQ(good.exitStatus, 0) << good.errors;
  EXPECT_THAT(good.output, IsEmpty());
  EXPECT_THAT(good.errors, IsEmpty());
  WriteFile(folder_ / "wrong.xojo_script", "Print \"run\"\nDim n As Integer = Nonsense\nOther()\n");
  const ProcessResult wrong = Run({"check", "wrong.xojo_script"});
  EXPECT_EQ(wrong.exitStatus, 1);
  EXPECT_THAT(wrong.output, IsEmpty());
  EXPECT_THAT(wrong.errors,
              AllOf(HasSubstr("wrong.xojo_script:2:20"), HasSubstr("wrong.xojo_script:3:1"), HasSubstr("2 errors")));
}

TEST_F(Commands, FileInPlaceOfACommandIsRun) {
  WriteFile(folder_ / "script.xojo_script", "For Each a As String In Arguments\n  Print a\nNext\n");
  const ProcessResult result = Run({"script.xojo_script", "one", "--account"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.output, "one\n--account\n");
  const ProcessResult accounted = Run({"--account", "script.xojo_script", "one"});
  EXPECT_EQ(accounted.output, "one\n");
  EXPECT_THAT(accounted.errors, HasSubstr("The ledger balances"));
  const ProcessResult missing = Run({"missing.xojo_script"});
  EXPECT_EQ(missing.exitStatus, 1);
  EXPECT_THAT(missing.errors, HasSubstr("missing.xojo_script: error: the script can't be read"));
  EXPECT_THAT(Run({"walk"}).errors, HasSubstr("\"walk\" is neither a command nor a file"));
}

TEST_F(Commands, ScriptIsReadFromStandardInput) {
  ProcessOptions options;
  options.input = "Print \"from a pipe, to \" + Arguments(0)\n";
  for (const Command &command : {Command{"run", "-", "you"}, Command{"-", "you"}}) {
    const ProcessResult result = Run(command, options);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.output, "from a pipe, to you\n");
  }
  options.input = "Print 1\nPrint nonsense\n";
  for (const Command &command : {Command{"run", "-"}, Command{"check", "-"}}) {
    const ProcessResult result = Run(command, options);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.errors, HasSubstr("standard input:2:7: error:"));
  }
}

TEST_F(Commands, ScriptReadsItsInputAndFindsWhatLiesBesideIt) {
  WriteFile(folder_ / "words.txt", "beside");
  WriteFile(folder_ / "script.xojo_script",
            "Print Input + \", \" + TextInputStream.Open(SpecialFolder.Resource(\"words.txt\")).ReadAll\n");
  ProcessOptions options;
  options.input = "typed\n";
  const ProcessResult result = Run({"run", "script.xojo_script"}, options);
  EXPECT_EQ(result.output, "typed, beside\n") << result.errors;
}

TEST_F(Commands, QuitEndsWithItsStatusAndLeavesWholeFiles) {
  const ProcessResult result = RunText(R"(Dim document As New PDFDocument
Dim p As Page = document.AddPage
document.Save(New FolderItem("out.pdf"))
Dim notes As TextOutputStream = TextOutputStream.Create(New FolderItem("notes.txt"))
notes.Write("noted")
StdOut.Write("printed")
Quit(3)
)");
  EXPECT_EQ(result.exitStatus, 3) << result.errors;
  EXPECT_EQ(result.output, "printed");
  EXPECT_TRUE(JudgedFlawless(folder_ / "out.pdf"));
  EXPECT_EQ(ReadFile(folder_ / "notes.txt"), "noted");
}

TEST_F(Commands, InterruptionKeepsWhatWasPrintedAndEndsWithStatus130) {
  if (!kTestsCanInterrupt) GTEST_SKIP() << "on Windows Ctrl-C needs a console, which tests run without";
  WriteFile(folder_ / "script.xojo_script",
            "Class Door\n  Sub Destructor()\n    Print \"four\"\n  End Sub\nEnd Class\nDim d As New Door\n"
            "Print \"one\"\nPrint \"two\"\nTry\n  While True\n  Wend\nFinally\n  Print \"three\"\nEnd Try\n");
  ProcessOptions options;
  // The line has to arrive while the script runs, or the script would never end.
  options.interruptAt = "two\n";
  const ProcessResult result = Run({"run", "script.xojo_script"}, options);
  EXPECT_EQ(result.exitStatus, 130) << result.errors;
  EXPECT_EQ(result.output, "one\ntwo\n");
  EXPECT_THAT(result.errors, IsEmpty());
}

TEST_F(Commands, InterruptionWhileAFileIsSavedLeavesNothingOfIt) {
  if (!kTestsCanInterrupt) GTEST_SKIP() << "on Windows Ctrl-C needs a console, which tests run without";
  WriteFile(folder_ / "script.xojo_script", R"(Dim document As New PDFDocument(New CompressorHandle)
For i As Integer = 1 To 4000
  Dim p As Page = document.AddPage
  For x As Integer = 1 To 50
    p.Rectangle(x, i, 100, 50)
  Next
  p.Draw
Next
Print "saving"
For copy As Integer = 1 To 1000
  document.Save(New FolderItem("out.pdf"))
  If copy = 1 Then Print "saved"
  Dim f As New FolderItem("out.pdf")
  f.Delete
Next
Print "never"
)");
  ProcessOptions options;
  options.interruptAt = "saved\n";
  const ProcessResult result = Run({"run", "--account", "script.xojo_script"}, options);
  EXPECT_EQ(result.exitStatus, 130);
  EXPECT_EQ(result.output, "saving\nsaved\n");
  EXPECT_THAT(result.errors, HasSubstr("The ledger balances"));
  for (const auto &entry : std::filesystem::directory_iterator(folder_.path())) {
    // Between Save and Delete the file is there, and whole.
    if (entry.path().filename() == "out.pdf") {
      EXPECT_EQ(PdfFile(ReadFile(entry.path())).PageCount(), 4000U);
    } else {
      EXPECT_EQ(entry.path().filename(), "script.xojo_script");
    }
  }
}

TEST_F(Commands, DescriptionForProgramsHasEveryMember) {
  const ProcessResult result = Run({"describe", "--json"});
  EXPECT_EQ(result.exitStatus, 0);
  const auto description = nlohmann::json::parse(result.output);
  ASSERT_EQ(description["modules"].size(), 1U);
  EXPECT_EQ(description["modules"][0]["name"], "QuillbarPDFWriter");
  EXPECT_EQ(description["modules"][0]["classes"].size(), 11U);
  EXPECT_EQ(description["classes"].size(), 2U) << "the companion's";
}

TEST_F(Commands, MessagesHaveColorsOnTerminalsUnlessTheyAreRefused) {
#ifdef _WIN32
  GTEST_SKIP() << "there is no terminal here that could be written down";
#endif
  if (!std::filesystem::exists("/usr/bin/script"))
    GTEST_SKIP() << "needs the program script, which is not on this machine";
  WriteFile(folder_ / "script.xojo_script", "Print nonsense\n");
  ProcessOptions options;
  options.workingDirectory = folder_.path();
  const auto onATerminal = [&](const std::string &settings) {
    return RunProcess(
               {"sh", "-c", "QUILLBAR=\"$0\" " + settings + " script -qec '\"$QUILLBAR\" script.xojo_script' /dev/null",
                std::filesystem::path(QUILLBAR_PROGRAM)},
               options)
        .output;
  };
  EXPECT_THAT(onATerminal("TERM=xterm NO_COLOR="), HasSubstr("\x1B[1;31merror:\x1B[0m"));
  for (const char *settings : {"TERM=xterm NO_COLOR=1", "TERM=dumb NO_COLOR="}) {
    EXPECT_THAT(onATerminal(settings), AllOf(HasSubstr("error: \"nonsense\""), Not(HasSubstr("\x1B")))) << settings;
  }
  EXPECT_THAT(Run({"script.xojo_script"}).errors, Not(HasSubstr("\x1B")));
}

TEST_F(Commands, DebugMessagesGoToTheErrorOutput) {
  const ProcessResult result = RunText("Print \"printed\"\nSystem.DebugLog(\"logged\")\n");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "printed\n");
  EXPECT_EQ(result.errors, "logged\n");
}

TEST_F(Commands, FailureWhileRunningEndsWithStatus1AndAStackTrace) {
  const ProcessResult result = RunText(
      R"(Print "first"
Draw(Nil)
Sub Draw(p As Page)
  p.Draw
End Sub
)");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, "first\n");
  EXPECT_THAT(result.errors,
              AllOf(HasSubstr("script.xojo_script:4"), HasSubstr("in Sub Draw, line 4"), HasSubstr("line 2")));
}

TEST_F(Commands, AccountPrintsABalancedLedger) {
  WriteFile(folder_ / "script.xojo_script", "Dim document As New PDFDocument\nDim p As Page = document.AddPage\n");
  const ProcessResult result = Run({"run", "--account", "script.xojo_script"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, AllOf(HasSubstr("references to objects"), HasSubstr("The ledger balances")));
}

TEST_F(Commands, DescribeShowsEveryClass) {
  const ProcessResult result = Run({"describe"});
  EXPECT_EQ(result.exitStatus, 0);
  for (const char *name : {"PDFDocument", "Page", "Font", "Image", "Annotation", "TextAnnotation", "URLAnnotation",
                           "LinkAnnotation", "ExtendedGraphicsState", "Outline", "Destination"}) {
    EXPECT_THAT(result.output, HasSubstr(name));
  }
  EXPECT_THAT(result.output, HasSubstr("SetSize(size as Page.PageSizeEnum,direction as Page.PageDirectionEnum)"));
}

TEST_F(Commands, PluginThatIsMissingOrNoneEndsWithStatus1AndItsName) {
  for (const char *file : {"missing.so", "script.txt"}) {
    WriteFile(folder_ / "script.txt", "no library");
    const ProcessResult result = Run({"--plugin", file, "describe"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr(file));
  }
}

TEST_F(Commands, OutputThatCantBeWrittenIsAFailure) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "This system has no device that is always full.";
  WriteFile(folder_ / "script.xojo_script", "Print \"lost\"\n");
  const std::string script = (folder_ / "script.xojo_script").string();
  for (const char *command : {"\"$0\" describe > /dev/full", "\"$0\" run \"$1\" > /dev/full"}) {
    const ProcessResult result = RunProcess({"sh", "-c", command, QUILLBAR_PROGRAM, script});
    EXPECT_EQ(result.exitStatus, 1) << command;
    EXPECT_THAT(result.errors, HasSubstr("can't be written")) << command;
  }
}

}  // namespace
}  // namespace quillbar::test
