// SPDX-License-Identifier: MIT
// The library's failures with a handler that resets the error state.
#include <gmock/gmock.h>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ErrorState, RaisedStatusIsReturnedThoughTheHandlerResets) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  EXPECT_EQ(Call<HPDF_Page_LineTo>(page, 1, 1), HPDF_STATUS{HPDF_PAGE_INVALID_GMODE});
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_PAGE_INVALID_GMODE));
}

TEST(ErrorState, RefusedOperatorIsNotWritten) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  Call<HPDF_Page_BeginText>(page);
  const std::string before = ContentOf(page);
  Call<HPDF_Page_Rectangle>(page, 1, 2, 3, 4);
  Call<HPDF_Page_GSave>(page);
  Call<HPDF_Page_Concat>(page, 1, 0, 0, 1, 5, 5);
  EXPECT_EQ(ContentOf(page), before);
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(page), HPDF_GMODE_TEXT_OBJECT);
  EXPECT_EQ(document.TakeCodes().size(), 3U);
}

TEST(ErrorState, RaisedStatusIsReturnedOutsideTheGuardToo) {
  LibraryDocument document;
  HPDF_Page page = engine::AddPage(document.document);
  const std::string before = ContentOf(page);
  EXPECT_EQ(HPDF_Page_LineTo(page, 1, 1), HPDF_STATUS{HPDF_PAGE_INVALID_GMODE});
  EXPECT_EQ(ContentOf(page), before);
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_PAGE_INVALID_GMODE));
  EXPECT_EQ(HPDF_Page_MoveTo(page, 1, 1), HPDF_OK);
}

TEST(ErrorState, HandlerOfTheDocumentMayCallIt) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  HPDF_Page added = nullptr;
  std::string saved;
  document.inHandler = [&] {
    added = Call<engine::AddPage>(document.document);
    saved = document.SaveToString();
  };
  EXPECT_EQ(Call<HPDF_Page_SetLineWidth>(page, -1), HPDF_STATUS{HPDF_PAGE_OUT_OF_RANGE});
  EXPECT_NE(added, nullptr);
  EXPECT_THAT(saved, testing::StartsWith("%PDF-"));
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_PAGE_OUT_OF_RANGE));
}

TEST(ErrorState, FailureInsideTheHandlerLeavesTheOuterStatus) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  std::vector<unsigned> running;
  HPDF_STATUS inner = HPDF_OK;
  document.inHandler = [&] {
    running.push_back(engine::RunningHandlers(document.document));
    if (running.size() == 1) inner = Call<HPDF_Page_LineTo>(page, 1, 1);
  };
  EXPECT_EQ(Call<HPDF_Page_SetLineWidth>(page, -1), HPDF_STATUS{HPDF_PAGE_OUT_OF_RANGE});
  EXPECT_EQ(inner, HPDF_STATUS{HPDF_PAGE_INVALID_GMODE});
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_PAGE_OUT_OF_RANGE, HPDF_PAGE_INVALID_GMODE));
  EXPECT_THAT(running, ElementsAre(1U, 2U));
  EXPECT_EQ(engine::RunningHandlers(document.document), 0U);
  EXPECT_EQ(Call<HPDF_Page_SetLineWidth>(page, 2), HPDF_OK);
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

// A callee raises, and its caller returns the error record's code.
TEST(ErrorState, FailureRaisedByACalleeIsNoSuccessOfItsCaller) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  HPDF_Font font = Call<engine::GetFont>(document.document, "Helvetica", nullptr);
  Call<HPDF_Page_BeginText>(page);
  Call<HPDF_Page_SetFontAndSize>(page, font, 10.0F);
  const std::string before = ContentOf(page);
  const std::string tooLong(70000, 'x');
  EXPECT_EQ(Call<HPDF_Page_ShowText>(page, tooLong.c_str()), HPDF_STATUS{HPDF_STRING_OUT_OF_RANGE});
  EXPECT_EQ(ContentOf(page), before);
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_STRING_OUT_OF_RANGE));
}

}  // namespace
}  // namespace quillbar
