// SPDX-License-Identifier: MIT
// Text that the document's UTF-8 encoder writes: every character arrives.
#include <gmock/gmock.h>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/support/pdf_file.h"

namespace quillbar {
namespace {

class TextString : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(Encrypted, TextString, testing::Bool());

TEST_P(TextString, KeepsEveryCharacter) {
  const std::string longText = [] {
    std::string text;
    for (int i = 0; i < 4000; ++i) text += "ä漢😀 ";
    return text;
  }();
  for (const std::string &text : {std::string("plain"), std::string("Straße — 漢字 😀 עברית"),
                                  std::string("(brackets) \\ and \r\n lines"), longText}) {
    LibraryDocument document;
    Call<HPDF_UseUTFEncodings>(document.document);
    Call<HPDF_SetCurrentEncoder>(document.document, "UTF-8");
    Call<engine::AddPage>(document.document);
    if (GetParam()) Call<HPDF_SetPassword>(document.document, "owner", "user");
    ASSERT_EQ(Call<HPDF_SetInfoAttr>(document.document, HPDF_INFO_TITLE, text.c_str()), HPDF_OK);
    EXPECT_STREQ(Call<HPDF_GetInfoAttr>(document.document, HPDF_INFO_TITLE), text.c_str());
    const test::PdfFile file(document.SaveToString(), GetParam() ? "user" : nullptr);
    EXPECT_EQ(file.Information("/Title"), text);
  }
}

TEST_P(TextString, BytesThatAreNoUtf8BecomeReplacementCharacters) {
  LibraryDocument document;
  Call<HPDF_UseUTFEncodings>(document.document);
  Call<HPDF_SetCurrentEncoder>(document.document, "UTF-8");
  Call<engine::AddPage>(document.document);
  if (GetParam()) Call<HPDF_SetPassword>(document.document, "owner", "user");
  Call<HPDF_SetInfoAttr>(document.document, HPDF_INFO_TITLE, "a\xFF\x80z");
  const test::PdfFile file(document.SaveToString(), GetParam() ? "user" : nullptr);
  const std::string title = file.Information("/Title");
  EXPECT_TRUE(title.starts_with("a\xEF\xBF\xBD") && title.ends_with("z")) << title;
}

}  // namespace
}  // namespace quillbar
