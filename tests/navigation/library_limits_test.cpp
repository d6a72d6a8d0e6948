// SPDX-License-Identifier: MIT
// Navigation and transparency in the library: refused calls leave nothing half done, and outlines of any
// depth are saved at once.
#include <gmock/gmock.h>
#include <hpdf_utils.h>

#include <chrono>
#include <string>

#include "tests/engine/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class LibraryLimits : public testing::Test {
 protected:
  unsigned ObjectCount() const { return document_.document->xref->entries->count; }

  HPDF_Image SmallImage() {
    const HPDF_BYTE pixel = 0;
    return Call<HPDF_LoadRawImageFromMem>(document_.document, &pixel, 1U, 1U, HPDF_CS_DEVICE_GRAY, 8U);
  }

  LibraryDocument document_;
  HPDF_Page page_ = Call<HPDF_AddPage>(document_.document);
  const HPDF_Rect rect_{10, 20, 110, 60};
};

TEST_F(LibraryLimits, BlendModesBeyondTheTableAreRefused) {
  HPDF_ExtGState state = Call<HPDF_CreateExtGState>(document_.document);
  for (const int mode : {12, 13, 1000, -1}) {
    EXPECT_EQ(Call<HPDF_ExtGState_SetBlendMode>(state, static_cast<HPDF_BlendMode>(mode)),
              HPDF_STATUS{HPDF_EXT_GSTATE_OUT_OF_RANGE});
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_EXT_GSTATE_OUT_OF_RANGE));
  }
  EXPECT_EQ(Call<HPDF_ExtGState_SetBlendMode>(state, HPDF_BM_EXCLUSHON), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_SetExtGState>(page_, state), HPDF_OK);
  EXPECT_EQ(Call<HPDF_ExtGState_SetBlendMode>(state, static_cast<HPDF_BlendMode>(12)),
            HPDF_STATUS{HPDF_EXT_GSTATE_READ_ONLY});
}

TEST_F(LibraryLimits, IconsBeyondTheTableAreRefused) {
  HPDF_Annotation note = Call<HPDF_Page_CreateTextAnnot>(page_, rect_, "note", nullptr);
  for (const int icon : {7, 8, 1000, -1}) {
    EXPECT_EQ(Call<HPDF_TextAnnot_SetIcon>(note, static_cast<HPDF_AnnotIcon>(icon)),
              HPDF_STATUS{HPDF_ANNOT_INVALID_ICON});
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_ANNOT_INVALID_ICON));
  }
  EXPECT_EQ(Call<HPDF_TextAnnot_SetIcon>(note, HPDF_ANNOT_ICON_INSERT), HPDF_OK);
}

TEST_F(LibraryLimits, ImageAtTheDeepestSavedStateIsRefusedWhole) {
  HPDF_Image image = SmallImage();
  while (Call<HPDF_Page_GetGStateDepth>(page_) < HPDF_LIMIT_MAX_GSTATE) {
    ASSERT_EQ(Call<HPDF_Page_GSave>(page_), HPDF_OK);
  }
  const std::string before = ContentOf(page_);
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, image, 1, 2, 3, 4), HPDF_STATUS{HPDF_EXCEED_GSTATE_LIMIT});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_EXCEED_GSTATE_LIMIT));
  EXPECT_EQ(ContentOf(page_), before);
  EXPECT_EQ(Call<HPDF_Page_GetGStateDepth>(page_), HPDF_UINT{HPDF_LIMIT_MAX_GSTATE});

  EXPECT_EQ(Call<HPDF_Page_GRestore>(page_), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, image, 1, 2, 3, 4), HPDF_OK);
  EXPECT_THAT(ContentOf(page_), testing::EndsWith("Q\nq\n3 0 0 4 1 2 cm\n/X1 Do\nQ\n"));
}

TEST_F(LibraryLimits, ImageOfAnotherLibraryDocumentLeavesNoSavedState) {
  LibraryDocument other;
  const HPDF_BYTE pixel = 0;
  HPDF_Image image = Call<HPDF_LoadRawImageFromMem>(other.document, &pixel, 1U, 1U, HPDF_CS_DEVICE_GRAY, 8U);
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, image, 1, 2, 3, 4), HPDF_STATUS{HPDF_PAGE_INVALID_XOBJECT});
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, nullptr, 1, 2, 3, 4), HPDF_STATUS{HPDF_INVALID_OBJECT});
  EXPECT_EQ(ContentOf(page_), "");
  EXPECT_EQ(Call<HPDF_Page_GetGStateDepth>(page_), 1U);
}

TEST_F(LibraryLimits, DestinationKeepsItsViewWhenACoordinateIsRefused) {
  HPDF_Destination destination = Call<HPDF_Page_CreateDestination>(page_);
  ASSERT_EQ(Call<HPDF_Destination_SetXYZ>(destination, 1, 800, 1), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(destination, 1e10F, 1, 1), HPDF_STATUS{HPDF_REAL_OUT_OF_RANGE});
  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(destination, 1, 1e10F, 1), HPDF_STATUS{HPDF_REAL_OUT_OF_RANGE});
  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(destination, -1, 1, 1), HPDF_STATUS{HPDF_INVALID_PARAMETER});
  EXPECT_EQ(destination->list->count, 5U);
  EXPECT_THAT(document_.SaveToString(), HasSubstr("/XYZ 1 800 1 ]"));
}

TEST_F(LibraryLimits, RefusedAnnotationsLeaveNoObject) {
  const unsigned objects = ObjectCount();
  const std::string tooLong(65536, 'x');
  const HPDF_Rect tooFar{0, 0, 1e10F, 10};
  HPDF_Destination destination = Call<HPDF_Page_CreateDestination>(page_);
  EXPECT_EQ(Call<HPDF_Page_CreateTextAnnot>(page_, rect_, tooLong.c_str(), nullptr), nullptr);
  EXPECT_EQ(Call<HPDF_Page_CreateURILinkAnnot>(page_, rect_, tooLong.c_str()), nullptr);
  EXPECT_EQ(Call<HPDF_Page_CreateURILinkAnnot>(page_, rect_, ""), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_STRING_OUT_OF_RANGE, HPDF_STRING_OUT_OF_RANGE, HPDF_INVALID_URI));
  EXPECT_EQ(Call<HPDF_Page_CreateTextAnnot>(page_, tooFar, "note", nullptr), nullptr);
  EXPECT_EQ(Call<HPDF_Page_CreateURILinkAnnot>(page_, tooFar, "http://example.org"), nullptr);
  EXPECT_EQ(Call<HPDF_Page_CreateLinkAnnot>(page_, tooFar, destination), nullptr);
  EXPECT_THAT(document_.TakeCodes(),
              ElementsAre(HPDF_REAL_OUT_OF_RANGE, HPDF_REAL_OUT_OF_RANGE, HPDF_REAL_OUT_OF_RANGE));
  EXPECT_EQ(ObjectCount(), objects + 1) << "only the destination";
  EXPECT_THAT(document_.SaveToString(), Not(HasSubstr("/Annot")));
}

TEST_F(LibraryLimits, RefusedOutlineLeavesNoObject) {
  HPDF_Outline chapter = Call<HPDF_CreateOutline>(document_.document, nullptr, "chapter", nullptr);
  const unsigned objects = ObjectCount();
  const std::string tooLong(65536, 'x'), longest(65535, 'x');
  EXPECT_EQ(Call<HPDF_CreateOutline>(document_.document, chapter, tooLong.c_str(), nullptr), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_STRING_OUT_OF_RANGE));
  EXPECT_EQ(ObjectCount(), objects);
  EXPECT_NE(Call<HPDF_CreateOutline>(document_.document, chapter, longest.c_str(), nullptr), nullptr);
}

TEST_F(LibraryLimits, DeepOutlinesAreSavedAtOnce) {
  HPDF_Outline entry = nullptr;
  for (int depth = 0; depth < 60000; ++depth) {
    entry = Call<HPDF_CreateOutline>(document_.document, entry, "deeper", nullptr);
    ASSERT_NE(entry, nullptr);
  }
  const auto start = std::chrono::steady_clock::now();
  const std::string saved = document_.SaveToString();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_THAT(saved.substr(0, 2000), HasSubstr("/Count 60000\n"));
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(LibraryLimits, OutlineCountsFollowWhatIsOpen) {
  HPDF_Outline first = Call<HPDF_CreateOutline>(document_.document, nullptr, "first", nullptr);
  HPDF_Outline second = Call<HPDF_CreateOutline>(document_.document, nullptr, "second", nullptr);
  HPDF_Outline inner = Call<HPDF_CreateOutline>(document_.document, first, "inner", nullptr);
  Call<HPDF_CreateOutline>(document_.document, inner, "leaf 1", nullptr);
  Call<HPDF_CreateOutline>(document_.document, inner, "leaf 2", nullptr);
  const auto count = [](HPDF_Dict entry) {
    auto *number = static_cast<HPDF_Number>(HPDF_Dict_GetItem(entry, "Count", HPDF_OCLASS_NUMBER));
    return number ? number->value : 0;
  };
  HPDF_Outline root = document_.document->outlines;

  document_.SaveToString();
  EXPECT_EQ(count(root), 5);
  EXPECT_EQ(count(first), 3);
  EXPECT_EQ(count(inner), 2);
  EXPECT_EQ(count(second), 0);

  Call<HPDF_Outline_SetOpened>(inner, HPDF_FALSE);
  document_.SaveToString();
  EXPECT_EQ(count(root), 3);
  EXPECT_EQ(count(first), 1);
  EXPECT_EQ(count(inner), -2);

  Call<HPDF_Outline_SetOpened>(first, HPDF_FALSE);
  document_.SaveToString();
  EXPECT_EQ(count(root), 2);
  EXPECT_EQ(count(first), -1);
}

}  // namespace
}  // namespace quillbar
