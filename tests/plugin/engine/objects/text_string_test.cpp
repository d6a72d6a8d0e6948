// SPDX-License-Identifier: MIT
// Text that the document's UTF-8 encoder writes: every character arrives.
#include <gmock/gmock.h>
#include <hpdf.h>
#include <hpdf_encoder.h>
#include <hpdf_objects.h>

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

struct EncodedText {
  const char *encoding;
  const char *bytes;
  const char *utf8;
};

TEST_P(TextString, InAnotherEncodingBecomesUnicode) {
  for (const EncodedText &text : {EncodedText{"WinAnsiEncoding", "Gr\xFC\xDF Gott \x80", "Grüß Gott €"},
                                  EncodedText{"CP1251", "\xCF\xF0\xE8\xE2\xE5\xF2", "Привет"},
                                  EncodedText{"90ms-RKSJ-H", "a\x93\xFA\x96{ b", "a日本 b"}}) {
    LibraryDocument document;
    Call<HPDF_UseJPEncodings>(document.document);
    Call<HPDF_SetCurrentEncoder>(document.document, text.encoding);
    Call<engine::AddPage>(document.document);
    if (GetParam()) Call<HPDF_SetPassword>(document.document, "owner", "user");
    ASSERT_EQ(Call<HPDF_SetInfoAttr>(document.document, HPDF_INFO_TITLE, text.bytes), HPDF_OK);
    const test::PdfFile file(document.SaveToString(), GetParam() ? "user" : nullptr);
    EXPECT_EQ(file.Information("/Title"), text.utf8) << text.encoding;
  }
}

TEST(Utf8Encoder, TellsWhichBytesBelongTogetherAndWhatTheyStandFor) {
  LibraryDocument document;
  Call<HPDF_UseUTFEncodings>(document.document);
  HPDF_Encoder encoder = Call<HPDF_GetEncoder>(document.document, "UTF-8");
  ASSERT_NE(encoder, nullptr);
  const std::string text = "aä漢😀\xFFz";
  const auto *bytes = reinterpret_cast<const HPDF_BYTE *>(text.data());
  HPDF_ParseText_Rec state;
  HPDF_Encoder_SetParseText(encoder, &state, bytes, static_cast<HPDF_UINT>(text.size()));
  std::u16string units;
  for (const HPDF_BYTE byte : text) {
    const HPDF_ByteType type = HPDF_Encoder_ByteType(encoder, &state);
    if (type == HPDF_BYTE_TYPE_TRIAL) continue;
    EXPECT_EQ(type, HPDF_BYTE_TYPE_SINGLE);
    units.push_back(static_cast<char16_t>(HPDF_Encoder_ToUnicode(encoder, byte)));
  }
  EXPECT_EQ(units, u"aä漢\uFFFD\uFFFDz") << "a character above the basic plane has no unit of its own";
  EXPECT_EQ(HPDF_Encoder_ByteType(encoder, &state), HPDF_BYTE_TYPE_UNKNOWN) << "behind the end";
}

TEST(StringObject, NoneIsFreedInPeace) { HPDF_String_Free(nullptr); }

}  // namespace
}  // namespace quillbar
