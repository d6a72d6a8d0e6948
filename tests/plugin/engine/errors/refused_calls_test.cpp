// SPDX-License-Identifier: MIT
// Every call that the library refuses is refused: it returns its status, reaches the handler once, and writes
// and changes nothing; the calls that a page allows are no failures.
#include <gmock/gmock.h>
#include <hpdf.h>
#include <hpdf_conf.h>
#include <hpdf_objects.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <limits>
#include <memory>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/images/image.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A page in each of the library's graphics modes.
enum class Mode { kDescription, kPath, kText, kClipping };

constexpr Mode kModes[] = {Mode::kDescription, Mode::kPath, Mode::kText, Mode::kClipping};

void Enter(HPDF_Page page, Mode mode) {
  switch (mode) {
    case Mode::kDescription:
      break;
    case Mode::kPath:
      Call<HPDF_Page_MoveTo>(page, 1.0F, 1.0F);
      break;
    case Mode::kText:
      Call<HPDF_Page_BeginText>(page);
      break;
    case Mode::kClipping:
      Call<HPDF_Page_MoveTo>(page, 1.0F, 1.0F);
      Call<HPDF_Page_Clip>(page);
      break;
  }
}

struct PageCall {
  const char *name;
  std::vector<Mode> allowed;
  std::function<HPDF_STATUS(HPDF_Page)> call;
};

const std::vector<Mode> kAnywhereInText = {Mode::kDescription, Mode::kText};
const std::vector<Mode> kStartsPath = {Mode::kDescription, Mode::kPath};
const std::vector<Mode> kInPath = {Mode::kPath};
const std::vector<Mode> kEndsPath = {Mode::kPath, Mode::kClipping};
const std::vector<Mode> kDescription = {Mode::kDescription};
const std::vector<Mode> kInText = {Mode::kText};

template <auto Function, typename... Arguments>
PageCall On(const char *name, const std::vector<Mode> &allowed, Arguments... arguments) {
  return {name, allowed, [=](HPDF_Page page) { return Call<Function>(page, arguments...); }};
}

const HPDF_UINT16 kDash[] = {3, 2};

const std::vector<PageCall> kCalls = {
    On<HPDF_Page_Rectangle>("Rectangle", kStartsPath, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_Ellipse>("Ellipse", kStartsPath, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_Arc>("Arc", kStartsPath, 1.0F, 2.0F, 3.0F, 0.0F, 90.0F),
    On<HPDF_Page_MoveTo>("MoveTo", kStartsPath, 1.0F, 2.0F),
    On<HPDF_Page_LineTo>("LineTo", kInPath, 1.0F, 2.0F),
    On<HPDF_Page_CurveTo>("CurveTo", kInPath, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F),
    On<HPDF_Page_CurveTo2>("CurveTo2", kInPath, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_CurveTo3>("CurveTo3", kInPath, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_Stroke>("Stroke", kEndsPath),
    On<HPDF_Page_Fill>("Fill", kEndsPath),
    On<HPDF_Page_FillStroke>("FillStroke", kEndsPath),
    On<HPDF_Page_EndPath>("EndPath", kEndsPath),
    On<HPDF_Page_Clip>("Clip", kInPath),
    On<HPDF_Page_SetRGBFill>("SetRGBFill", kAnywhereInText, 0.5F, 0.25F, 1.0F),
    On<HPDF_Page_SetRGBStroke>("SetRGBStroke", kAnywhereInText, 0.5F, 0.25F, 1.0F),
    On<HPDF_Page_SetCMYKFill>("SetCMYKFill", kAnywhereInText, 0.5F, 0.25F, 1.0F, 0.0F),
    On<HPDF_Page_SetCMYKStroke>("SetCMYKStroke", kAnywhereInText, 0.5F, 0.25F, 1.0F, 0.0F),
    On<HPDF_Page_SetLineWidth>("SetLineWidth", kAnywhereInText, 2.5F),
    On<HPDF_Page_SetLineCap>("SetLineCap", kAnywhereInText, HPDF_ROUND_END),
    On<HPDF_Page_SetLineJoin>("SetLineJoin", kAnywhereInText, HPDF_BEVEL_JOIN),
    On<HPDF_Page_SetDash>("SetDash", kAnywhereInText, kDash, 2U, 1U),
    On<HPDF_Page_Concat>("Concat", kDescription, 1.0F, 0.0F, 0.0F, 1.0F, 10.0F, 20.0F),
    On<HPDF_Page_GSave>("GSave", kDescription),
    On<HPDF_Page_BeginText>("BeginText", kDescription),
    On<HPDF_Page_EndText>("EndText", kInText),
    On<HPDF_Page_MoveTextPos>("MoveTextPos", kInText, 1.0F, 2.0F),
    On<HPDF_Page_MoveToNextLine>("MoveToNextLine", kInText),
    On<HPDF_Page_SetTextMatrix>("SetTextMatrix", kInText, 1.0F, 0.0F, 0.0F, 1.0F, 10.0F, 20.0F),
    On<HPDF_Page_SetTextLeading>("SetTextLeading", kAnywhereInText, 12.0F),
    On<HPDF_Page_SetTextRise>("SetTextRise", kAnywhereInText, 3.0F),
    On<HPDF_Page_SetWordSpace>("SetWordSpace", kAnywhereInText, 1.0F),
    On<HPDF_Page_SetTextRenderingMode>("SetTextRenderingMode", kAnywhereInText, HPDF_STROKE),
};

class RefusedCalls : public testing::Test {
 protected:
  // What a call may change on a page.
  struct State {
    std::string content;
    HPDF_UINT16 mode;
    std::string graphics;
    bool operator==(const State &) const = default;
  };

  State StateOf(HPDF_Page page) {
    auto *attributes = static_cast<HPDF_PageAttr>(page->attr);
    return {ContentOf(page), attributes->gmode,
            std::string(reinterpret_cast<const char *>(attributes->gstate), sizeof *attributes->gstate)};
  }

  void ExpectRefused(HPDF_Page page, HPDF_STATUS code, const std::function<HPDF_STATUS()> &call,
                     const std::string &name) {
    const State before = StateOf(page);
    EXPECT_EQ(call(), code) << name;
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(code)) << name;
    EXPECT_EQ(StateOf(page), before) << name;
    EXPECT_EQ(document_.document->error.error_no, HPDF_STATUS{HPDF_OK}) << name;
  }

  LibraryDocument document_;
};

TEST_F(RefusedCalls, InEveryModeThatDoesNotAllowThem) {
  for (const PageCall &call : kCalls) {
    for (const Mode mode : kModes) {
      HPDF_Page page = Call<engine::AddPage>(document_.document);
      Enter(page, mode);
      const std::string name = std::string(call.name) + " in mode " + std::to_string(static_cast<int>(mode));
      if (std::count(call.allowed.begin(), call.allowed.end(), mode) != 0) {
        const std::string before = ContentOf(page);
        EXPECT_EQ(call.call(page), HPDF_OK) << name;
        EXPECT_THAT(document_.TakeCodes(), IsEmpty()) << name;
        EXPECT_NE(ContentOf(page), before) << name;
      } else {
        ExpectRefused(
            page, HPDF_PAGE_INVALID_GMODE, [&] { return call.call(page); }, name);
      }
    }
  }
}

TEST_F(RefusedCalls, ForValuesThatTheLibraryDoesNotTake) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  HPDF_Font font = Call<engine::GetFont>(document_.document, "Helvetica", "WinAnsiEncoding");
  LibraryDocument other;
  HPDF_Font foreignFont = Call<engine::GetFont>(other.document, "Helvetica", "WinAnsiEncoding");
  const HPDF_UINT16 dash[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  const HPDF_UINT16 withZero[] = {3, 0};
  const auto refuse = [&](const char *name, HPDF_STATUS code, const std::function<HPDF_STATUS()> &call) {
    ExpectRefused(page, code, call, name);
  };

  refuse("width", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetLineWidth>(page, -1.0F); });
  refuse("cap", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetLineCap>(page, HPDF_LINECAP_EOF); });
  refuse("join", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetLineJoin>(page, HPDF_LINEJOIN_EOF); });
  refuse("red", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetRGBFill>(page, 1.5F, 0.0F, 0.0F); });
  refuse("blue", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetRGBStroke>(page, 0.0F, 0.0F, -0.5F); });
  refuse("cyan", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetCMYKFill>(page, 2.0F, 0.0F, 0.0F, 0.0F); });
  refuse("black", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetCMYKStroke>(page, 0.0F, 0.0F, 0.0F, -2.0F); });
  refuse("odd dash", HPDF_PAGE_INVALID_PARAM_COUNT, [&] { return Call<HPDF_Page_SetDash>(page, dash, 3U, 0U); });
  refuse("long dash", HPDF_PAGE_INVALID_PARAM_COUNT, [&] { return Call<HPDF_Page_SetDash>(page, dash, 10U, 0U); });
  refuse("endless dash", HPDF_PAGE_INVALID_PARAM_COUNT,
         [&] { return Call<HPDF_Page_SetDash>(page, dash, 0xFFFFFFFEU, 0U); });
  refuse("zero dash", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetDash>(page, withZero, 2U, 0U); });
  refuse("no dash", HPDF_INVALID_PARAMETER, [&] { return Call<HPDF_Page_SetDash>(page, nullptr, 2U, 0U); });
  refuse("phase of solid", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetDash>(page, nullptr, 0U, 1U); });
  refuse("phase", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetDash>(page, dash, 2U, 0x80000000U); });
  refuse("restore", HPDF_PAGE_CANNOT_RESTORE_GSTATE, [&] { return Call<HPDF_Page_GRestore>(page); });
  refuse("no font", HPDF_PAGE_INVALID_FONT, [&] { return Call<HPDF_Page_SetFontAndSize>(page, nullptr, 10.0F); });
  refuse("font size 0", HPDF_PAGE_INVALID_FONT_SIZE, [&] { return Call<HPDF_Page_SetFontAndSize>(page, font, 0.0F); });
  refuse("font size", HPDF_PAGE_INVALID_FONT_SIZE, [&] { return Call<HPDF_Page_SetFontAndSize>(page, font, 1e30F); });
  refuse("foreign font", HPDF_PAGE_INVALID_FONT,
         [&] { return Call<HPDF_Page_SetFontAndSize>(page, foreignFont, 10.0F); });
  refuse("word space", HPDF_PAGE_OUT_OF_RANGE, [&] { return Call<HPDF_Page_SetWordSpace>(page, 1e6F); });
  refuse("rendering mode", HPDF_PAGE_OUT_OF_RANGE,
         [&] { return Call<HPDF_Page_SetTextRenderingMode>(page, HPDF_RENDERING_MODE_EOF); });

  Call<HPDF_Page_BeginText>(page);
  refuse("text without a font", HPDF_PAGE_FONT_NOT_FOUND, [&] { return Call<HPDF_Page_ShowText>(page, "text"); });
  refuse("line without a font", HPDF_PAGE_FONT_NOT_FOUND,
         [&] { return Call<HPDF_Page_ShowTextNextLine>(page, "text"); });
  refuse("flat matrix", HPDF_INVALID_PARAMETER,
         [&] { return Call<HPDF_Page_SetTextMatrix>(page, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F, 1.0F); });
  Call<HPDF_Page_SetFontAndSize>(page, font, 10.0F);
  for (const std::size_t size : {65'536U, 10'000'000U}) {
    const std::string text(size, 'x');
    refuse("long text", HPDF_STRING_OUT_OF_RANGE, [&] { return Call<HPDF_Page_ShowText>(page, text.c_str()); });
    refuse("long line", HPDF_STRING_OUT_OF_RANGE, [&] { return Call<HPDF_Page_ShowTextNextLine>(page, text.c_str()); });
  }
  EXPECT_EQ(Call<HPDF_Page_ShowTextNextLine>(page, std::string(65'535, 'x').c_str()), HPDF_OK);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(RefusedCalls, ForPageSizes) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  ASSERT_EQ(Call<HPDF_Page_SetSize>(page, HPDF_PAGE_SIZE_COMM10, HPDF_PAGE_LANDSCAPE), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_GetWidth>(page), 684.0F);
  const auto refuse = [&](const char *name, HPDF_STATUS code, const std::function<HPDF_STATUS()> &call) {
    ExpectRefused(page, code, call, name);
    EXPECT_EQ(Call<HPDF_Page_GetWidth>(page), 684.0F) << name;
    EXPECT_EQ(Call<HPDF_Page_GetHeight>(page), 297.0F) << name;
  };
  refuse("size 12", HPDF_PAGE_INVALID_SIZE,
         [&] { return Call<HPDF_Page_SetSize>(page, HPDF_PAGE_SIZE_EOF, HPDF_PAGE_PORTRAIT); });
  refuse("size 13", HPDF_PAGE_INVALID_SIZE,
         [&] { return Call<HPDF_Page_SetSize>(page, std::bit_cast<HPDF_PageSizes>(13U), HPDF_PAGE_LANDSCAPE); });
  refuse("direction", HPDF_PAGE_INVALID_DIRECTION,
         [&] { return Call<HPDF_Page_SetSize>(page, HPDF_PAGE_SIZE_A4, std::bit_cast<HPDF_PageDirection>(2U)); });
  for (const float size : {-1.0F, 0.0F, 2.9F, 14'401.0F, std::numeric_limits<float>::max()}) {
    refuse("width", HPDF_PAGE_INVALID_SIZE, [&] { return Call<HPDF_Page_SetWidth>(page, size); });
    refuse("height", HPDF_PAGE_INVALID_SIZE, [&] { return Call<HPDF_Page_SetHeight>(page, size); });
  }
}

TEST_F(RefusedCalls, ForStatesSavedTooOften) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  for (int depth = 1; depth < HPDF_LIMIT_MAX_GSTATE; ++depth) ASSERT_EQ(Call<HPDF_Page_GSave>(page), HPDF_OK);
  for (int i = 0; i < 3; ++i) {
    ExpectRefused(
        page, HPDF_EXCEED_GSTATE_LIMIT, [&] { return Call<HPDF_Page_GSave>(page); }, "save");
  }
  for (int depth = 1; depth < HPDF_LIMIT_MAX_GSTATE; ++depth) ASSERT_EQ(Call<HPDF_Page_GRestore>(page), HPDF_OK);
}

TEST_F(RefusedCalls, ForNullPages) {
  for (const PageCall &call : kCalls) EXPECT_NE(call.call(nullptr), HPDF_OK) << call.name;
  EXPECT_NE(Call<HPDF_Page_SetSize>(nullptr, HPDF_PAGE_SIZE_A4, HPDF_PAGE_PORTRAIT), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_SetWidth>(nullptr, -1.0F), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_SetHeight>(nullptr, -1.0F), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_GRestore>(nullptr), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_SetFontAndSize>(nullptr, nullptr, 1.0F), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_ShowText>(nullptr, "text"), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_ShowTextNextLine>(nullptr, "text"), HPDF_OK);
  const std::string tooLong(70'000, 'x');
  EXPECT_NE(Call<HPDF_Page_ShowTextNextLine>(nullptr, tooLong.c_str()), HPDF_OK);
  const HPDF_UINT16 dash[9] = {};
  EXPECT_NE(Call<HPDF_Page_SetDash>(nullptr, dash, 9U, 0U), HPDF_OK);
}

TEST_F(RefusedCalls, ForObjectsOfAnotherKind) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  HPDF_Dict catalog = document_.document->catalog;
  for (const PageCall &call : kCalls) {
    EXPECT_EQ(call.call(catalog), HPDF_STATUS{HPDF_INVALID_PAGE}) << call.name;
    EXPECT_EQ(call.call(nullptr), HPDF_STATUS{HPDF_INVALID_OBJECT}) << call.name;
    document_.TakeCodes();
  }
  for (const HPDF_Dict image : {HPDF_Dict{nullptr}, catalog, HPDF_Dict{page}}) {
    ExpectRefused(
        page, HPDF_INVALID_OBJECT, [&] { return Call<HPDF_Page_DrawImage>(page, image, 0.0F, 0.0F, 1.0F, 1.0F); },
        "image");
  }
  for (const HPDF_Dict object : {HPDF_Dict{nullptr}, catalog, HPDF_Dict{page}}) {
    EXPECT_FALSE(HPDF_ExtGState_Validate(object));
    EXPECT_FALSE(HPDF_Font_Validate(object));
    EXPECT_EQ(HPDF_Font_GetEncodingName(object), nullptr);
    EXPECT_EQ(HPDF_Font_MeasureText(object, reinterpret_cast<const HPDF_BYTE *>("text"), 4, 100, 10, 0, 0, 0, nullptr),
              0U);
    EXPECT_EQ(engine::ImageWidth(object), 0U);
    EXPECT_EQ(HPDF_Annot_SetRGBColor(object, HPDF_RGBColor{1, 0, 0}), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
    EXPECT_EQ(HPDF_TextAnnot_SetOpened(object, HPDF_TRUE), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
  }
}

TEST_F(RefusedCalls, ForANoteThatSaysNotWhatItIs) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  HPDF_Annotation note = Call<HPDF_Page_CreateTextAnnot>(page, HPDF_Rect{0, 0, 1, 1}, "note", nullptr);
  ASSERT_EQ(Call<HPDF_TextAnnot_SetOpened>(note, HPDF_TRUE), HPDF_OK);
  ASSERT_EQ(HPDF_Dict_RemoveElement(note, "Subtype"), HPDF_OK);
  EXPECT_EQ(Call<HPDF_TextAnnot_SetOpened>(note, HPDF_TRUE), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_ANNOTATION));
}

// The largest numbers that a page takes are printed, and nothing overflows on the way.
TEST_F(RefusedCalls, NotForHugeCoordinates) {
  constexpr float kHuge = std::numeric_limits<float>::max();
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  EXPECT_EQ(Call<HPDF_Page_Concat>(page, kHuge, -kHuge, kHuge, -kHuge, kHuge, -kHuge), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_Concat>(page, kHuge, -kHuge, kHuge, -kHuge, kHuge, -kHuge), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_Ellipse>(page, -kHuge, -kHuge, kHuge, kHuge), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_Arc>(page, -kHuge, -kHuge, -kHuge, 1.0F, 359.0F), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_CurveTo>(page, -kHuge, kHuge, -kHuge, kHuge, -kHuge, kHuge), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_EndPath>(page), HPDF_OK);
  Call<HPDF_Page_BeginText>(page);
  HPDF_Font font = Call<engine::GetFont>(document_.document, "Courier", nullptr);
  EXPECT_EQ(Call<HPDF_Page_SetFontAndSize>(page, font, 600.0F), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_SetTextMatrix>(page, kHuge, -kHuge, kHuge, kHuge, kHuge, -kHuge), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_ShowText>(page, "text"), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_SetTextLeading>(page, -kHuge), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_ShowTextNextLine>(page, "text"), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_MoveTextPos>(page, kHuge, -kHuge), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_EndText>(page), HPDF_OK);
  EXPECT_EQ(ContentOf(page).find_first_of("NnfI"), ContentOf(page).find_first_of("n"));
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(RefusedCalls, ForFontsAndEncodingsThatDoNotExist) {
  const std::string longName(10'000'000, 'F');
  const char *const names[] = {"", "helvetica", "No Such Font", longName.c_str()};
  for (const char *name : names) {
    EXPECT_EQ(Call<engine::GetFont>(document_.document, name, "WinAnsiEncoding"), nullptr);
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_FONT_NAME));
    EXPECT_EQ(Call<engine::GetFont>(document_.document, "Times-Roman", name), nullptr);
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_ENCODING_NAME));
  }
  EXPECT_NE(Call<engine::GetFont>(document_.document, "Times-Roman", "WinAnsiEncoding"), nullptr);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(RefusedCalls, ForSizesOfAPageWithoutABox) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  ASSERT_EQ(HPDF_Dict_RemoveElement(page, "MediaBox"), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_GetWidth>(page), 0);
  EXPECT_EQ(Call<HPDF_Page_SetHeight>(page, 100.0F), HPDF_STATUS{HPDF_PAGE_CANNOT_FIND_OBJECT});
  EXPECT_EQ(Call<HPDF_Page_SetSize>(page, HPDF_PAGE_SIZE_A4, HPDF_PAGE_PORTRAIT),
            HPDF_STATUS{HPDF_PAGE_CANNOT_FIND_OBJECT});
  EXPECT_THAT(document_.TakeCodes(),
              ElementsAre(HPDF_PAGE_CANNOT_FIND_OBJECT, HPDF_PAGE_CANNOT_FIND_OBJECT, HPDF_PAGE_CANNOT_FIND_OBJECT));
  HPDF_Dict_Add(page, "MediaBox", HPDF_Array_New(document_.document->mmgr));
  EXPECT_EQ(Call<HPDF_Page_GetHeight>(page), 0);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_PAGE_CANNOT_FIND_OBJECT));
}

TEST_F(RefusedCalls, ForTextThatIsMeasuredWithoutAFont) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  EXPECT_EQ(Call<HPDF_Page_MeasureText>(page, "text", 100.0F, HPDF_TRUE, nullptr), 0U);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_PAGE_FONT_NOT_FOUND));
  EXPECT_EQ(Call<HPDF_Page_MeasureText>(page, "", 100.0F, HPDF_TRUE, nullptr), 0U);
  EXPECT_EQ(Call<HPDF_Page_MeasureText>(page, nullptr, 100.0F, HPDF_TRUE, nullptr), 0U);
  EXPECT_EQ(Call<HPDF_Page_MeasureText>(nullptr, "text", 100.0F, HPDF_TRUE, nullptr), 0U);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(RefusedCalls, NotForTextThatIsEmpty) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  Call<HPDF_Page_BeginText>(page);
  HPDF_Font font = Call<engine::GetFont>(document_.document, "Courier", nullptr);
  Call<HPDF_Page_SetFontAndSize>(page, font, 10.0F);
  const std::string before = ContentOf(page);
  for (const char *text : {static_cast<const char *>(nullptr), ""}) {
    EXPECT_EQ(Call<HPDF_Page_ShowText>(page, text), HPDF_OK);
    EXPECT_EQ(ContentOf(page), before);
  }
  for (const char *text : {static_cast<const char *>(nullptr), ""}) {
    EXPECT_EQ(Call<HPDF_Page_ShowTextNextLine>(page, text), HPDF_OK);
  }
  EXPECT_EQ(ContentOf(page), before + "T*\nT*\n") << "an empty line is a line";
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(RefusedCalls, ForSpaceBeyondItsBounds) {
  HPDF_Page page = Call<engine::AddPage>(document_.document);
  for (const float space : {static_cast<float>(HPDF_MIN_CHARSPACE) - 1, static_cast<float>(HPDF_MAX_CHARSPACE) + 1}) {
    EXPECT_EQ(Call<HPDF_Page_SetCharSpace>(page, space), HPDF_STATUS{HPDF_PAGE_OUT_OF_RANGE});
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_PAGE_OUT_OF_RANGE));
  }
  Call<HPDF_Page_BeginText>(page);
  for (const bool hasA : {true, false}) {
    // Matrices that leave text no area.
    EXPECT_EQ(Call<HPDF_Page_SetTextMatrix>(page, hasA ? 1.0F : 0.0F, 0.0F, 0.0F, hasA ? 0.0F : 1.0F, 0.0F, 0.0F),
              HPDF_STATUS{HPDF_INVALID_PARAMETER});
    EXPECT_EQ(Call<HPDF_Page_SetTextMatrix>(page, 0.0F, hasA ? 1.0F : 0.0F, hasA ? 0.0F : 1.0F, 0.0F, 0.0F, 0.0F),
              HPDF_STATUS{HPDF_INVALID_PARAMETER});
    document_.TakeCodes();
  }
  EXPECT_EQ(Call<HPDF_Page_SetTextMatrix>(page, 0.0F, 1.0F, -1.0F, 0.0F, 0.0F, 0.0F), HPDF_OK);
}

}  // namespace
}  // namespace quillbar
