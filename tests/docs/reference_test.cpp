// SPDX-License-Identifier: MIT
// The reference describes every member that the plugins register.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/docs/reference_pages.h"
#include "tests/support/pattern.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;

const fs::path kDocs = QUILLBAR_DOCS;

/// A copy of the reference, which the check of the site's build reads.
class Reference : public ::testing::Test {
 protected:
  void SetUp() override {
    if (const std::string reason = ReasonNotToCheck(); !reason.empty()) GTEST_SKIP() << reason;
    fs::create_directory(folder_ / "docs");
    fs::copy(kDocs / "reference", folder_ / "docs/reference", fs::copy_options::recursive);
    for (const char *page : {"reference.md", "coordinates.md"}) fs::copy(kDocs / page, folder_ / "docs" / page);
    const ProcessResult described = RunProcess({fs::path(QUILLBAR_PROGRAM), "describe", "--json"});
    ASSERT_EQ(described.exitStatus, 0) << described.errors;
    WriteFile(folder_ / "description.json", described.output);
  }

  /// What the check finds missing; empty when nothing is.
  std::string Faults() { return FaultsFoundBy("check_reference.py", folder_ / "docs", folder_ / "description.json"); }

  /// What the check finds when a text of a page is another one.
  std::string FaultsWith(const std::string &page, const std::string &text, const std::string &other) {
    const fs::path file = folder_ / "docs/reference" / page;
    const std::string whole = ReadFile(file);
    const std::size_t begin = whole.find(text);
    EXPECT_NE(begin, std::string::npos) << page << " doesn't say " << text;
    if (begin == std::string::npos) return "";
    WriteFile(file, std::string(whole).replace(begin, text.size(), other));
    std::string faults = Faults();
    WriteFile(file, whole);
    return faults;
  }

  TemporaryFolder folder_;
};

TEST_F(Reference, HasWhatEachRegisteredMemberNeeds) { EXPECT_EQ(Faults(), ""); }

/// A text of a page, another one in its place, and what is missing then, after "docs/reference/".
struct Slip {
  const char *page, *text, *other, *faults;
};

constexpr Slip kSlips[] = {
    {"Page.md", "Clip()\n", "", "Page.md: Clip() is missing, or not below a heading that names it\n"},
    {"Page.md", "### Clip\n", "### Clipping\n", "Page.md: Clip() is missing, or not below a heading that names it\n"},
    {"Image.md", "Height as Integer, read-only\n", "Height as Integer, read-only\nDepth as Integer\n",
     "Image.md: Depth as Integer is not registered\n"},
    {"Page.md", "- **Units:** points, degrees\n", "", "Page.md: Arc: has no units, which Arc needs\n"},
    {"Page.md", "- **Modes:** path; error 4177 in others\n", "", "Page.md: Clip: has no modes\n"},
    {"Outline.md", "- **Refused:** nothing\n", "", "Outline.md: Opened: doesn't say what Opened refuses\n"},
    {"Outline.md", "- **Example:**", "- **See:**", "Outline.md: Opened: has no script that uses Opened\n"},
    {"Page.md", "(#showtext-showtextnextline)", "(#showtext)",
     "Page.md: BeginText: has an example at #showtext, a place that isn't there\n"},
    {"Page.md", " picture=reference_clip", "", "Page.md: Clip: has a script that paints, without its picture\n"},
    {"Page.md", "| `BEVEL` | 2 |", "| `BEVEL` | 3 |", "Page.md: LineJoinTypeEnum: has no row of BEVEL, which is 2\n"},
};

TEST_F(Reference, IsRefusedWhereSomethingIsMissing) {
  for (const Slip &slip : kSlips) {
    const std::string faults = FaultsWith(slip.page, slip.text, slip.other);
    EXPECT_EQ(faults.find(std::string("docs/reference/") + slip.faults), 0U) << slip.text << ": " << faults;
  }
  fs::remove(folder_ / "docs/reference/Font.md");
  EXPECT_EQ(Faults(), "docs/reference: Font has no page\n");
}

TEST(ErrorNumbers, OfEveryPageAreInTheTableOfErrors) {
  const std::string table = ReadFile(kDocs / "errors.md");
  std::vector<fs::path> pages;
  for (const char *page : {"reference.md", "text.md", "images.md", "navigation.md", "protection.md", "install.md"})
    pages.push_back(kDocs / page);
  for (const auto &entry : fs::directory_iterator(kDocs / "reference")) pages.push_back(entry.path());
  std::size_t found = 0;
  for (const fs::path &page : pages) {
    const std::string text = ReadFile(page);
    for (const PatternMatch &number : MatchesIn(text, "\\b4[12][0-9]{2}\\b")) {
      EXPECT_NE(table.find("\n| " + number[0] + " |"), std::string::npos) << page << " has " << number[0];
      ++found;
    }
  }
  EXPECT_GT(found, 50u);
}

TEST(ErrorNumbers, OfTheTableAreMadeToHappen) {
  const std::string page = ReadFile(kDocs / "errors.md");
  std::size_t rows = 0;
  for (const PatternMatch &row : MatchesIn(page, "\n\\| (4[0-9]{3}) \\|")) {
    ++rows;
    const std::string &number = row[1];
    // Memory, disks and compressors that fail, and what is done in the middle of a save, have tests of their own.
    if (number == "4117" || number == "4118" || number == "4149" || number == "4198") continue;
    EXPECT_NE(page.find("\n" + number + "\n"), std::string::npos) << number;
  }
  EXPECT_GT(rows, 20u);
}

}  // namespace
}  // namespace quillbar::test
