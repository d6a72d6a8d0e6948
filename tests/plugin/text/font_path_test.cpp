// SPDX-License-Identifier: MIT
// Font files: paths of every form that the platform knows, and files that are in use.
#include <gmock/gmock.h>

#include <cerrno>

#include "tests/plugin/text/text_page.h"
#include "tests/support/path_forms.h"
#include "tests/support/real_fonts.h"
#include "tests/support/synthetic_font.h"
#include "tests/support/temporary_folder.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string SyntheticFile() {
  const FontBytes font = SyntheticFont().Build();
  return {reinterpret_cast<const char *>(font.data()), font.size()};
}

class FontPath : public TextTest, public testing::WithParamInterface<PathForm::Kind> {};

TEST_P(FontPath, IsTakenForATrueTypeFont) {
  PathForm form(GetParam());
  WriteFile(form.OwnPath("字体.ttf"), SyntheticFile());
  const Document document = NewDocument();
  const ScriptObject font = document.CallObject("LoadTrueTypeFont", NewFolderItem(form.File("字体.ttf")));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  ASSERT_FALSE(font.IsNil());
  EXPECT_EQ(font.GetString("Name"), "Synthetic");
}

TEST_P(FontPath, IsTakenForBothFilesOfAType1Font) {
  QUILLBAR_NEEDS_FONT(kRomanMetrics, "fonts-urw-base35");
  PathForm form(GetParam());
  WriteFile(form.OwnPath("métriques.afm"), ReadFile(kRomanMetrics));
  WriteFile(form.OwnPath("プログラム.t1"), ReadFile(kRomanProgram));
  const Document document = NewDocument();
  const ScriptObject font = document.CallObject("LoadType1Font", NewFolderItem(form.File("métriques.afm")),
                                                NewFolderItem(form.File("プログラム.t1")), font_encoding::kWindowsAnsi);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  ASSERT_FALSE(font.IsNil());
  EXPECT_EQ(font.GetString("Name"), "C059-Roman");
}

INSTANTIATE_TEST_SUITE_P(Forms, FontPath, testing::ValuesIn(ReachablePathForms()),
                         [](const auto &parameter) { return NameOf(parameter.param); });

TEST_F(FontPath, OfAFileThatAnotherProgramHoldsIsAFileOpenErrorWithTheSystemsNumber) {
#ifdef _WIN32
  const TemporaryFolder folder;
  const std::filesystem::path file = folder / "held.ttf";
  WriteFile(file, SyntheticFile());
  const HANDLE holder = CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  const Document document = NewDocument();
  EXPECT_TRUE(document.CallObject("LoadTrueTypeFont", NewFolderItem(file)).IsNil());
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileOpenError, EACCES}));
  CloseHandle(holder);
  EXPECT_FALSE(document.CallObject("LoadTrueTypeFont", NewFolderItem(file)).IsNil());
#else
  GTEST_SKIP() << "a file that is open can be opened again here";
#endif
}

}  // namespace
}  // namespace quillbar::test
