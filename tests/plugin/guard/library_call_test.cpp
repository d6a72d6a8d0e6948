// SPDX-License-Identifier: MIT
// The guard around library calls.
#include <gmock/gmock.h>

#include <limits>
#include <new>
#include <stdexcept>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/support/pdf_file.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// As some functions of the library fail: without a word in the error record.
HPDF_STATUS ReturnBareStatus(HPDF_Doc) { return HPDF_INVALID_PARAMETER; }

// As the engine fails when memory is short.
HPDF_Page ThrowForMemory(HPDF_Doc) { throw std::bad_alloc(); }
void ThrowForLength(HPDF_Doc) { throw std::length_error("more than a vector holds"); }
HPDF_STATUS RaiseAndThrow(HPDF_Doc document) {
  HPDF_RaiseError(&document->error, HPDF_INVALID_FONT_NAME, 7);
  throw std::bad_alloc();
}
HPDF_STATUS CallWhatThrows(HPDF_Doc document) {
  EXPECT_EQ(Call<ThrowForMemory>(document), nullptr);
  return document->error.error_no;
}

class LibraryCall : public testing::Test {
 protected:
  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
};

TEST_F(LibraryCall, NumbersThatAreNotFiniteAreRefusedBeforeTheLibrary) {
  for (const float number : {kNaN, kInfinity, -kInfinity}) {
    EXPECT_EQ(Call<HPDF_Page_Rectangle>(page_, 1, number, 3, 4), HPDF_STATUS{HPDF_INVALID_PARAMETER});
    EXPECT_EQ(Call<HPDF_Page_SetHeight>(page_, number), HPDF_STATUS{HPDF_INVALID_PARAMETER});
    EXPECT_EQ(Call<HPDF_Page_Arc>(page_, 1, 1, 1, 0, number), HPDF_STATUS{HPDF_INVALID_PARAMETER});
    EXPECT_EQ(Call<HPDF_Page_CreateURILinkAnnot>(page_, HPDF_Rect{0, 0, number, 1}, "http://example.org"), nullptr);
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_PARAMETER, HPDF_INVALID_PARAMETER,
                                                   HPDF_INVALID_PARAMETER, HPDF_INVALID_PARAMETER));
  }
  EXPECT_EQ(ContentOf(page_), "");
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(page_), HPDF_GMODE_PAGE_DESCRIPTION);
}

TEST_F(LibraryCall, FailureThatIsOnlyMarkedReachesTheHandlerOnceAndTheNextCallWorks) {
  EXPECT_EQ(Call<HPDF_UseUTFEncodings>(document_.document), HPDF_OK);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
  EXPECT_EQ(Call<HPDF_UseUTFEncodings>(document_.document), HPDF_STATUS{HPDF_DUPLICATE_REGISTRATION});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_DUPLICATE_REGISTRATION));
  EXPECT_EQ(document_.document->error.error_no, HPDF_STATUS{HPDF_OK});
  EXPECT_NE(Call<engine::AddPage>(document_.document), nullptr);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(LibraryCall, BareStatusReachesTheHandlerOnce) {
  EXPECT_EQ(Call<ReturnBareStatus>(document_.document), HPDF_STATUS{HPDF_INVALID_PARAMETER});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_PARAMETER));
}

TEST_F(LibraryCall, NullResultReachesTheHandlerOnce) {
  EXPECT_EQ(Call<engine::GetFont>(document_.document, "No Such Font", nullptr), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_FONT_NAME));
  EXPECT_EQ(Call<engine::GetFont>(document_.document, "Helvetica", "No Such Encoding"), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_ENCODING_NAME));
  EXPECT_EQ(Call<engine::GetFont>(document_.document, nullptr, nullptr), nullptr);
  EXPECT_EQ(document_.TakeCodes().size(), 1U);
}

TEST_F(LibraryCall, WhatTheEngineThrowsIsAShortageOfMemory) {
  EXPECT_EQ(Call<ThrowForMemory>(document_.document), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_FAILD_TO_ALLOC_MEM));
  Call<ThrowForLength>(document_.document);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_FAILD_TO_ALLOC_MEM));
  EXPECT_EQ(Call<RaiseAndThrow>(document_.document), HPDF_STATUS{HPDF_INVALID_FONT_NAME});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_FONT_NAME));
  EXPECT_EQ(Call<CallWhatThrows>(document_.document), HPDF_STATUS{HPDF_FAILD_TO_ALLOC_MEM});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_FAILD_TO_ALLOC_MEM));
  EXPECT_EQ(Call<ThrowForMemory>(nullptr), nullptr);
  EXPECT_NE(Call<engine::AddPage>(document_.document), nullptr);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(LibraryCall, ShortageOutsideOfACallIsToldAsWell) {
  engine::ReportShortage(document_.document);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_FAILD_TO_ALLOC_MEM));
  EXPECT_EQ(document_.document->error.error_no, HPDF_STATUS{HPDF_OK});
  engine::ReportShortage(nullptr);
}

TEST_F(LibraryCall, EveryBuiltInFontInEverySingleByteEncodingIsNoFailure) {
  const char *const fonts[] = {"Courier",     "Courier-Bold",   "Courier-Oblique",   "Courier-BoldOblique",
                               "Helvetica",   "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique",
                               "Times-Roman", "Times-Bold",     "Times-Italic",      "Times-BoldItalic",
                               "Symbol",      "ZapfDingbats"};
  const char *const encodings[] = {
      "StandardEncoding", "MacRomanEncoding", "WinAnsiEncoding", "ISO8859-2", "ISO8859-3",  "ISO8859-4",  "ISO8859-5",
      "ISO8859-6",        "ISO8859-7",        "ISO8859-8",       "ISO8859-9", "ISO8859-10", "ISO8859-11", "ISO8859-13",
      "ISO8859-14",       "ISO8859-15",       "ISO8859-16",      "CP1250",    "CP1251",     "CP1252",     "CP1253",
      "CP1254",           "CP1255",           "CP1256",          "CP1257",    "CP1258",     "KOI8-R"};
  Call<HPDF_Page_BeginText>(page_);
  std::string everyByte;
  for (int byte = 1; byte < 256; ++byte) everyByte.push_back(static_cast<char>(byte));
  for (const char *name : fonts) {
    for (const char *encoding : encodings) {
      HPDF_Font font = Call<engine::GetFont>(document_.document, name, encoding);
      ASSERT_NE(font, nullptr) << name << " " << encoding;
      EXPECT_STREQ(Call<HPDF_Font_GetFontName>(font), name);
      EXPECT_STREQ(Call<HPDF_Font_GetEncodingName>(font), encoding);
      EXPECT_EQ(Call<HPDF_Page_SetFontAndSize>(page_, font, 10.0F), HPDF_OK);
      EXPECT_EQ(Call<HPDF_Page_ShowText>(page_, everyByte.c_str()), HPDF_OK);
      EXPECT_THAT(document_.TakeCodes(), IsEmpty()) << name << " " << encoding;
    }
  }
  Call<HPDF_Page_EndText>(page_);
  test::PdfFile pdf(document_.SaveToString());
  EXPECT_TRUE(pdf.Content(0) == ContentOf(page_));
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(LibraryCall, NullThatIsAnAnswerIsNoFailure) {
  EXPECT_EQ(Call<HPDF_GetInfoAttr>(document_.document, HPDF_INFO_AUTHOR), nullptr);
  EXPECT_EQ(Call<HPDF_Page_GetCurrentFont>(page_), nullptr);
  EXPECT_EQ(Call<HPDF_GetCurrentEncoder>(document_.document), nullptr);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(LibraryCall, GettersReturnWhatTheLibraryReturns) {
  EXPECT_EQ(Call<HPDF_Page_SetHeight>(page_, 500.5F), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_GetHeight>(page_), 500.5F);
  Call<HPDF_Page_SetRGBFill>(page_, 1.0F, 0.5F, 0.0F);
  EXPECT_EQ(Call<HPDF_Page_GetRGBFill>(page_).g, 0.5F);
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(page_), HPDF_GMODE_PAGE_DESCRIPTION);
  EXPECT_EQ(Call<HPDF_Page_GetLineWidth>(page_), 1.0F);
}

TEST_F(LibraryCall, NullHandlesAreAnsweredLikeInvalidObjects) {
  EXPECT_NE(Call<HPDF_Page_MoveTo>(nullptr, 1, 1), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_Arc>(nullptr, 1, 1, 1, 0, 400), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_SetWidth>(nullptr, -1), HPDF_OK);
  EXPECT_NE(Call<HPDF_Page_SetHeight>(nullptr, kNaN), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_GetHeight>(nullptr), 0.0F);
  EXPECT_EQ(Call<HPDF_Page_GetLineWidth>(nullptr), 1.0F);
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(nullptr), 0);
  EXPECT_EQ(Call<engine::AddPage>(nullptr), nullptr);
  EXPECT_NE(Call<engine::SaveToMemory>(nullptr), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Font_GetFontName>(nullptr), nullptr);
  EXPECT_EQ(Call<HPDF_Font_GetBBox>(nullptr).top, 0.0F);
}

TEST_F(LibraryCall, DocumentCanBeFreedThroughIt) {
  HPDF_Doc other = HPDF_New(nullptr, nullptr);
  Call<HPDF_Free>(other);
}

TEST_F(LibraryCall, InformationAboutTheEndOfACallIsNoFailure) {
  const std::string saved = document_.SaveToString();
  HPDF_BYTE byte = 0;
  HPDF_UINT32 size = 1;
  EXPECT_EQ(Call<HPDF_ReadFromStream>(document_.document, &byte, &size), HPDF_STATUS{HPDF_STREAM_EOF});
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(LibraryCall, ColoursWithANumberThatIsNotFiniteAreRefused) {
  HPDF_Annotation note = Call<HPDF_Page_CreateTextAnnot>(page_, HPDF_Rect{0, 0, 1, 1}, "note", nullptr);
  for (const HPDF_RGBColor colour :
       {HPDF_RGBColor{kNaN, 0, 0}, HPDF_RGBColor{0, kInfinity, 0}, HPDF_RGBColor{0, 0, -kInfinity}}) {
    EXPECT_EQ(Call<HPDF_Annot_SetRGBColor>(note, colour), HPDF_STATUS{HPDF_INVALID_PARAMETER});
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_PARAMETER));
  }
  EXPECT_EQ(Call<HPDF_Annot_SetRGBColor>(note, HPDF_RGBColor{0, 0, 1}), HPDF_OK);
}

// What the functions of the library answer to null.
HPDF_STATUS AnswerOfStream(HPDF_Stream) { return HPDF_INVALID_OBJECT; }
HPDF_STATUS AnswerOfMemory(HPDF_MMgr) { return HPDF_INVALID_OBJECT; }
HPDF_STATUS AnswerThatALineGoesOn(HPDF_Doc) { return HPDF_STREAM_READLN_CONTINUE; }

TEST_F(LibraryCall, HandlesWithoutARecordOfErrorsAreAnsweredByTheFunction) {
  EXPECT_EQ(Call<AnswerOfStream>(nullptr), HPDF_STATUS{HPDF_INVALID_OBJECT});
  EXPECT_EQ(Call<AnswerOfMemory>(nullptr), HPDF_STATUS{HPDF_INVALID_OBJECT});
  HPDF_Doc_Rec freed{};
  EXPECT_EQ(Call<ReturnBareStatus>(&freed), HPDF_STATUS{HPDF_INVALID_PARAMETER});
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(LibraryCall, LineThatGoesOnIsNoFailure) {
  EXPECT_EQ(Call<AnswerThatALineGoesOn>(document_.document), HPDF_STATUS{HPDF_STREAM_READLN_CONTINUE});
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

}  // namespace
}  // namespace quillbar
