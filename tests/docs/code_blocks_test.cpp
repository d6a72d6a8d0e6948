// SPDX-License-Identifier: MIT
// Every script of the documentation runs as it stands, prints what the page says and draws what the picture shows.
#include <gtest/gtest.h>
#include <png.h>

#include <cstdlib>
#include <iostream>
#include <map>

#include "platform/sanitizers.h"
#include "tests/docs/code_blocks.h"
#include "tests/support/judges.h"
#include "tests/support/pattern.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;

const fs::path kDocs = QUILLBAR_DOCS;

/// Why scripts aren't run here; empty where they are.
std::string ReasonToLeaveOut() {
#if defined(_WIN32)
  return "paths of fonts in the scripts are those of Linux";
#elif QUILLBAR_WATCHES_ADDRESSES
  return "the same members and statements have their own tests under sanitizers";
#else
  return "";
#endif
}

std::vector<CodeBlock> AllCodeBlocks() {
  std::vector<CodeBlock> all = CodeBlocksOf(kDocs.parent_path() / "README.md");
  for (const auto &entry : fs::recursive_directory_iterator(kDocs)) {
    if (entry.path().extension() != ".md") continue;
    const std::vector<CodeBlock> blocks = CodeBlocksOf(entry.path());
    all.insert(all.end(), blocks.begin(), blocks.end());
  }
  return all;
}

/// The file of the system that a script reads and that isn't there; empty when all are.
std::string MissingFileOf(const std::string &code) {
  for (const PatternMatch &path : MatchesIn(code, "\"(/usr/share/[^\"]+)\"")) {
    if (!fs::exists(path[1])) return path[1];
  }
  return "";
}

/// A picture in grey, averaged over squares of four pixels, so that differences between releases of a renderer at the
/// edges of letters count little.
struct Squares {
  std::size_t columns = 0, rows = 0;
  std::vector<int> sums;
};

Squares SquaresOf(const fs::path &file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, file.string().c_str()) == 0) throw std::runtime_error(image.message);
  image.format = PNG_FORMAT_GRAY;
  std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
  const png_color white{255, 255, 255};
  if (png_image_finish_read(&image, &white, pixels.data(), 0, nullptr) == 0) throw std::runtime_error(image.message);
  Squares squares{image.width / 4, image.height / 4, {}};
  squares.sums.resize(squares.columns * squares.rows);
  for (std::size_t row = 0; row < squares.rows * 4; ++row) {
    for (std::size_t column = 0; column < squares.columns * 4; ++column) {
      squares.sums[row / 4 * squares.columns + column / 4] += pixels[row * image.width + column];
    }
  }
  return squares;
}

/// Whether the standard fonts look as in the pictures: as poppler shows them with Debian's fonts.
bool HasFontsOfPictures() { return fs::exists("/usr/share/fonts/opentype/urw-base35/NimbusSans-Regular.otf"); }

/// Whether the document looks like the picture; the picture is made anew instead where QUILLBAR_MAKE_PICTURES is set.
void ExpectLooksLike(const fs::path &picture, const fs::path &document) {
  const TemporaryFolder folder;
  const ProcessResult drawn = RunProcess({"pdftoppm", "-png", "-r", "110", "-singlefile", document, folder / "page"});
  ASSERT_EQ(drawn.exitStatus, 0) << drawn.errors;
  if (std::getenv("QUILLBAR_MAKE_PICTURES") != nullptr) {
    fs::copy_file(folder / "page.png", picture, fs::copy_options::overwrite_existing);
    return;
  }
  const Squares shown = SquaresOf(picture);
  const Squares made = SquaresOf(folder / "page.png");
  ASSERT_EQ(made.columns, shown.columns) << picture;
  ASSERT_EQ(made.rows, shown.rows) << picture;
  std::size_t different = 0;
  for (std::size_t square = 0; square < made.sums.size(); ++square) {
    if (std::abs(made.sums[square] - shown.sums[square]) > 16 * 255 / 4) ++different;
  }
  EXPECT_LE(different * 500, made.sums.size()) << picture << " shows something else than the script draws";
}

/// Runs the scripts of the pages in a folder; those of README.md belong to the folder of the guides.
void ExpectToRun(const fs::path &pages) {
  if (!HasFontsOfPictures()) {
    std::cout << "Pictures are not compared: Debian's package fonts-urw-base35 is not here\n";
  }
  const std::vector<CodeBlock> blocks = AllCodeBlocks();
  std::map<std::string, const CodeBlock *> named;
  for (const CodeBlock &block : blocks) {
    if (block.name.empty()) continue;
    EXPECT_TRUE(named.emplace(block.name, &block).second) << "two blocks are named " << block.name;
  }
  for (const CodeBlock &block : blocks) {
    const fs::path folder = block.page.filename() == "README.md" ? kDocs : block.page.parent_path();
    if (folder != pages) continue;
    SCOPED_TRACE(block.page.filename().string() + ":" + std::to_string(block.line));
    std::string code = block.code;
    for (std::string name = block.continued; !name.empty(); name = named.at(name)->continued) {
      ASSERT_TRUE(named.contains(name)) << "no block is named " << name;
      code = named.at(name)->code + code;
    }
    const bool makesDocument = code.find("document As New") != std::string::npos;
    if (makesDocument && code.find("document.Save(") == std::string::npos) {
      code += "document.Save(New FolderItem(\"page.pdf\"))\n";
    }
    if (const std::string missing = MissingFileOf(code); !missing.empty()) {
      std::cout << block.page.filename().string() << ":" << block.line << " is left out: there is no " << missing
                << "\n";
      continue;
    }
    const TemporaryFolder work;
    fs::create_directory(work / "Documents");
    fs::create_directory_symlink(kDocs.parent_path() / "examples", work / "examples");
    WriteFile(work / "block.xojo_script", code);
    ProcessOptions options;
    options.workingDirectory = work.path();
    const ProcessResult result = RunProcess(
        {"env", "HOME=" + work.path().string(), fs::path(QUILLBAR_PROGRAM), "run", "block.xojo_script"}, options);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, block.output);
    EXPECT_TRUE(block.showsPicture) << "the page doesn't show pictures/" << block.picture << ".png";
    bool saved = false;
    for (const auto &entry : fs::recursive_directory_iterator(work.path())) {
      if (entry.path().extension() != ".pdf") continue;
      EXPECT_TRUE(Judged(Judge::kQpdf, entry.path()));
      if (!block.picture.empty() && !saved && HasFontsOfPictures())
        ExpectLooksLike(kDocs / "pictures" / (block.picture + ".png"), entry.path());
      saved = true;
    }
    EXPECT_EQ(saved, makesDocument);
  }
}

TEST(CodeBlocks, OfTheGuidesRunAsTheyStand) {
  if (!ReasonToLeaveOut().empty()) GTEST_SKIP() << ReasonToLeaveOut();
  ExpectToRun(kDocs);
}

TEST(CodeBlocks, OfTheReferenceRunAsTheyStand) {
  if (!ReasonToLeaveOut().empty()) GTEST_SKIP() << ReasonToLeaveOut();
  ExpectToRun(kDocs / "reference");
}

TEST(CodeBlocks, OfTheLanguageRunAsTheyStand) {
  if (!ReasonToLeaveOut().empty()) GTEST_SKIP() << ReasonToLeaveOut();
  ExpectToRun(kDocs / "language");
}

}  // namespace
}  // namespace quillbar::test
