// SPDX-License-Identifier: MIT
// The length of a text that may have a limit.
#include <gtest/gtest.h>
#include <hpdf.h>
#include <hpdf_utils.h>

namespace quillbar {
namespace {

TEST(TextLength, EndsAtTheNulOrAtTheLimit) {
  EXPECT_EQ(HPDF_StrLen(nullptr, -1), 0U);
  EXPECT_EQ(HPDF_StrLen("", -1), 0U);
  EXPECT_EQ(HPDF_StrLen("text", -1), 4U);
  EXPECT_EQ(HPDF_StrLen("text", 5), 4U);
  EXPECT_EQ(HPDF_StrLen("text", 3), 3U);
  EXPECT_EQ(HPDF_StrLen("text", 0), 0U);
  const char unended[] = {'a', 'b'};
  EXPECT_EQ(HPDF_StrLen(unended, 2), 2U);
}

}  // namespace
}  // namespace quillbar
