// The example scripts: their files are whole, readers take them, and everything is given back.
#include <gmock/gmock.h>

#include "tests/support/judges.h"
#include "tests/support/pdf_file.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::HasSubstr;

// Runs an example in a folder of its own and returns the file that it wrote.
std::string FileOf(const std::string &example) {
  const TemporaryFolder folder;
  ProcessOptions options;
  options.workingDirectory = folder.path().string();
  const ProcessResult result = RunProcess(
      {QUILLBAR_PROGRAM, "run", "--account", QUILLBAR_EXAMPLES "/" + example + ".xojo_script", "example.pdf"},
      options);
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

}  // namespace
}  // namespace quillbar::test
