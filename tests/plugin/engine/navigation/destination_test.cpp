// SPDX-License-Identifier: MIT
// Destinations keep their view when another one is refused.
#include <gmock/gmock.h>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::HasSubstr;

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

}  // namespace
}  // namespace quillbar
