// SPDX-License-Identifier: MIT
// Memory that runs out at every point of a document's life: once, and then there is some again; or for good.
// What was asked for fails or not, nothing crashes, and the document can be freed. Where programs run slowly, a run
// of the suite takes every third point; QUILLBAR_EVERY_SHORTAGE=1 takes all.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <hpdf.h>

#include "plugin/engine/document/document.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "plugin/guard/library_call.h"
#include "tests/plugin/engine/driver/small_image.h"
#include "tests/support/real_fonts.h"
#include "tests/support/sample.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

constexpr const char *kFontFile = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Allocations left until one fails; negative: none will.
long leftUntilFailure = -1;
bool failsForGood = false;
bool hasFailed = false;

void *Allocate(HPDF_UINT size) {
  if (leftUntilFailure == 0) {
    hasFailed = true;
    if (!failsForGood) leftUntilFailure = -1;
    return nullptr;
  }
  if (leftUntilFailure > 0) --leftUntilFailure;
  return std::malloc(size);
}

const char *Utf16(const std::u16string &path) { return reinterpret_cast<const char *>(path.c_str()); }

// Text in a base font, an encoding of its own, a TrueType font, and fonts of East Asia.
void AddText(HPDF_Doc document, HPDF_Page page) {
  Call<HPDF_UseUTFEncodings>(document);
  Call<HPDF_UseJPFonts>(document);
  Call<HPDF_UseJPEncodings>(document);
  const std::u16string path = std::filesystem::path(kFontFile).u16string();
  const char *name = Call<engine::LoadTrueTypeFont>(document, Utf16(path));
  const HPDF_Font fonts[] = {Call<engine::GetFont>(document, "Helvetica", "WinAnsiEncoding"),
                             Call<engine::GetFont>(document, "Times-Roman", "ISO8859-2"),
                             Call<engine::GetFont>(document, "MS-Mincho", "90msp-RKSJ-H"),
                             name == nullptr ? nullptr : Call<engine::GetFont>(document, name, "UTF-8"),
                             name == nullptr ? nullptr : Call<engine::GetFont>(document, name, "CP1250")};
  Call<HPDF_Page_BeginText>(page);
  for (const HPDF_Font font : fonts) {
    if (font == nullptr) continue;
    Call<HPDF_Page_SetFontAndSize>(page, font, 12);
    Call<HPDF_Page_ShowText>(page, "text");
    Call<HPDF_Page_ShowTextNextLine>(page, "more");
  }
  Call<HPDF_Page_EndText>(page);
}

// Text in a font from files, with characters whose names alone don't tell what they are.
void AddTextOfFile(HPDF_Doc document, HPDF_Page page, const char *name, const char *encoding) {
  const HPDF_Font font = name == nullptr ? nullptr : Call<engine::GetFont>(document, name, encoding);
  if (font == nullptr) return;
  Call<HPDF_Page_BeginText>(page);
  Call<HPDF_Page_SetFontAndSize>(page, font, 12);
  Call<HPDF_Page_ShowText>(page, "text \xB5 \xAD");
  Call<HPDF_Page_EndText>(page);
  Call<engine::SaveToMemory>(document);
}

const char *LoadTrueType(HPDF_Doc document, const char *file) {
  const std::u16string path = std::filesystem::path(file).u16string();
  return Call<engine::LoadTrueTypeFont>(document, Utf16(path));
}

void AddGraphics(HPDF_Doc document, HPDF_Page page) {
  const HPDF_Image image = SmallImage(document);
  const HPDF_Image mask = SmallImage(document);
  if (image != nullptr && mask != nullptr) Call<HPDF_Dict_Add>(image, "SMask", mask);
  if (image != nullptr) Call<HPDF_Page_DrawImage>(page, image, 0, 0, 1, 1);
  const HPDF_ExtGState state = Call<HPDF_CreateExtGState>(document);
  if (state != nullptr) {
    Call<HPDF_ExtGState_SetAlphaFill>(state, 0.5F);
    Call<HPDF_ExtGState_SetBlendMode>(state, HPDF_BM_MULTIPLY);
    Call<HPDF_Page_SetExtGState>(page, state);
  }
  Call<HPDF_Page_GSave>(page);
  Call<HPDF_Page_Rectangle>(page, 1, 2, 3, 4);
  Call<HPDF_Page_Fill>(page);
  Call<HPDF_Page_GRestore>(page);
}

void AddNavigation(HPDF_Doc document, HPDF_Page page) {
  const HPDF_Destination destination = Call<HPDF_Page_CreateDestination>(page);
  if (destination != nullptr) {
    Call<HPDF_Destination_SetXYZ>(destination, 0, 800, 1);
    Call<HPDF_Page_CreateLinkAnnot>(page, HPDF_Rect{0, 0, 1, 1}, destination);
  }
  Call<HPDF_Page_CreateURILinkAnnot>(page, HPDF_Rect{0, 0, 1, 1}, "https://example.com/");
  if (const HPDF_Annotation note = Call<HPDF_Page_CreateTextAnnot>(page, HPDF_Rect{0, 0, 1, 1}, "note", nullptr)) {
    Call<HPDF_TextAnnot_SetIcon>(note, HPDF_ANNOT_ICON_HELP);
    Call<HPDF_TextAnnot_SetOpened>(note, HPDF_TRUE);
    Call<HPDF_Annot_SetRGBColor>(note, HPDF_RGBColor{1, 0.5F, 0});
  }
  const HPDF_Outline outline = Call<HPDF_CreateOutline>(document, nullptr, "title", nullptr);
  if (outline != nullptr && destination != nullptr) Call<HPDF_Outline_SetDestination>(outline, destination);
  if (outline != nullptr) Call<HPDF_CreateOutline>(document, outline, "below", nullptr);
}

void Save(HPDF_Doc document) {
  Call<HPDF_SetInfoAttr>(document, HPDF_INFO_TITLE, "title");
  Call<HPDF_SetPassword>(document, "owner", "user");
  Call<engine::SaveToMemory>(document);
  Call<engine::SaveToMemory>(document);
}

long StepBetweenPoints() { return test::TakesSamples() && std::getenv("QUILLBAR_EVERY_SHORTAGE") == nullptr ? 5 : 1; }

class AllocationFailure : public testing::TestWithParam<bool> {
 protected:
  // Makes and frees a document for each allocation of `use`, which fails.
  static void FailEachIn(const std::function<void(HPDF_Doc, HPDF_Page)> &use) {
    failsForGood = GetParam();
    const long step = StepBetweenPoints();
    long limit = 0;
    do {
      ASSERT_LT(limit, 100000) << "the document is never finished";
      leftUntilFailure = -1;
      hasFailed = false;
      HPDF_Doc document = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, Allocate, std::free, 0, nullptr);
      ASSERT_NE(document, nullptr);
      const HPDF_Page page = Call<engine::AddPage>(document);
      leftUntilFailure = limit;
      limit += step;
      use(document, page);
      leftUntilFailure = -1;
      HPDF_Free(document);
    } while (hasFailed);
    EXPECT_GT(limit, 10);
  }
};

TEST_P(AllocationFailure, WhileADocumentIsMade) {
  failsForGood = GetParam();
  for (long limit = 0;; ++limit) {
    leftUntilFailure = limit;
    hasFailed = false;
    HPDF_Doc document = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, Allocate, std::free, 0, nullptr);
    const HPDF_Page page = document == nullptr ? nullptr : Call<engine::AddPage>(document);
    leftUntilFailure = -1;
    if (document != nullptr) HPDF_Free(document);
    if (hasFailed) continue;
    EXPECT_NE(page, nullptr);
    EXPECT_GT(limit, 10);
    return;
  }
}

TEST_P(AllocationFailure, WhileTextIsShown) {
  ASSERT_TRUE(std::filesystem::exists(kFontFile));
  FailEachIn(&AddText);
}

TEST_P(AllocationFailure, WhileAType1FontIsEmbedded) {
  QUILLBAR_NEEDS_FONT(test::kRomanMetrics, "fonts-urw-base35");
  FailEachIn([](HPDF_Doc document, HPDF_Page page) {
    const std::u16string metrics = std::filesystem::path(test::kRomanMetrics).u16string();
    const std::u16string program = std::filesystem::path(test::kRomanProgram).u16string();
    const char *name = Call<engine::LoadType1Font>(document, Utf16(metrics), Utf16(program));
    AddTextOfFile(document, page, name, "ISO8859-7");
  });
}

TEST_P(AllocationFailure, WhileATrueTypeFontIsEmbeddedForOneByteCodes) {
  ASSERT_TRUE(std::filesystem::exists(kFontFile));
  FailEachIn([](HPDF_Doc document, HPDF_Page page) {
    AddTextOfFile(document, page, LoadTrueType(document, kFontFile), "CP1250");
  });
}

TEST_P(AllocationFailure, WhileAFontWithCffOutlinesIsEmbedded) {
  QUILLBAR_NEEDS_FONT(test::kEbGaramond, "fonts-ebgaramond");
  FailEachIn([](HPDF_Doc document, HPDF_Page page) {
    Call<HPDF_UseUTFEncodings>(document);
    AddTextOfFile(document, page, LoadTrueType(document, test::kEbGaramond), "UTF-8");
  });
}

// As many states as there are bytes in the first blocks of a page's content.
TEST_P(AllocationFailure, WhileStatesAreSavedAndRestored) {
  FailEachIn([](HPDF_Doc, HPDF_Page page) {
    unsigned saved = 0;
    for (int i = 0; i < 600; ++i) {
      if (Call<HPDF_Page_GSave>(page) == HPDF_OK) {
        EXPECT_EQ(Call<HPDF_Page_GetGStateDepth>(page), 2U);
        ++saved;
        if (Call<HPDF_Page_GRestore>(page) != HPDF_OK) return;
      } else {
        EXPECT_EQ(Call<HPDF_Page_GetGStateDepth>(page), 1U);
      }
    }
    EXPECT_TRUE(hasFailed || saved == 600);
  });
}

TEST_P(AllocationFailure, WhileGraphicsAreDrawn) { FailEachIn(&AddGraphics); }

TEST_P(AllocationFailure, WhileNavigationIsAdded) { FailEachIn(&AddNavigation); }

TEST_P(AllocationFailure, WhileAnEmptyDocumentIsSaved) {
  FailEachIn([](HPDF_Doc document, HPDF_Page) { Save(document); });
}

TEST_P(AllocationFailure, WhileADocumentWithEverythingIsSaved) {
  FailEachIn([](HPDF_Doc document, HPDF_Page page) {
    const long limit = std::exchange(leftUntilFailure, -1);
    AddText(document, page);
    AddGraphics(document, page);
    AddNavigation(document, page);
    leftUntilFailure = limit;
    Save(document);
  });
}

TEST_P(AllocationFailure, WhileADocumentIsSavedToAFile) {
  const test::TemporaryFolder folder;
  const std::filesystem::path path = folder / "saved.pdf";
  FailEachIn([&](HPDF_Doc document, HPDF_Page page) {
    AddNavigation(document, page);
    const HPDF_STATUS status = Call<engine::SaveToFile>(document, Utf16(path.u16string()), nullptr);
    EXPECT_EQ(std::filesystem::exists(path), status == HPDF_OK);
    std::filesystem::remove(path);
    EXPECT_TRUE(folder.IsEmpty()) << "a part was left";
  });
}

INSTANTIATE_TEST_SUITE_P(MemoryReturns, AllocationFailure, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(MemoryIsGone, AllocationFailure, testing::Values(true));

}  // namespace
}  // namespace quillbar
