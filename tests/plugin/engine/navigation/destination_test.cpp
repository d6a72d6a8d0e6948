// SPDX-License-Identifier: MIT
// Destinations keep their view when another one is refused.
#include <gmock/gmock.h>
#include <hpdf.h>
#include <hpdf_destination.h>
#include <hpdf_objects.h>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Destination : public testing::Test {
 protected:
  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
};

TEST_F(Destination, DestinationKeepsItsViewWhenACoordinateIsRefused) {
  HPDF_Destination destination = Call<HPDF_Page_CreateDestination>(page_);
  ASSERT_EQ(Call<HPDF_Destination_SetXYZ>(destination, 1, 800, 1), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(destination, 1e10F, 1, 1), HPDF_STATUS{HPDF_REAL_OUT_OF_RANGE});
  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(destination, 1, 1e10F, 1), HPDF_STATUS{HPDF_REAL_OUT_OF_RANGE});
  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(destination, -1, 1, 1), HPDF_STATUS{HPDF_INVALID_PARAMETER});
  EXPECT_EQ(destination->list->count, 5U);
  EXPECT_THAT(document_.SaveToString(), HasSubstr("/XYZ 1 800 1 ]"));
}

TEST_F(Destination, IsAPlaceOnAPage) {
  HPDF_Doc document = document_.document;
  const HPDF_Rect rect{10, 20, 110, 60};
  const HPDF_Dict noPage = HPDF_Dict_New(document->mmgr);
  EXPECT_EQ(HPDF_Destination_New(document->mmgr, noPage, document->xref), nullptr);
  EXPECT_EQ(HPDF_Error_GetCode(&document->error), HPDF_STATUS{HPDF_INVALID_PAGE});
  HPDF_Error_Reset(&document->error);

  // An array like any other, then one that claims to be a destination.
  const HPDF_Array array = HPDF_Array_New(document->mmgr);
  HPDF_Array_Add(array, noPage);
  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(array, 1, 800, 1), HPDF_STATUS{HPDF_INVALID_DESTINATION});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_DESTINATION));
  array->header.obj_class |= HPDF_OSUBCLASS_DESTINATION;
  EXPECT_EQ(HPDF_Destination_Validate(array), HPDF_FALSE) << "one without a view";
  HPDF_Array_AddName(array, "Fit");
  EXPECT_EQ(HPDF_Error_GetCode(&document->error), HPDF_STATUS{HPDF_OK});
  EXPECT_EQ(HPDF_Destination_Validate(array), HPDF_FALSE) << "one without a page";
  EXPECT_EQ(HPDF_Error_GetCode(&document->error), HPDF_STATUS{HPDF_INVALID_PAGE});
  HPDF_Error_Reset(&document->error);
  HPDF_Array_Free(array);

  EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(nullptr, 1, 800, 1), HPDF_STATUS{HPDF_INVALID_DESTINATION});
  EXPECT_EQ(Call<HPDF_Page_CreateDestination>(nullptr), nullptr);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty()) << "there is no document to tell";
  EXPECT_NE(Call<HPDF_Page_CreateLinkAnnot>(page_, rect, Call<HPDF_Page_CreateDestination>(page_)), nullptr);
}

TEST_F(Destination, OfAnOutlineIsRefusedWhenItIsNone) {
  HPDF_Outline outline = Call<HPDF_CreateOutline>(document_.document, nullptr, "title", nullptr);
  EXPECT_EQ(Call<HPDF_Outline_SetDestination>(outline, nullptr), HPDF_STATUS{HPDF_INVALID_DESTINATION});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_DESTINATION));
  HPDF_Destination destination = Call<HPDF_Page_CreateDestination>(page_);
  EXPECT_EQ(Call<HPDF_Outline_SetDestination>(nullptr, destination), HPDF_STATUS{HPDF_INVALID_OUTLINE});
  EXPECT_EQ(Call<HPDF_Outline_SetDestination>(outline, destination), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Outline_SetOpened>(page_, HPDF_TRUE), HPDF_STATUS{HPDF_INVALID_OUTLINE});
  EXPECT_EQ(Call<HPDF_Outline_GetOpened>(nullptr), HPDF_BOOL{HPDF_FALSE});
}

}  // namespace
}  // namespace quillbar
