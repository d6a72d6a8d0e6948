// SPDX-License-Identifier: MIT
// The example scripts: their files are valid, readers accept them, and the reference ledger balances.
#include <gmock/gmock.h>

#include <filesystem>
#include <vector>

#include "tests/support/judges.h"
#include "tests/support/pdf_file.h"
#include "tests/support/process.h"
#include "tests/support/real_fonts.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::HasSubstr;

// Runs an example in a folder of its own and returns the file that it wrote. The file's name is the last argument.
std::string FileOf(const std::string &example, const Command &arguments = {}) {
  const TemporaryFolder folder;
  ProcessOptions options;
  options.workingDirectory = folder.path();
  Command command = {std::filesystem::path(QUILLBAR_PROGRAM), "run", "--account",
                     std::filesystem::path(QUILLBAR_EXAMPLES) / (example + ".xojo_script")};
  command.insert(command.end(), arguments.begin(), arguments.end());
  command.push_back("example.pdf");
  const ProcessResult result = RunProcess(command, options);
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
  EXPECT_THAT(result.output, HasSubstr("example.pdf"));
  return ReadFile(folder / "example.pdf");
}

TEST(Examples, TourHasTwoPagesThatReadersTake) {
  const std::string tour = FileOf("tour");
  const PdfFile file(tour);
  EXPECT_EQ(file.PageCount(), 2U);
  EXPECT_TRUE(file.HasFilter("/FlateDecode"));
  EXPECT_TRUE(JudgedFlawless(std::string_view(tour)));
}

TEST(Examples, TimeZonesAreListedOverSeveralPages) {
  const std::string directory = FileOf("time_zones");
  EXPECT_GT(PdfFile(directory).PageCount(), 2U);
  EXPECT_TRUE(JudgedFlawless(std::string_view(directory)));
  const std::string text = ExtractedText(directory);
  EXPECT_THAT(text, HasSubstr("Kathmandu"));
  EXPECT_THAT(text, HasSubstr("Honolulu"));
}

TEST(Examples, ContactSheetShowsThePicturesOfAFolder) {
  const std::string sheet = FileOf("contact_sheet", {QUILLBAR_EXAMPLES "/data/pictures"});
  const PdfFile file(sheet);
  EXPECT_EQ(file.Page(0).getKey("/Resources").getKey("/XObject").getKeys().size(), 12U);
  EXPECT_TRUE(file.HasFilter("/DCTDecode"));
  EXPECT_THAT(ExtractedText(sheet), HasSubstr("midnight.png"));
  EXPECT_TRUE(JudgedFlawless(std::string_view(sheet)));
}

TEST(Examples, ReportHasLinksNotesAndBookmarks) {
  const std::string report = FileOf("linked_report");
  const PdfFile file(report);
  EXPECT_EQ(file.PageCount(), 5U);
  EXPECT_EQ(file.Page(0).getKey("/Annots").getArrayNItems(), 5);
  EXPECT_EQ(file.Page(1).getKey("/Annots").getArrayNItems(), 2);
  EXPECT_TRUE(file.qpdf().getRoot().getKey("/Outlines").isDictionary());
  EXPECT_TRUE(JudgedFlawless(std::string_view(report)));
}

TEST(Examples, PosterMixesColors) {
  const std::string poster = FileOf("poster");
  EXPECT_TRUE(JudgedFlawless(std::string_view(poster)));
  EXPECT_EQ(Rendering(poster).PixelAt(420, 475), 0xFFFFFFU) << "where the three lamps meet";
}

TEST(Examples, StatementIsEncrypted) {
  const std::string statement = FileOf("protected_statement");
  EXPECT_EQ(statement.find("Statement of account"), std::string::npos);
  const PdfFile file(statement, "harbour lights");
  EXPECT_TRUE(file.qpdf().isEncrypted());
  EXPECT_TRUE(file.qpdf().ownerPasswordMatched());
  EXPECT_EQ(file.Information("/Title"), "Statement of account");
}

TEST(Examples, LetterCanBeReadInEachOfItsLanguages) {
  QUILLBAR_NEEDS_FONT(kIpaMincho, "fonts-ipafont-mincho");
  QUILLBAR_NEEDS_FONT(kAmiri, "fonts-hosny-amiri");
  QUILLBAR_NEEDS_FONT("/usr/share/fonts/truetype/noto/NotoSansTamil-Regular.ttf", "fonts-noto-core");
  const std::string letter = FileOf("letter_in_sixteen_languages");
  EXPECT_TRUE(JudgedFlawless(std::string_view(letter)));
  const std::string text = ExtractedText(letter);
  for (const char *words :
       {"new house", "schöne Grüße", "dom już stoi", "çay içelim", "είναι έτοιμο", "новый дом", "הבית", "الجديد",
        "خیابان", "प्रिय मित्रो", "প্রিয় বন্ধুরা", "அன்பு நண்பர்களே", "เพื่อนที่รัก", "완성되었습니다", "新しい家", "新房子"})
    EXPECT_THAT(text, HasSubstr(words));
}

TEST(Examples, LetterNamesThePackagesOfFontsThatAreMissing) {
  const TemporaryFolder folder;
  const ProcessResult result =
      RunProcess({std::filesystem::path(QUILLBAR_PROGRAM), "run", "--account",
                  std::filesystem::path(QUILLBAR_EXAMPLES) / "letter_in_sixteen_languages.xojo_script",
                  folder / "example.pdf", folder / "fonts"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("NotoSansTamil-Regular.ttf is missing. Debian has it in the package "
                                       "fonts-noto-core."));
  EXPECT_TRUE(JudgedFlawless(folder / "example.pdf"));
}

TEST(Examples, NameWhatIsMissingAndEndWithStatus1) {
  const TemporaryFolder folder;
  const auto run = [&](const char *example, const Command &arguments) {
    Command command = {std::filesystem::path(QUILLBAR_PROGRAM), "run",
                       std::filesystem::path(QUILLBAR_EXAMPLES) / example};
    command.insert(command.end(), arguments.begin(), arguments.end());
    ProcessOptions options;
    options.workingDirectory = folder.path();
    const ProcessResult result = RunProcess(command, options);
    EXPECT_EQ(result.exitStatus, 1) << example << result.output;
    return result.errors;
  };
  EXPECT_THAT(run("contact_sheet.xojo_script", {"nowhere"}), HasSubstr("There is no folder "));
  EXPECT_THAT(run("type_specimen.xojo_script", {"a.pdf", "nothing.ttf"}), HasSubstr("No TrueType font: nothing.ttf"));
  EXPECT_THAT(run("mail_merge.xojo_script", {"nothing.csv"}), HasSubstr("No such file: "));
  EXPECT_THAT(run("tour.xojo_script", {"nowhere/a.pdf"}), HasSubstr("The file could not be written: "));
}

TEST(Examples, EssaysFillTheirColumnsAndCanBeRead) {
  QUILLBAR_NEEDS_FONT(kIpaMincho, "fonts-ipafont-mincho");
  const std::string essays = FileOf("japanese_and_chinese_essays");
  EXPECT_TRUE(JudgedFlawless(std::string_view(essays)));
  EXPECT_THAT(ExtractedText(essays, 1), testing::AllOf(HasSubstr("名前はまだ無"), HasSubstr("による。）")));
  EXPECT_THAT(ExtractedText(essays, 2), testing::AllOf(HasSubstr("武陵人捕鱼"), HasSubstr("首。）")));
}

TEST(Examples, MailMergeSpellsEachNameOnItsOwnPage) {
  const std::string letters = FileOf("mail_merge", {QUILLBAR_EXAMPLES "/data/members.csv"});
  EXPECT_EQ(PdfFile(letters).PageCount(), 5U);
  EXPECT_TRUE(JudgedFlawless(std::string_view(letters)));
  EXPECT_THAT(ExtractedText(letters, 3), testing::AllOf(HasSubstr("Éva Szűcs"), HasSubstr("24,00 €")));
  EXPECT_THAT(ExtractedText(letters, 5), HasSubstr("Małgorzata Żółkiewska"));
}

TEST(Examples, InvoicesComeFromADatabaseAndAddUp) {
  const std::string invoices = FileOf("invoices");
  const PdfFile file(invoices);
  EXPECT_EQ(file.PageCount(), 11U);
  EXPECT_EQ(file.qpdf().getRoot().getKey("/Outlines").getKey("/Count").getIntValue(), 9) << "eight, and the summary";
  EXPECT_TRUE(JudgedFlawless(std::string_view(invoices)));
  EXPECT_THAT(ExtractedText(invoices, 4),
              testing::AllOf(HasSubstr("Invoice 2026-03-0004"), HasSubstr("Saturday, 28 March 2026"),
                             HasSubstr("VAT 7 % on 561.18"), HasSubstr("3,452.57")));
  EXPECT_THAT(ExtractedText(invoices, 5), testing::AllOf(HasSubstr("Müller & Söhne"), HasSubstr("Carried forward")));
  EXPECT_THAT(ExtractedText(invoices, 6), HasSubstr("Brought forward"));
  EXPECT_THAT(ExtractedText(invoices, 11), testing::AllOf(HasSubstr("Bodega Íñigo Núñez"), HasSubstr("57,024.92")));
}

TEST(Examples, LabelsFillTheirSheets) {
  const std::string labels = FileOf("labels");
  EXPECT_EQ(PdfFile(labels).PageCount(), 4U);
  EXPECT_TRUE(JudgedFlawless(std::string_view(labels)));
  EXPECT_THAT(ExtractedText(labels, 1), HasSubstr("Oak-smoked Cheddar"));
  EXPECT_THAT(ExtractedText(labels, 3), testing::AllOf(HasSubstr("QB-260317/2"), HasSubstr("Åsa Öberg")));
  EXPECT_THAT(FileOf("labels", {"20"}), testing::Not(testing::IsEmpty()));
}

TEST(Examples, SalesReportCountsFiftyThousandRows) {
  const std::string report = FileOf("sales_report");
  const PdfFile file(report);
  EXPECT_EQ(file.PageCount(), 11U);
  EXPECT_EQ(file.Page(0).getKey("/Annots").getArrayNItems(), 5);
  EXPECT_TRUE(JudgedFlawless(std::string_view(report)));
  EXPECT_THAT(ExtractedText(report, 1), testing::AllOf(HasSubstr("50,000 sales"), HasSubstr("page 10"),
                                                       HasSubstr("1,130,108.58"), HasSubstr("5,710,101.05")));
  EXPECT_THAT(ExtractedText(report, 3), testing::AllOf(HasSubstr("Subtotal Hythe E"), HasSubstr("Total East")));
}

TEST(Examples, MagazinePageAndTypeSpecimenAreWhole) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  for (const char *example : {"magazine_page", "type_specimen"})
    EXPECT_TRUE(JudgedFlawless(std::string_view(FileOf(example)))) << example;
}

}  // namespace
}  // namespace quillbar::test
