// SPDX-License-Identifier: MIT
// In which modes of a page its members work, as the reference says, and what they do in others.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/docs/reference_pages.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

/// Something that a script does with each member of a page `p`.
struct Use {
  const char *member, *statement;
};

constexpr Use kUses[] = {
    {"SetSize", "p.SetSize(Page.PageSizeEnum.A5, Page.PageDirectionEnum.PORTRAIT)"},
    {"Width", "p.Width = 400"},
    {"Height", "p.Height = 400"},
    {"TransformCoordinates", "p.TransformCoordinates = True"},
    {"Rectangle", "p.Rectangle(1, 2, 3, 4)"},
    {"Ellipse", "p.Ellipse(10, 20, 3, 4)"},
    {"Arc", "p.Arc(10, 20, 5, 0, 90)"},
    {"MoveTo", "p.MoveTo(1, 2)"},
    {"LineTo", "p.LineTo(1, 2)"},
    {"CurveTo", "p.CurveTo(1, 2, 3, 4, 5, 6)"},
    {"CurveTo2", "p.CurveTo2(3, 4, 5, 6)"},
    {"CurveTo3", "p.CurveTo3(1, 2, 5, 6)"},
    {"Draw", "p.Draw"},
    {"Fill", "p.Fill"},
    {"FillAndDraw", "p.FillAndDraw"},
    {"EndPath", "p.EndPath"},
    {"Clip", "p.Clip"},
    {"FillColor", "p.FillColor = &cFF0000"},
    {"StrokeColor", "p.StrokeColor = &cFF0000"},
    {"SetRGBFill", "p.SetRGBFill(1, 0, 0)"},
    {"SetRGBStroke", "p.SetRGBStroke(1, 0, 0)"},
    {"SetCMYKFill", "p.SetCMYKFill(1, 0, 0, 0)"},
    {"SetCMYKStroke", "p.SetCMYKStroke(1, 0, 0, 0)"},
    {"LineWidth", "p.LineWidth = 2"},
    {"LineCapType", "p.LineCapType = Page.LineCapTypeEnum.ROUND_END"},
    {"LineJoinType", "p.LineJoinType = Page.LineJoinTypeEnum.ROUND"},
    {"SetDashPattern", "p.SetDashPattern(Array(3), 0)"},
    {"ResetDashPattern", "p.ResetDashPattern"},
    {"ConcatMatrix", "p.ConcatMatrix(1, 0, 0, 1, 5, 5)"},
    {"SaveState", "p.SaveState"},
    {"RestoreState", "p.RestoreState"},
    {"SetExtendedState", "p.SetExtendedState(glass)"},
    {"GraphicsMode", "Call CType(p.GraphicsMode, Integer)"},
    {"BeginText", "p.BeginText"},
    {"EndText", "p.EndText"},
    {"SetFont", "p.SetFont(body, 11)"},
    {"MoveTextPosition", "p.MoveTextPosition(1, 2)"},
    {"MoveTextPositionNextLine", "p.MoveTextPositionNextLine"},
    {"GetCurrentTextPosition", "p.GetCurrentTextPosition(x, y)"},
    {"ShowText", "p.ShowText(\"x\")"},
    {"ShowTextNextLine", "p.ShowTextNextLine(\"x\")"},
    {"MeasureText", "Call p.MeasureText(\"a b\", 100, True)"},
    {"TextRect", "p.TextRect(\"a b\", 0, 100, 100, 0, Page.TextAlignmentEnum.LEFT, count)"},
    {"TextRectMeasure", "Call p.TextRectMeasure(\"a b\", 100, count)"},
    {"TextRectBaseline", "p.TextRectBaseline(\"a b\", 0, 80, 100, 50, Page.TextAlignmentEnum.LEFT, count)"},
    {"SuggestedTextLeading", "Call p.SuggestedTextLeading"},
    {"TextLeading", "p.TextLeading = 12"},
    {"TextRise", "p.TextRise = 2"},
    {"WordSpace", "p.WordSpace = 1"},
    {"TextRenderingMode", "p.TextRenderingMode = Page.TextRenderingModeEnum.STROKE"},
    {"SetTextMatrix", "p.SetTextMatrix(1, 0, 0, 1, 5, 5)"},
    {"SetTextRotation", "p.SetTextRotation(30, 5, 5)"},
    {"DrawImage", "p.DrawImage(picture, 0, 0, 10, 10)"},
    {"CreateTextAnnotation", "Call p.CreateTextAnnotation(\"a\", 0, 10, 10, 0)"},
    {"CreateURLAnnotation", "Call p.CreateURLAnnotation(\"a\", 0, 10, 10, 0)"},
    {"CreateLinkAnnotation", "Call p.CreateLinkAnnotation(p.CreateDestination, 0, 10, 10, 0)"},
    {"CreateDestination", "Call p.CreateDestination"},
};

struct Mode {
  const char *name, *opening;
};

constexpr Mode kModes[] = {{"page description", ""},
                           {"path", "p.MoveTo(5, 5)\n"},
                           {"text", "p.BeginText\n"},
                           {"clipping path", "p.Rectangle(0, 0, 100, 100)\np.Clip\n"}};

/// What happens in a mode, "works", "4177" or "nothing", by what the reference says of the member.
std::string Said(const std::string &entry, const std::string &mode) {
  const std::size_t begin = entry.find("**Modes:** ");
  if (begin == std::string::npos) return "no modes";
  const std::string modes = entry.substr(begin + 11, entry.find(" - **", begin) - begin - 11);
  const std::size_t semicolon = modes.find(';');
  std::string listed = ", " + modes.substr(0, semicolon) + ",";
  if (const std::size_t set = listed.find("to set: "); set != std::string::npos) listed.erase(set, 8);
  if (modes.starts_with("any") || listed.find(", " + mode + ",") != std::string::npos) return "works";
  return modes.find("4177", semicolon) != std::string::npos ? "4177" : "nothing";
}

TEST(Modes, AreThoseOfTheReference) {
  std::string script =
      "Dim error As UInt32\nDim count As Integer\nDim x As Single\nDim y As Single\nDim document As PDFDocument\n"
      "Dim p As Page\nDim body As Font\nDim glass As ExtendedGraphicsState\nDim picture As Image\n"
      "Dim raster As New PixelRaster(2, 2, 3)\nDim before As Integer\n";
  for (const Use &use : kUses) {
    for (const Mode &mode : kModes) {
      script += std::string("Prepare\n") + mode.opening + "before = LenB(document.SaveToString)\n" + use.statement +
                "\nPrint If(document.LastErrorNumber > 0, Str(document.LastErrorNumber), "
                "If(LenB(document.SaveToString) = before, \"nothing\", \"works\"))\n";
    }
  }
  script +=
      "Sub Prepare()\ndocument = New PDFDocument\np = document.AddPage\nbody = document.GetFont(\"Helvetica\", "
      "Font.FontEncodingEnum.WINDOWS_ANSI)\np.SetFont(body, 10)\np.SaveState\n"
      "glass = document.CreateExtendedGraphicsState\npicture = document.LoadImage(raster)\nEnd Sub\n";
  const TemporaryFolder folder;
  WriteFile(folder / "modes.xojo_script", script);
  const ProcessResult result =
      RunProcess({std::filesystem::path(QUILLBAR_PROGRAM), "run", folder / "modes.xojo_script"});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  std::istringstream lines(result.output);
  for (const Use &use : kUses) {
    const std::string entry = ReferenceEntry(std::string("Page.") + use.member);
    for (const Mode &mode : kModes) {
      std::string happened;
      std::getline(lines, happened);
      const std::string said = Said(entry, mode.name);
      // What only reads or changes the next call leaves no trace in the file.
      const bool agrees = happened == said || (said == "works" && happened == "nothing");
      EXPECT_TRUE(agrees) << use.member << " in the mode " << mode.name << ": the reference says " << said
                          << ", the plugin " << happened;
    }
  }
}

}  // namespace
}  // namespace quillbar::test
