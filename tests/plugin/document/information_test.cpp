// SPDX-License-Identifier: MIT
// Document information and the viewer's mode.
#include <gmock/gmock.h>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint32_t kModeOutOfRange = 0x1070;

struct Entry {
  const char *property;
  const char *key;
};
constexpr Entry kEntries[] = {{"Author", "/Author"},
                              {"Creator", "/Creator"},
                              {"Title", "/Title"},
                              {"Subject", "/Subject"},
                              {"KeyWords", "/Keywords"}};

using InformationTest = PluginTest;

TEST_F(InformationTest, EntriesThatWereNeverSetReadAsTheEmptyString) {
  const Document document = NewDocument();
  for (const Entry &entry : kEntries) EXPECT_EQ(document.Get(entry.property).Utf8(), "") << entry.property;
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(InformationTest, TextsOfEveryScriptAreReadBackFromTheDocumentAndTheFile) {
  for (const char *text : {"plain", "Größe — 漢字 עברית العربية 😀", "(open \\ closed)", "line\none"}) {
    const Document document = NewDocument();
    document.AddPage();
    for (const Entry &entry : kEntries) {
      document.Set(entry.property, std::string(entry.property) + text);
      EXPECT_EQ(document.Get(entry.property).Utf8(), std::string(entry.property) + text);
    }
    const PdfFile file(document.Saved());
    for (const Entry &entry : kEntries) {
      EXPECT_EQ(file.Information(entry.key), std::string(entry.property) + text) << entry.key;
    }
    const TemporaryFolder folder;
    WriteFile(folder / "file.pdf", file.bytes());
    const ProcessResult shown = RunProcess({"pdfinfo", "-enc", "UTF-8", folder / "file.pdf"});
    EXPECT_THAT(shown.output, HasSubstr("Title"));
    EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
  }
}

TEST_F(InformationTest, TextsInOtherEncodingsAreConverted) {
  const Document document = NewDocument();
  document.Set("Title", host::StringHandle::FromBytes("Gr\xF6\xDF"
                                                      "e",
                                                      static_cast<TextEncoding>(1280)));
  EXPECT_EQ(document.Get("Title").Utf8(), "Größe");
}

TEST_F(InformationTest, NilChangesNothing) {
  const Document document = NewDocument();
  document.Set("Title", "kept");
  document.Set("Title", "");
  EXPECT_EQ(document.Get("Title").Utf8(), "kept");
}

TEST_F(InformationTest, LaterValuesReplaceEarlierOnes) {
  const Document document = NewDocument();
  document.AddPage();
  document.Set("Title", "first");
  document.Set("Title", "second");
  EXPECT_EQ(PdfFile(document.Saved()).Information("/Title"), "second");
}

TEST_F(InformationTest, TooLongTextsRecordAnErrorAndLeaveAGoodFile) {
  const Document document = NewDocument();
  document.AddPage();
  document.Set("Title", "kept");
  document.Set("Title", std::string(100000, 'x'));
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kStringOutOfRange, 0}));
  EXPECT_EQ(document.Get("Title").Utf8(), "kept");
  EXPECT_EQ(PdfFile(document.Saved()).Information("/Title"), "kept");
}

TEST_F(InformationTest, TextsEndAtANul) {
  const Document document = NewDocument();
  document.Set("Title", host::StringHandle::FromUtf8(std::string_view("one\0two", 7)));
  EXPECT_EQ(document.Get("Title").Utf8(), "one");
}

TEST_F(InformationTest, ModesAreKeptAndWritten) {
  const char *names[] = {"/UseNone", "/UseOutlines", "/UseThumbs", "/FullScreen"};
  for (std::int64_t mode = 0; mode < 4; ++mode) {
    const Document document = NewDocument();
    document.AddPage();
    EXPECT_EQ(document.GetInteger("Mode"), 0);
    document.Set("Mode", mode);
    EXPECT_EQ(document.GetInteger("Mode"), mode);
    EXPECT_EQ(PdfFile(document.Saved()).qpdf().getRoot().getKey("/PageMode").getName(), names[mode]);
  }
}

TEST_F(InformationTest, ModesBeyondTheEnumerationRecordAnErrorAndChangeNothing) {
  const Document document = NewDocument();
  document.Set("Mode", std::int64_t{3});
  for (const std::int64_t mode : {std::int64_t{4}, std::int64_t{5}, std::int64_t{-1}, kHighBitOnly}) {
    document.Set("Mode", mode);
    // The library tells the number that it got, 32 bits of it.
    const auto detail = static_cast<std::uint32_t>(sizeof(void *) == 8 && mode == kHighBitOnly ? -1 : mode);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kModeOutOfRange, detail})) << mode;
    EXPECT_EQ(document.GetInteger("Mode"), 3);
  }
}

}  // namespace
}  // namespace quillbar::test
