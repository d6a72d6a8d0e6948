#include "tests/text/font_document.h"

#include <sstream>
#include <stdexcept>

#include "tests/support/process.h"

namespace quillbar::test {

std::string MuPdfText(std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  const ProcessResult result = RunProcess({"mutool", "draw", "-q", "-N", "-F", "text", folder / "saved.pdf"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  return result.output;
}

namespace {

// What Ghostscript prints when it reads the file for an output device.
std::string GhostscriptOutput(const char *device, std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  const ProcessResult result =
      RunProcess({"gs", "-q", "-dBATCH", "-dNOPAUSE", std::string("-sDEVICE=") + device, "-sOutputFile=-",
                  folder / "saved.pdf"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  return result.output;
}

}  // namespace

std::string GhostscriptText(std::string_view bytes) { return GhostscriptOutput("txtwrite", bytes); }

std::string RewrittenByGhostscript(std::string_view bytes) { return GhostscriptOutput("pdfwrite", bytes); }

namespace {

// The system beside a 32-bit Wine is another one than that where pdf.js was fetched, and has no node.
bool NodeRuns() {
  try {
    return RunProcess({"node", "--version"}).exitStatus == 0;
  } catch (const std::runtime_error &) {
    return false;
  }
}

}  // namespace

std::filesystem::path PdfJsFolder() {
  const std::filesystem::path folder = QUILLBAR_PDFJS_DIR;
  const bool isThere = std::filesystem::exists(folder / "legacy/build/pdf.mjs");
  return isThere && NodeRuns() ? folder : std::filesystem::path();
}

std::string PdfJsText(std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  const ProcessResult result =
      RunProcess({"node", std::filesystem::path(QUILLBAR_PDFJS_SCRIPT), PdfJsFolder(), folder / "saved.pdf"});
  EXPECT_EQ(result.exitStatus, 0);
  // pdf.js looks for a drawing library that only rendering needs.
  std::istringstream errors(result.errors);
  for (std::string line; std::getline(errors, line);) {
    if (line.find("annot load \"") == std::string::npos && line.find("annot polyfill") == std::string::npos)
      ADD_FAILURE() << "pdf.js: " << line;
  }
  return result.output;
}

FontBytes EmbeddedProgram(const PdfFile &file, const std::string &name) {
  QPDFObjectHandle font = file.Font(0, name);
  if (font.hasKey("/DescendantFonts")) font = font.getKey("/DescendantFonts").getArrayItem(0);
  const auto data = font.getKey("/FontDescriptor").getKey("/FontFile2").getStreamData(qpdf_dl_all);
  return {data->getBuffer(), data->getBuffer() + data->getSize()};
}

std::string Trimmed(std::string text) {
  constexpr std::string_view kSpace = " \t\r\n\f";
  const std::size_t first = text.find_first_not_of(kSpace);
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

}  // namespace quillbar::test
