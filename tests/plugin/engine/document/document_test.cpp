// SPDX-License-Identifier: MIT
// What every saved document has.
#include <gmock/gmock.h>
#include <hpdf_utils.h>

#include <cstdlib>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/plugin/engine/driver/library_path.h"
#include "tests/support/pdf_file.h"

namespace quillbar {
namespace {

using testing::IsEmpty;

TEST(Document, NamesItsProducer) {
  LibraryDocument document;
  EXPECT_STREQ(Call<HPDF_GetInfoAttr>(document.document, HPDF_INFO_PRODUCER), "Quillbar PDF Plugin");
  Call<engine::AddPage>(document.document);
  test::PdfFile pdf(document.SaveToString());
  EXPECT_EQ(pdf.qpdf().getTrailer().getKey("/Info").getKey("/Producer").getStringValue(), "Quillbar PDF Plugin");
}

// What a script may leave open when it saves.
TEST(Document, SavingEndsAPathThatIsToClip) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  Call<HPDF_Page_GSave>(page);
  Call<HPDF_Page_Rectangle>(page, 1.0F, 2.0F, 3.0F, 4.0F);
  Call<HPDF_Page_Clip>(page);
  test::PdfFile pdf(document.SaveToString());
  EXPECT_EQ(pdf.Content(0), "q\n1 2 3 4 re\nW\nn\nQ\n");
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

TEST(Document, SavingEndsTextAndPathsAndStates) {
  LibraryDocument document;
  HPDF_Page path = Call<engine::AddPage>(document.document);
  Call<HPDF_Page_MoveTo>(path, 1.0F, 2.0F);
  HPDF_Page text = Call<engine::AddPage>(document.document);
  Call<HPDF_Page_GSave>(text);
  Call<HPDF_Page_GSave>(text);
  Call<HPDF_Page_BeginText>(text);
  test::PdfFile pdf(document.SaveToString());
  EXPECT_EQ(pdf.Content(0), "1 2 m\nn\n");
  EXPECT_EQ(pdf.Content(1), "q\nq\nBT\nET\nQ\nQ\n");
}

TEST(Document, SavingLeavesAPageAsItWas) {
  LibraryDocument document;
  HPDF_Page page = Call<engine::AddPage>(document.document);
  Call<HPDF_Page_GSave>(page);
  Call<HPDF_Page_MoveTo>(page, 1.0F, 2.0F);
  document.SaveToString();
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(page), HPDF_GMODE_PATH_OBJECT);
  EXPECT_EQ(Call<HPDF_Page_GetGStateDepth>(page), 2u);
  Call<HPDF_Page_Stroke>(page);
  Call<HPDF_Page_BeginText>(page);
  Call<HPDF_Page_MoveTextPos>(page, 3.0F, 4.0F);
  document.SaveToString();
  EXPECT_EQ(Call<HPDF_Page_GetGMode>(page), HPDF_GMODE_TEXT_OBJECT);
  EXPECT_EQ(Call<HPDF_Page_GetCurrentTextPos>(page).x, 3.0F);
  Call<HPDF_Page_EndText>(page);
  Call<HPDF_Page_GRestore>(page);
  EXPECT_EQ(ContentOf(page), "q\n1 2 m\nS\nBT\n3 4 Td\nET\nQ\n");
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

// Content is kept in pieces of 4096 bytes: what a save adds and takes back may begin and end in any of them.
TEST(Document, SavingLeavesContentOfAnyLengthAsItWas) {
  for (const std::size_t length : {0,    1,    2047, 2048, 4086, 4087, 4088, 4089, 4090, 4091,
                                   4092, 4093, 4094, 4095, 4096, 4097, 8190, 8191, 8192, 8193}) {
    LibraryDocument document;
    HPDF_Page page = Call<engine::AddPage>(document.document);
    for (int i = 0; i < 5; ++i) Call<HPDF_Page_GSave>(page);
    HPDF_Stream stream = static_cast<HPDF_PageAttr>(page->attr)->stream;
    HPDF_Stream_WriteStr(stream, std::string(length, '\n').c_str());
    const std::string before = ContentOf(page);
    for (int save = 0; save < 2; ++save) {
      test::PdfFile pdf(document.SaveToString());
      EXPECT_EQ(pdf.Content(0), before + "Q\nQ\nQ\nQ\nQ\n") << length;
      EXPECT_EQ(ContentOf(page), before) << length;
    }
    Call<HPDF_Page_GRestore>(page);
    EXPECT_EQ(ContentOf(page), before + "Q\n") << length;
  }
}

// The leak would be found by the sanitizer, and by the count below.
int allocations = 0;

void *CountAllocation(HPDF_UINT size) {
  ++allocations;
  return std::malloc(size);
}

void CountFree(void *memory) {
  --allocations;
  std::free(memory);
}

TEST(Document, GivesBackEveryStateThatAPageSaved) {
  HPDF_Doc document = HPDF_NewEx(nullptr, &CountAllocation, &CountFree, 0, nullptr);
  HPDF_Page page = Call<engine::AddPage>(document);
  for (int i = 0; i < 5; ++i) Call<HPDF_Page_GSave>(page);
  Call<HPDF_Free>(document);
  EXPECT_EQ(allocations, 0);
}

TEST(Document, LosesNothingWhenAChineseFontIsAskedForInAOneByteEncoding) {
  HPDF_Doc document = HPDF_NewEx(nullptr, &CountAllocation, &CountFree, 0, nullptr);
  Call<HPDF_UseCNTFonts>(document);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Call<engine::GetFont>(document, "MingLiU", "ISO8859-7"), nullptr);
  Call<HPDF_Free>(document);
  EXPECT_EQ(allocations, 0);
}

TEST(Document, NamesThatAreTooLongAreRefused) {
  LibraryDocument document;
  HPDF_Dict dictionary = HPDF_Dict_New(document.document->mmgr);
  const std::string longest(127, 'n');
  EXPECT_EQ(Call<HPDF_Dict_AddName>(dictionary, "Key", longest.c_str()), HPDF_OK);
  const std::string tooLong(128, 'n');
  EXPECT_EQ(Call<HPDF_Dict_AddName>(dictionary, "Key", tooLong.c_str()), HPDF_STATUS{HPDF_NAME_OUT_OF_RANGE});
  auto *name = static_cast<HPDF_Name>(HPDF_Dict_GetItem(dictionary, "Key", HPDF_OCLASS_NAME));
  ASSERT_NE(name, nullptr);
  EXPECT_EQ(name->value, longest);
  HPDF_Dict_Free(dictionary);
}

TEST(Document, EmptyTextsAreEqualAndComparedNoFurther) {
  const char texts[] = "\0a\0\0b";
  EXPECT_EQ(HPDF_StrCmp(texts, texts + 3), 0);
  EXPECT_LT(HPDF_StrCmp("", "a"), 0);
  EXPECT_GT(HPDF_StrCmp("\xE4", "a"), 0);
  EXPECT_LT(HPDF_StrCmp(nullptr, "a"), 0);
  EXPECT_GT(HPDF_StrCmp("a", nullptr), 0);
  EXPECT_NE(HPDF_StrCmp(nullptr, nullptr), 0);
}

TEST(Document, ThatIsNoneHasNothingToSaveOrToTake) {
  HPDF_BYTE byte = 7;
  LibraryDocument document;
  engine::TakeSaved(nullptr, &byte);
  engine::TakeSaved(document.document, &byte);
  EXPECT_EQ(byte, 7) << "nothing was saved yet";
  HPDF_Doc_Rec other{};
  EXPECT_EQ(Call<engine::SaveToMemory>(&other), HPDF_STATUS{HPDF_INVALID_DOCUMENT});
  EXPECT_EQ(Call<engine::SaveToFile>(&other, LibraryPath(std::u16string(u"a.pdf")), nullptr),
            HPDF_STATUS{HPDF_INVALID_DOCUMENT});
}

TEST(Document, TakesItsMemoryFromTheSystemUnlessBothFunctionsAreGiven) {
  static int asked;
  asked = 0;
  const auto allocate = [](HPDF_UINT size) {
    ++asked;
    return std::malloc(size);
  };
  const auto handler = [](HPDF_STATUS, HPDF_STATUS, void *) {};
  const HPDF_Doc half = HPDF_NewEx(handler, allocate, nullptr, 0, nullptr);
  ASSERT_NE(half, nullptr);
  EXPECT_NE(Call<engine::AddPage>(half), nullptr);
  EXPECT_EQ(asked, 0);
  HPDF_Free(half);
  HPDF_Free(HPDF_NewEx(handler, allocate, std::free, 0, nullptr));
  EXPECT_GT(asked, 0);
}

TEST(Document, FreesNothingWhereThereIsNothing) {
  LibraryDocument document;
  HPDF_Obj_Free(document.document->mmgr, nullptr);
  HPDF_Obj_ForceFree(document.document->mmgr, nullptr);
  HPDF_String_Free(nullptr);
  HPDF_Stream_Free(nullptr);
  HPDF_FontDef_Cleanup(nullptr);
  HPDF_FontDef_Free(nullptr);
  HPDF_MMgr_Free(nullptr);
  EXPECT_NE(Call<engine::AddPage>(document.document), nullptr);
}

TEST(Document, WritesNothingOfAHiddenObject) {
  LibraryDocument document;
  const HPDF_Array array = HPDF_Array_New(document.document->mmgr);
  const HPDF_Number shown = HPDF_Number_New(document.document->mmgr, 1);
  const HPDF_Number hidden = HPDF_Number_New(document.document->mmgr, 2);
  hidden->header.obj_id |= HPDF_OTYPE_HIDDEN;
  HPDF_Array_Add(array, shown);
  HPDF_Array_Add(array, hidden);
  const HPDF_Stream stream = HPDF_MemStream_New(document.document->mmgr, 0);
  EXPECT_EQ(HPDF_Obj_Write(array, stream, nullptr), HPDF_OK);
  EXPECT_THAT(ContentOf(stream), testing::AllOf(testing::HasSubstr("1"), testing::Not(testing::HasSubstr("2"))));
  HPDF_Stream_Free(stream);
  HPDF_Obj_ForceFree(document.document->mmgr, array);
}

}  // namespace
}  // namespace quillbar
