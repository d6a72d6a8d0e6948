#include "tests/support/document_readers.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

struct Runner {
  const char *name;
  const char *script;
  const char *package;  // a file that is there when the package is
};

Runner RunnerOf(DocumentReader reader) {
  return reader == DocumentReader::kPdfJs
             ? Runner{"pdf.js", "read_with_pdfjs.mjs", "pdfjs-dist/legacy/build/pdf.mjs"}
             : Runner{"PDFium", "read_with_pdfium.mjs", "@hyzyla/pdfium/dist/pdfium.wasm"};
}

const fs::path kModules = QUILLBAR_READERS_FOLDER;
const fs::path kScripts = QUILLBAR_READERS_SCRIPTS;

// The system beside a 32-bit Wine is another one than that where the readers were installed, and has no node.
bool NodeRuns() {
  try {
    return RunProcess({"node", "--version"}).exitStatus == 0;
  } catch (const std::runtime_error &) {
    return false;
  }
}

std::vector<ReadBookmark> BookmarksFrom(const json &list) {
  std::vector<ReadBookmark> bookmarks;
  for (const json &item : list)
    bookmarks.push_back({item.at("title"), item.at("page"), BookmarksFrom(item.at("children"))});
  return bookmarks;
}

ReadDocument DocumentFrom(const json &object) {
  ReadDocument document;
  for (const json &page : object.at("pages")) {
    ReadPage read{page.at("text"), {}};
    for (const json &item : page.at("annotations")) {
      read.annotations.push_back({item.at("kind"), item.at("contents"), item.at("address"), item.at("page")});
    }
    document.pages.push_back(std::move(read));
  }
  object.at("information").get_to(document.information);
  document.bookmarks = BookmarksFrom(object.at("bookmarks"));
  return document;
}

}  // namespace

void PrintTo(DocumentReader reader, std::ostream *out) { *out << RunnerOf(reader).name; }

std::string ReasonToLeaveOut(DocumentReader reader) {
  const Runner runner = RunnerOf(reader);
  if (!fs::exists(kModules / runner.package))
    return std::string("needs ") + runner.name + ", which ./test installs where there is npm";
  return NodeRuns() ? "" : std::string("needs node to run ") + runner.name;
}

std::vector<ReadDocument> ReadBy(DocumentReader reader, const std::vector<fs::path> &files) {
  const Runner runner = RunnerOf(reader);
  Command command{"node", kScripts / runner.script, kModules};
  command.insert(command.end(), files.begin(), files.end());
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0) << runner.name << ": " << result.errors;
  const json answer = json::parse(result.output, nullptr, false);
  // Pages that a test asks for are there, so that it fails and goes on.
  std::vector<ReadDocument> documents(files.size());
  if (!answer.is_array() || answer.size() != files.size()) {
    ADD_FAILURE() << runner.name << " gave no answer for each file";
    return documents;
  }
  for (std::size_t i = 0; i < files.size(); ++i) {
    documents[i] = DocumentFrom(answer[i]);
    for (const std::string warning : answer[i].at("warnings"))
      ADD_FAILURE() << runner.name << ": " << warning;
  }
  return documents;
}

ReadDocument ReadBy(DocumentReader reader, std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  return ReadBy(reader, {folder / "saved.pdf"}).front();
}

}  // namespace quillbar::test
