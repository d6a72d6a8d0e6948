// SPDX-License-Identifier: MIT
// Protected files in qpdf, poppler and MuPDF: for both revisions and every key length.
#include <gmock/gmock.h>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "plugin/engine/security/encryption_mode.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/support/process.h"
#include "tests/support/sample.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Setting {
  int revision;
  unsigned keyLength;  // bytes
};

// Each is read by three programs with several passwords.
std::vector<Setting> AllSettings() {
  std::vector<Setting> settings = {{2, 5}, {2, 16}, {3, 0}};
  const unsigned step = TakesSamples() ? 11 : 1;
  for (unsigned keyLength = 5; keyLength <= 16; keyLength += step) settings.push_back({3, keyLength});
  return settings;
}

std::ostream &operator<<(std::ostream &stream, const Setting &setting) {
  return stream << "revision " << setting.revision << ", " << setting.keyLength << " bytes";
}

/// How the three programs fare with a file and a password; an empty one is none.
struct Opened {
  ProcessResult qpdf, poppler, muPdf;
};

Opened Open(std::string_view pdf, const std::string &password, const char *popplerOption = "-upw") {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder / "file.pdf";
  WriteFile(file, pdf);
  Opened opened;
  opened.qpdf = RunProcess({"qpdf", "--password=" + password, "--check", file});
  Command poppler = {"pdftotext", file, "-"};
  if (!password.empty()) poppler.insert(poppler.begin() + 1, {popplerOption, password});
  opened.poppler = RunProcess(poppler);
  opened.muPdf = RunProcess({"mutool", "draw", "-q", "-F", "txt", "-p", password, file});
  return opened;
}

void ExpectOpen(const Opened &opened) {
  EXPECT_EQ(opened.qpdf.exitStatus, 0) << opened.qpdf.output << opened.qpdf.errors;
  EXPECT_THAT(opened.poppler.output, HasSubstr("secret figures")) << opened.poppler.errors;
  EXPECT_THAT(opened.muPdf.output, HasSubstr("secret figures")) << opened.muPdf.errors;
}

void ExpectRefused(const Opened &opened) {
  EXPECT_THAT(opened.qpdf.errors, HasSubstr("invalid password"));
  EXPECT_THAT(opened.poppler.errors, HasSubstr("Incorrect password"));
  EXPECT_NE(opened.muPdf.exitStatus, 0);
  EXPECT_THAT(opened.muPdf.output, Not(HasSubstr("secret")));
}

TEST(ProtectedFile, WithBothPasswordsOpensWithEitherAndNotWithout) {
  for (const Setting &setting : AllSettings()) {
    SCOPED_TRACE(setting);
    LibraryDocument document;
    HPDF_Page page = quillbar::Call<quillbar::engine::AddPage>(document.document);
    HPDF_Font font = quillbar::Call<engine::GetFont>(document.document, "Helvetica", nullptr);
    quillbar::Call<HPDF_Page_BeginText>(page);
    quillbar::Call<HPDF_Page_SetFontAndSize>(page, font, 20.0F);
    quillbar::Call<HPDF_Page_ShowText>(page, "secret figures");
    quillbar::Call<HPDF_Page_EndText>(page);
    ASSERT_EQ(quillbar::Call<HPDF_SetPassword>(document.document, "owner word", "user word"), HPDF_OK);
    ASSERT_EQ(quillbar::Call<engine::SetEncryptionMode>(
                  document.document, static_cast<HPDF_EncryptMode>(setting.revision), setting.keyLength),
              HPDF_OK);
    const std::string saved = document.SaveToString();
    EXPECT_THAT(saved, Not(HasSubstr("secret")));
    ExpectOpen(Open(saved, "user word"));
    ExpectOpen(Open(saved, "owner word", "-opw"));
    ExpectRefused(Open(saved, ""));
    ExpectRefused(Open(saved, "another word"));
  }
}

class PasswordTest : public PluginTest {
 protected:
  Document NewStatement() {
    Document document = NewDocument();
    const ScriptObject page = document.AddPage();
    page.Call("BeginText");
    page.Call("SetFont", document.GetFont("Helvetica"), 20.0F);
    page.Call("MoveTextPosition", 50.0F, 500.0F);
    page.Call("ShowText", "secret figures");
    page.Call("EndText");
    return document;
  }
};

TEST_F(PasswordTest, OwnerPasswordGivesItsRightsInEveryRevisionAndKeyLength) {
  for (const Setting &setting : AllSettings()) {
    SCOPED_TRACE(setting);
    const Document document = NewStatement();
    document.Call("SetPassword", "owner word", "");
    EXPECT_EQ(document.LastFailure().number, 0U);
    document.Call("SetEncryptionMode", std::int64_t{setting.revision}, std::int64_t{setting.keyLength});
    EXPECT_EQ(document.LastFailure().number, 0U);
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
    const std::string saved = document.Saved();
    EXPECT_THAT(saved, Not(HasSubstr("secret")));

    const Opened opened = Open(saved, "owner word", "-opw");
    ExpectOpen(opened);
    EXPECT_THAT(opened.qpdf.output, HasSubstr("Supplied password is owner password"));
    EXPECT_THAT(opened.qpdf.output, HasSubstr("R = " + std::to_string(setting.revision)));

    // A wrong password is refused. Without any the file opens for reading: its user password is the empty
    // one.
    const Opened wrong = Open(saved, "another word");
    EXPECT_THAT(wrong.qpdf.errors, HasSubstr("invalid password"));
    EXPECT_THAT(wrong.poppler.errors, HasSubstr("Incorrect password"));
    const Opened without = Open(saved, "");
    ExpectOpen(without);
    EXPECT_THAT(without.qpdf.output, Not(HasSubstr("Supplied password is owner password")));
  }
}

TEST_F(PasswordTest, ProtectedDocumentCanBeSavedAgain) {
  const Document document = NewStatement();
  document.Call("SetPassword", "owner word", "");
  document.Call("SetEncryptionMode", std::int64_t{3}, std::int64_t{16});
  for (int save = 0; save < 3; ++save) ExpectOpen(Open(document.Saved(), "owner word", "-opw"));
}

TEST_F(PasswordTest, ProtectedTextsAndStreamsAreReadBack) {
  const Document document = NewCompressedDocument();
  document.Set("Title", "Kontoauszug — 漢字");
  document.AddPage().Call("CreateTextAnnotation", "Größe (1) \\", 0.0F, 0.0F, 10.0F, 10.0F);
  document.Call("CreateOutline", host::Value::Nil(), "Anhang ä");
  document.Call("SetPassword", "owner word", "");
  const PdfFile file(document.Saved(), "owner word");
  EXPECT_EQ(file.Information("/Title"), "Kontoauszug — 漢字");
  EXPECT_EQ(file.Page(0).getKey("/Annots").getArrayItem(0).getKey("/Contents").getUTF8Value(), "Größe (1) \\");
  EXPECT_EQ(file.qpdf().getRoot().getKey("/Outlines").getKey("/First").getKey("/Title").getUTF8Value(), "Anhang ä");
}

TEST_F(PasswordTest, PasswordsAreCutAfterThirtyTwoBytes) {
  const Document document = NewStatement();
  document.Call("SetPassword", std::string(40, 'p'), "");
  ExpectOpen(Open(document.Saved(), std::string(32, 'p'), "-opw"));
}

TEST_F(PasswordTest, NilOwnerPasswordStoresTheErrorWithoutAnEvent) {
  const Document document = NewDocument();
  document.Call("SetPassword", "", "user word");
  EXPECT_EQ(document.LastFailure().number, 4113U);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(PasswordTest, BothPasswordsRaiseTheErrorAndLeaveTheDocumentUnprotected) {
  const Document document = NewStatement();
  document.Call("SetPassword", "owner word", "user word");
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{0x1011, 0}));
  EXPECT_EQ(document.LastFailure().number, 0x1011U);
  ExpectOpen(Open(document.Saved(), ""));
  EXPECT_THAT(document.Saved(), Not(HasSubstr("/Encrypt")));
}

TEST_F(PasswordTest, SuccessfulModeClearsTheLastErrorAndLeavesItsDetail) {
  const Document document = NewDocument();
  document.Call("SetPassword", "owner word", "");
  document.AddPage().Set("LineWidth", -1.0F);
  ASSERT_NE(document.LastFailure().number, 0U);
  document.TakeFailures();
  document.Call("SetEncryptionMode", std::int64_t{3}, std::int64_t{16});
  EXPECT_EQ(document.LastFailure().number, 0U);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(PasswordTest, ModesThatNoViewerOpensAreRefused) {
  const Document document = NewStatement();
  document.Call("SetEncryptionMode", std::int64_t{3}, std::int64_t{16});
  EXPECT_EQ(document.LastFailure().number, 0x100BU) << "no password yet";
  document.Call("SetPassword", "owner word", "");
  document.TakeFailures();
  for (const std::int64_t revision :
       {std::int64_t{0}, std::int64_t{1}, std::int64_t{4}, std::int64_t{-2}, kHighBitOnly + 3}) {
    document.Call("SetEncryptionMode", revision, std::int64_t{16});
    EXPECT_EQ(document.LastFailure().number, library_error::kInvalidParameter) << revision;
  }
  for (const std::int64_t keyLength :
       {std::int64_t{1}, std::int64_t{4}, std::int64_t{17}, std::int64_t{128}, std::int64_t{-5}, kHighBitOnly + 5}) {
    document.Call("SetEncryptionMode", std::int64_t{3}, keyLength);
    EXPECT_EQ(document.LastFailure().number, 0x102CU) << keyLength;
  }
  ExpectOpen(Open(document.Saved(), "owner word", "-opw"));
}

}  // namespace
}  // namespace quillbar::test
