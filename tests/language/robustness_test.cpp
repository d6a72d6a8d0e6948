// SPDX-License-Identifier: MIT
#include <random>

#include "host/runtime/interruption.h"
#include "tests/host/test_plugins.h"
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using RobustnessTest = ProbeScriptTest;

const std::string &Sample() {
  static const std::string text =
      R"(Enum Kind
One
Two = 5
End Enum
Const kMost = 3
Dim names() As String = Array("a", "b")
Dim p As New Probe(2)
For i As Integer = 0 To kMost
If i Mod 2 = 0 And Not (i = 2) Then
names.Add(Str(i) + Mid("hello", i + 1, 2))
Else
Continue For
End If
Next
Select Case names.Count
Case 1 To 3, Is > 9
p.Number = 4
Case Else
Print(Total(1, 2.5))
End Select
Function Total(a As Integer, ByVal b As Double = 1) As Double
Try
Return a + b ^ 2
Catch e As RuntimeException
Return -1
End Try
End Function
)";
  return text;
}

TEST_F(RobustnessTest, ATruncatedScriptNeverCrashes) {
  for (std::size_t length = 0; length < Sample().size(); ++length) Run(Sample().substr(0, length));
}

TEST_F(RobustnessTest, AMutatedScriptNeverCrashesOrHangs) {
  // The sample has no loops that mutation could make endless; this generator always starts the same.
  std::mt19937 random(20240229);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random()) % bound; };
  for (int round = 0; round < 1500; ++round) {
    std::string text = Sample();
    for (std::size_t edits = 1 + below(4); edits > 0; --edits) {
      const std::size_t at = below(text.size());
      switch (below(4)) {
        case 0:
          text.erase(at, 1 + below(6));
          break;
        case 1:
          text.insert(at, 1, static_cast<char>(below(256)));
          break;
        case 2:
          text.insert(at, Sample().substr(below(Sample().size()), below(20)));
          break;
        default:
          text[at] = "()\"'.,=+-*/\\^&#_:\n0aZ"[below(22)];
          break;
      }
    }
    const ScriptRun run = Run(text);
    ASSERT_EQ(run.status == 0, run.errors.empty()) << text << run.errors;
  }
}

TEST_F(RobustnessTest, InterruptionEndsAScriptBetweenStatementsAndCantBeCaught) {
  int asked = 0;
  host::HostOptions options;
  options.usesFile = [&](const std::filesystem::path &) {
    if (++asked == 100) host::Interruption::Request(2);
  };
  StartHost({TestPlugin("probe")}, options);
  for (const char *endless :
       {"While Not f.Exists\nWend", "Do\nIf f.Exists Then n = 1\nLoop",
        "For i As Integer = 1 To 2 Step 0 + Zero\nIf f.Exists Then n = 1\nNext", "Call Deep(0)", "Deeper"}) {
    const std::string text =
        std::string("Dim f As New FolderItem(\"missing\")\nDim n As Integer\nDim Zero As Integer\n") +
        "Print \"begun\"\nTry\n" + endless +
        "\nCatch e As RuntimeException\nPrint e.Message\nFinally\nPrint \"finally\"\nEnd Try\n" +
        "Function Deep(n As Integer) As Integer\nIf f.Exists Then Return 1\n" +
        "If n < 60 Then Return Deep(n + 1) + Deep(n + 1)\nReturn 1\nEnd Function\n" +
        "Sub Deeper()\nEvenDeeper\nEnd Sub\nSub EvenDeeper()\nWhile Not f.Exists\nWend\nEnd Sub\n";
    asked = 0;
    const ScriptRun run = Run(text);
    host::Interruption::Clear();
    EXPECT_EQ(asked, 100) << endless;
    EXPECT_EQ(run.status, 130) << endless << run.errors;
    EXPECT_EQ(run.output, "begun\n") << endless;
    EXPECT_EQ(run.errors, "") << endless;
  }
}

TEST_F(RobustnessTest, LongExpressionsRunAndLongerOnesAreRefused) {
  std::string text = "Dim n As Integer = 1\nPrint(n";
  for (int i = 0; i < 999; ++i) text += "+n";
  EXPECT_EQ(Output(text + ")"), "1000\n");
}

TEST_F(RobustnessTest, FilesAndCountsBeyondTheirLimitsAreRefused) {
  EXPECT_EQ(FirstError("'" + std::string(16 << 20, 'x')),
            "1:1: error: the script has 16777217 bytes; at most 16777216 are allowed");
  EXPECT_EQ(FirstError("Dim d As New Dictionary\nd.BinaryCount = 16777217"),
            "2:1: OutOfBoundsException: a dictionary has 0 to 16777216 buckets");
  // 500 variables in each of 2,098 calls.
  std::string text = "Many\nSub Many()\nDim a0";
  for (int i = 1; i < 500; ++i) text += ", a" + std::to_string(i);
  const std::string error = FirstError(text + " As Integer\nMany\nEnd Sub");
  EXPECT_TRUE(error.starts_with("4:1: StackOverflowException: calls are nested too deeply (20")) << error;
  EXPECT_TRUE(error.ends_with(" calls, and memory for them has ended)")) << error;
}

TEST_F(RobustnessTest, DeeplyNestedBlocksRun) {
  std::string text;
  for (int i = 0; i < 190; ++i) text += "If True Then\n";
  text += "Print(1)\n";
  for (int i = 0; i < 190; ++i) text += "End If\n";
  EXPECT_EQ(Output(text), "1\n");
}

}  // namespace
}  // namespace quillbar::language::testing
