// SPDX-License-Identifier: MIT
#include "tests/support/document_readers.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kFolder = QUILLBAR_READERS_FOLDER;
const fs::path kScripts = QUILLBAR_READERS_SCRIPTS;

struct Runner {
  const char *name;
  Command command;  // the files follow
  // A file that exists when the reader is installed; empty for one that a Debian package installs.
  fs::path file;
  // A command that shows whether it runs. The system beside a 32-bit Wine is not the one where the readers were
  // installed, and lacks some of them.
  Command trial;
  const char *need;
};

Runner RunnerOf(DocumentReader reader) {
  switch (reader) {
    case DocumentReader::kPdfJs:
      return {"pdf.js",
              {"node", kScripts / "read_with_pdfjs.mjs", kFolder},
              kFolder / "pdfjs/legacy/build/pdf.mjs",
              {"node", "--version"},
              "node"};
    case DocumentReader::kPdfium:
      return {"PDFium",
              {"node", kScripts / "read_with_pdfium.mjs", kFolder},
              kFolder / "pdfium/dist/pdfium.wasm",
              {"node", "--version"},
              "node"};
    case DocumentReader::kPoppler:
      // Debian's Python, whatever other one comes before it in PATH.
      return {"poppler",
              {"/usr/bin/python3", kScripts / "read_with_poppler.py"},
              {},
              {"/usr/bin/python3", "-c", "import gi; gi.require_version('Poppler', '0.18')"},
              "python3-gi and gir1.2-poppler-0.18"};
    default:
      return {"MuPDF", {"mutool", "run", kScripts / "read_with_mupdf.js"}, {}, {"mutool", "-v"}, "mutool"};
  }
}

bool Runs(const Command &trial) {
  try {
    return RunProcess(trial).exitStatus == 0;
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

std::string NameOf(DocumentReader reader) {
  std::string name = RunnerOf(reader).name;
  std::erase(name, '.');
  return name;
}

std::string ReasonToLeaveOut(DocumentReader reader) {
  const Runner runner = RunnerOf(reader);
  if (!runner.file.empty() && !fs::exists(runner.file))
    return std::string("needs ") + runner.name + ", which ./test installs where there is npm";
  return Runs(runner.trial) ? "" : std::string("needs ") + runner.need + " to run " + runner.name;
}

std::vector<ReadDocument> ReadBy(DocumentReader reader, const std::vector<fs::path> &files) {
  const Runner runner = RunnerOf(reader);
  Command command = runner.command;
  command.insert(command.end(), files.begin(), files.end());
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0) << runner.name << ": " << result.errors;
  // Where poppler and MuPDF report errors; the other two are asked for theirs.
  if (runner.file.empty()) {
    EXPECT_EQ(result.errors, "") << runner.name;
  }
  const json answer = json::parse(result.output, nullptr, false);
  // Pages that a test asks for exist, so that the test fails and continues.
  std::vector<ReadDocument> documents(files.size());
  if (!answer.is_array() || answer.size() != files.size()) {
    ADD_FAILURE() << runner.name << " gave no answer for each file";
    return documents;
  }
  for (std::size_t i = 0; i < files.size(); ++i) {
    documents[i] = DocumentFrom(answer[i]);
    for (const std::string warning : answer[i].at("warnings")) ADD_FAILURE() << runner.name << ": " << warning;
  }
  return documents;
}

ReadDocument ReadBy(DocumentReader reader, std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  return ReadBy(reader, {folder / "saved.pdf"}).front();
}

}  // namespace quillbar::test
