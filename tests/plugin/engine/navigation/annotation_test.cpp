// SPDX-License-Identifier: MIT
// Annotations that are refused leave nothing in the file.
#include <gmock/gmock.h>
#include <hpdf.h>
#include <hpdf_annotation.h>

#include <string>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Annotation : public testing::Test {
 protected:
  unsigned ObjectCount() const { return document_.document->xref->entries->count; }

  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
  const HPDF_Rect rect_{10, 20, 110, 60};
};

TEST_F(Annotation, IconsBeyondTheTableAreRefused) {
  HPDF_Annotation note = Call<HPDF_Page_CreateTextAnnot>(page_, rect_, "note", nullptr);
  for (const int icon : {7, 8, 1000, -1}) {
    EXPECT_EQ(Call<HPDF_TextAnnot_SetIcon>(note, static_cast<HPDF_AnnotIcon>(icon)),
              HPDF_STATUS{HPDF_ANNOT_INVALID_ICON});
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_ANNOT_INVALID_ICON));
  }
  EXPECT_EQ(Call<HPDF_TextAnnot_SetIcon>(note, HPDF_ANNOT_ICON_INSERT), HPDF_OK);
}

TEST_F(Annotation, RefusedAnnotationsLeaveNoObject) {
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

TEST_F(Annotation, OnlyANoteHasAnIconAndIsOpened) {
  HPDF_Annotation link = Call<HPDF_Page_CreateURILinkAnnot>(page_, rect_, "http://example.org");
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(Call<HPDF_TextAnnot_SetIcon>(link, HPDF_ANNOT_ICON_KEY), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
  EXPECT_EQ(Call<HPDF_TextAnnot_SetOpened>(link, HPDF_TRUE), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_ANNOTATION, HPDF_INVALID_ANNOTATION));
  EXPECT_EQ(Call<HPDF_Annot_SetRGBColor>(link, HPDF_RGBColor{1, 0.5F, 0}), HPDF_OK);
  EXPECT_THAT(document_.SaveToString(), AllOf(Not(HasSubstr("/Key")), Not(HasSubstr("/Open")), HasSubstr("/C [")));
}

TEST_F(Annotation, WhatIsNoneIsRefused) {
  for (const HPDF_Annotation other : {HPDF_Annotation{nullptr}, HPDF_Annotation{page_}}) {
    EXPECT_EQ(Call<HPDF_TextAnnot_SetIcon>(other, HPDF_ANNOT_ICON_KEY), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
    EXPECT_EQ(Call<HPDF_TextAnnot_SetOpened>(other, HPDF_TRUE), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
    const HPDF_RGBColor color{1, 0, 0};
    EXPECT_EQ(Call<HPDF_Annot_SetRGBColor>(other, color), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
  }
  const HPDF_MMgr memory = document_.document->mmgr;
  EXPECT_EQ(HPDF_MarkupAnnot_New(memory, document_.document->xref, rect_, "note", nullptr, HPDF_ANNOT_SQUARE), nullptr);
  EXPECT_EQ(HPDF_Error_GetCode(memory->error), HPDF_STATUS{HPDF_INVALID_ANNOTATION});
  HPDF_Error_Reset(memory->error);
}

TEST_F(Annotation, NeedsAPageAndSomethingToLeadTo) {
  HPDF_Destination destination = Call<HPDF_Page_CreateDestination>(page_);
  EXPECT_EQ(Call<HPDF_Page_CreateTextAnnot>(nullptr, rect_, "note", nullptr), nullptr);
  EXPECT_EQ(Call<HPDF_Page_CreateLinkAnnot>(nullptr, rect_, destination), nullptr);
  EXPECT_EQ(Call<HPDF_Page_CreateURILinkAnnot>(nullptr, rect_, "http://example.org"), nullptr);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
  EXPECT_EQ(Call<HPDF_Page_CreateLinkAnnot>(page_, rect_, nullptr), nullptr);
  EXPECT_EQ(Call<HPDF_Page_CreateURILinkAnnot>(page_, rect_, nullptr), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_DESTINATION, HPDF_INVALID_URI));
  HPDF_Encoder_Rec noEncoder{};
  EXPECT_EQ(Call<HPDF_Page_CreateTextAnnot>(page_, rect_, "note", &noEncoder), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_ENCODER));
  HPDF_Encoder encoder = Call<HPDF_GetEncoder>(document_.document, "WinAnsiEncoding");
  EXPECT_NE(Call<HPDF_Page_CreateTextAnnot>(page_, rect_, "note", encoder), nullptr);
}

}  // namespace
}  // namespace quillbar
