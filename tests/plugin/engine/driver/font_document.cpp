// SPDX-License-Identifier: MIT
#include "tests/plugin/engine/driver/font_document.h"

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

std::string MuPdfPicture(std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  const ProcessResult result =
      RunProcess({"mutool", "draw", "-q", "-N", "-r", "36", "-F", "pnm", folder / "saved.pdf", "1"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  return result.output;
}

namespace {

// What Ghostscript prints when it reads the file for an output device.
std::string GhostscriptOutput(const char *device, std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  const ProcessResult result = RunProcess(
      {"gs", "-q", "-dBATCH", "-dNOPAUSE", std::string("-sDEVICE=") + device, "-sOutputFile=-", folder / "saved.pdf"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  return result.output;
}

}  // namespace

std::string GhostscriptText(std::string_view bytes) { return GhostscriptOutput("txtwrite", bytes); }

std::string RewrittenByGhostscript(std::string_view bytes) { return GhostscriptOutput("pdfwrite", bytes); }

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
