// SPDX-License-Identifier: MIT
// Every drawing member in every graphics mode: whether it acts, is ignored in silence, or is refused with an
// error.
#include <functional>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::int64_t kPage = graphics_mode::kPageDescription;
constexpr std::int64_t kPath = graphics_mode::kPathObject;
constexpr std::int64_t kText = graphics_mode::kTextObject;
constexpr std::int64_t kClip = graphics_mode::kClippingPath;
constexpr std::int64_t kSame = 0;

// How a member treats the modes in which it doesn't act.
enum class Elsewhere { kIgnored, kRefused };

struct Member {
  const char *name;
  std::int64_t modes;  // in which it acts
  Elsewhere elsewhere;
  std::vector<std::string> operators;  // what it writes when it acts
  std::int64_t modeAfter;              // kSame: as before
  std::function<void(const ScriptObject &page, const ScriptObject &font)> call;
};

std::vector<Member> Members() {
  using Page = const ScriptObject &;
  using Font = const ScriptObject &;
  const auto colour = static_cast<Color>(0x123456);
  constexpr auto kIgnored = Elsewhere::kIgnored;
  constexpr auto kRefused = Elsewhere::kRefused;
  return {
      {"MoveTo", kPage | kPath, kIgnored, {"m"}, kPath, [](Page p, Font) { p.Call("MoveTo", 1, 2); }},
      {"LineTo", kPath, kIgnored, {"l"}, kSame, [](Page p, Font) { p.Call("LineTo", 1, 2); }},
      {"CurveTo", kPath, kIgnored, {"c"}, kSame, [](Page p, Font) { p.Call("CurveTo", 1, 2, 3, 4, 5, 6); }},
      {"CurveTo2", kPath, kIgnored, {"v"}, kSame, [](Page p, Font) { p.Call("CurveTo2", 1, 2, 3, 4); }},
      {"CurveTo3", kPath, kIgnored, {"y"}, kSame, [](Page p, Font) { p.Call("CurveTo3", 1, 2, 3, 4); }},
      {"Rectangle", kPage | kPath, kRefused, {"re"}, kPath, [](Page p, Font) { p.Call("Rectangle", 1, 2, 3, 4); }},
      {"Ellipse",
       kPage | kPath,
       kRefused,
       {"m", "c", "c", "c", "c"},
       kPath,
       [](Page p, Font) { p.Call("Ellipse", 9, 9, 3, 4); }},
      {"Arc", kPage, kRefused, {"m", "c"}, kPath, [](Page p, Font) { p.Call("Arc", 9, 9, 3, 0, 45); }},
      {"Draw", kPath | kClip, kRefused, {"S"}, kPage, [](Page p, Font) { p.Call("Draw"); }},
      {"Fill", kPath, kIgnored, {"f"}, kPage, [](Page p, Font) { p.Call("Fill"); }},
      {"FillAndDraw", kPath, kIgnored, {"B"}, kPage, [](Page p, Font) { p.Call("FillAndDraw"); }},
      {"EndPath", kPath | kClip, kRefused, {"n"}, kPage, [](Page p, Font) { p.Call("EndPath"); }},
      {"Clip", kPath, kRefused, {"W"}, kClip, [](Page p, Font) { p.Call("Clip"); }},

      {"SetRGBFill", kPage | kText, kIgnored, {"rg"}, kSame, [](Page p, Font) { p.Call("SetRGBFill", 0, 1, 0); }},
      {"SetRGBStroke", kPage | kText, kIgnored, {"RG"}, kSame, [](Page p, Font) { p.Call("SetRGBStroke", 0, 1, 0); }},
      {"SetCMYKFill", kPage | kText, kIgnored, {"k"}, kSame, [](Page p, Font) { p.Call("SetCMYKFill", 0, 1, 0, 1); }},
      {"SetCMYKStroke",
       kPage | kText,
       kIgnored,
       {"K"},
       kSame,
       [](Page p, Font) { p.Call("SetCMYKStroke", 0, 1, 0, 1); }},
      {"FillColor", kPage | kText, kIgnored, {"rg"}, kSame, [=](Page p, Font) { p.Set("FillColor", colour); }},
      {"StrokeColor", kPage | kText, kIgnored, {"RG"}, kSame, [=](Page p, Font) { p.Set("StrokeColor", colour); }},
      {"SetDashPattern",
       kPage | kText,
       kRefused,
       {"d"},
       kSame,
       [](Page p, Font) {
         host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, 1);
         dashes.Set(0, 3);
         p.Call("SetDashPattern", dashes, 0);
       }},
      {"ResetDashPattern", kPage | kText, kRefused, {"d"}, kSame, [](Page p, Font) { p.Call("ResetDashPattern"); }},
      {"LineWidth", kPage | kText, kRefused, {"w"}, kSame, [](Page p, Font) { p.Set("LineWidth", 2); }},
      {"LineCapType", kPage | kText, kRefused, {"J"}, kSame, [](Page p, Font) { p.Set("LineCapType", 1); }},
      {"LineJoinType", kPage | kText, kRefused, {"j"}, kSame, [](Page p, Font) { p.Set("LineJoinType", 1); }},
      {"ConcatMatrix", kPage, kRefused, {"cm"}, kSame, [](Page p, Font) { p.Call("ConcatMatrix", 1, 0, 0, 1, 2, 3); }},
      {"SaveState", kPage, kRefused, {"q"}, kSame, [](Page p, Font) { p.Call("SaveState"); }},
      {"RestoreState", kPage, kRefused, {"Q"}, kSame, [](Page p, Font) { p.Call("RestoreState"); }},

      {"BeginText", kPage, kIgnored, {"BT"}, kText, [](Page p, Font) { p.Call("BeginText"); }},
      {"EndText", kText, kIgnored, {"ET"}, kPage, [](Page p, Font) { p.Call("EndText"); }},
      {"SetFont", kPage | kText, kIgnored, {"Tf"}, kSame, [](Page p, Font f) { p.Call("SetFont", f, 9); }},
      {"MoveTextPosition", kText, kIgnored, {"Td"}, kSame, [](Page p, Font) { p.Call("MoveTextPosition", 1, 2); }},
      {"MoveTextPositionNextLine",
       kText,
       kIgnored,
       {"T*"},
       kSame,
       [](Page p, Font) { p.Call("MoveTextPositionNextLine"); }},
      {"ShowText", kText, kIgnored, {"Tj"}, kSame, [](Page p, Font) { p.Call("ShowText", "text"); }},
      {"ShowTextNextLine", kText, kIgnored, {"'"}, kSame, [](Page p, Font) { p.Call("ShowTextNextLine", "text"); }},
      {"SetTextMatrix",
       kText,
       kRefused,
       {"Tm"},
       kSame,
       [](Page p, Font) { p.Call("SetTextMatrix", 1, 0, 0, 1, 2, 3); }},
      {"SetTextRotation", kText, kRefused, {"Tm"}, kSame, [](Page p, Font) { p.Call("SetTextRotation", 30, 2, 3); }},
      {"TextLeading", kPage | kText, kRefused, {"TL"}, kSame, [](Page p, Font) { p.Set("TextLeading", 12); }},
      {"TextRise", kPage | kText, kRefused, {"Ts"}, kSame, [](Page p, Font) { p.Set("TextRise", 2); }},
      {"WordSpace", kPage | kText, kRefused, {"Tw"}, kSame, [](Page p, Font) { p.Set("WordSpace", 2); }},
      {"TextRenderingMode",
       kPage | kText,
       kRefused,
       {"Tr"},
       kSame,
       [](Page p, Font) { p.Set("TextRenderingMode", 1); }},
  };
}

// Appends what leads a page from its description into `mode`, and does it.
void Enter(std::int64_t mode, const ScriptObject &page, std::vector<std::string> &operators) {
  const auto note = [&](std::initializer_list<const char *> names) {
    operators.insert(operators.end(), names.begin(), names.end());
  };
  if (mode == kPath) {
    page.Call("MoveTo", 5, 5);
    note({"m"});
  } else if (mode == kText) {
    page.Call("BeginText");
    note({"BT"});
  } else if (mode == kClip) {
    page.Call("Rectangle", 5, 5, 9, 9);
    page.Call("Clip");
    note({"re", "W"});
  }
}

// Appends what leads back to the page's description, and does it.
void Leave(const ScriptObject &page, std::vector<std::string> &operators) {
  const std::int64_t mode = page.GetInteger("GraphicsMode");
  if (mode == kPath || mode == kClip) {
    page.Call("EndPath");
    operators.emplace_back("n");
  } else if (mode == kText) {
    page.Call("EndText");
    operators.emplace_back("ET");
  }
}

class GraphicsMode : public PluginTest {
 protected:
  // Calls the member on a page of its own in `mode` and returns the operators that the page must have.
  static std::vector<std::string> Try(const Document &document, const ScriptObject &font, const Member &member,
                                      std::int64_t mode) {
    SCOPED_TRACE(testing::Message() << member.name << " in mode " << mode);
    const ScriptObject page = document.AddPage();
    page.Call("SetFont", font, 10);
    page.Set("TextLeading", 14);
    page.Call("SaveState");
    std::vector<std::string> operators{"Tf", "TL", "q"};
    int depth = 1;
    Enter(mode, page, operators);
    EXPECT_EQ(page.GetInteger("GraphicsMode"), mode);
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
    document.Call("ClearError");

    member.call(page, font);
    const std::vector<Failure> failures = document.TakeFailures();
    if ((member.modes & mode) != 0) {
      EXPECT_THAT(failures, IsEmpty());
      EXPECT_EQ(page.GetInteger("GraphicsMode"), member.modeAfter == kSame ? mode : member.modeAfter);
      operators.insert(operators.end(), member.operators.begin(), member.operators.end());
      if (member.operators.front() == "q") ++depth;
      if (member.operators.front() == "Q") --depth;
    } else {
      EXPECT_EQ(page.GetInteger("GraphicsMode"), mode);
      if (member.elsewhere == Elsewhere::kRefused) {
        EXPECT_THAT(failures, ElementsAre(Failure{library_error::kInvalidGMode, 0}));
        EXPECT_EQ(document.LastFailure(), (Failure{library_error::kInvalidGMode, 0}));
      } else {
        EXPECT_THAT(failures, IsEmpty());
        EXPECT_EQ(document.LastFailure(), Failure{});
      }
    }

    // The next calls work.
    Leave(page, operators);
    for (; depth > 0; --depth) {
      page.Call("RestoreState");
      operators.emplace_back("Q");
    }
    page.Set("LineWidth", 7);
    operators.emplace_back("w");
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
    return operators;
  }
};

TEST_F(GraphicsMode, EveryMemberActsIsIgnoredOrIsRefusedAsItsGuardSays) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Helvetica");
  std::vector<std::vector<std::string>> expected;
  std::vector<std::string> names;
  for (const Member &member : Members()) {
    for (const std::int64_t mode : {kPage, kPath, kText, kClip}) {
      // Inside a path an arc is joined by a line instead of a new start.
      Member inMode = member;
      if (std::string_view(member.name) == "Arc" && mode == kPath) {
        inMode.modes |= kPath;
        inMode.operators = {"l", "c"};
      }
      expected.push_back(Try(document, font, inMode, mode));
      names.push_back(std::string(member.name) + " in mode " + std::to_string(mode));
    }
  }
  const PdfFile file(document.Saved());
  ASSERT_EQ(file.PageCount(), expected.size());
  for (std::size_t page = 0; page < expected.size(); ++page) {
    std::vector<std::string> written;
    for (const ContentOperator &operation : file.Operators(page)) written.push_back(operation.name);
    EXPECT_THAT(written, ElementsAreArray(expected[page])) << names[page];
  }
}

TEST_F(GraphicsMode, IsReadOnlyAndSixteenBitsWide) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_TRUE(host().Class("Page").FindProperty("GraphicsMode")->IsReadOnly());
  EXPECT_THROW(page.Set("GraphicsMode", 2), host::HostError);
  EXPECT_EQ(page.Get("GraphicsMode"), host().Constant("Page.GraphicsModeEnum.PAGE_DESCRIPTION"));
  page.Call("BeginText");
  EXPECT_EQ(page.Get("GraphicsMode"), host().Constant("Page.GraphicsModeEnum.TEXT_OBJECT"));
  page.Call("EndText");
  page.Call("MoveTo", 1, 1);
  EXPECT_EQ(page.Get("GraphicsMode"), host().Constant("Page.GraphicsModeEnum.PATH_OBJECT"));
  page.Call("Clip");
  EXPECT_EQ(page.Get("GraphicsMode"), host().Constant("Page.GraphicsModeEnum.CLIPPING_PATH"));
  EXPECT_EQ(page.GetInteger("GraphicsMode") >> 16, 0);
}

}  // namespace
}  // namespace quillbar::test
