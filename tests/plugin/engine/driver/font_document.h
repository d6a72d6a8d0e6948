// SPDX-License-Identifier: MIT
// A library document for tests of fonts: fonts loaded from files, text shown on one page, the saved file read
// back.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/plugin/engine/driver/library_path.h"
#include "tests/support/judges.h"
#include "tests/support/pdf_file.h"
#include "tests/support/synthetic_font.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {

class FontDocument : public LibraryDocument {
 public:
  FontDocument() {
    Call<HPDF_UseUTFEncodings>(document);
    page = Call<engine::AddPage>(document);
  }

  /// The name under which the library has the font; null if it was refused.
  const char *Load(const std::filesystem::path &file) {
    return Call<engine::LoadTrueTypeFont>(document, LibraryPath(file));
  }
  const char *Load(const FontBytes &font) {
    WriteFile(folder_ / "font.ttf", {reinterpret_cast<const char *>(font.data()), font.size()});
    return Load(folder_ / "font.ttf");
  }
  const char *LoadType1(const std::filesystem::path &metrics, const std::filesystem::path &program) {
    return Call<engine::LoadType1Font>(document, LibraryPath(metrics), LibraryPath(program));
  }

  HPDF_Font Font(const char *name, const char *encoder = "UTF-8") {
    return name == nullptr ? nullptr : Call<engine::GetFont>(document, name, encoder);
  }

  /// Shows a text in 20 points, each one 30 points below the last.
  HPDF_STATUS Show(HPDF_Font font, std::string_view text) {
    Call<HPDF_Page_BeginText>(page);
    Call<HPDF_Page_SetFontAndSize>(page, font, 20.0F);
    Call<HPDF_Page_MoveTextPos>(page, 40.0F, height_ -= 30);
    const HPDF_STATUS status = Call<HPDF_Page_ShowText>(page, std::string(text).c_str());
    Call<HPDF_Page_EndText>(page);
    return status;
  }

  HPDF_Page page = nullptr;
  const std::filesystem::path &Folder() const { return folder_.path(); }

 private:
  TemporaryFolder folder_;
  float height_ = 820;
};

/// What four judges say about a saved file.
inline testing::AssertionResult Flawless(std::string_view saved) { return JudgedFlawless(saved); }

/// `text` as MuPDF reads it, one line each.
std::string MuPdfText(std::string_view bytes);

/// The first page as MuPDF draws it, at 36 dots an inch.
std::string MuPdfPicture(std::string_view bytes);

/// The same as Ghostscript reads it.
std::string GhostscriptText(std::string_view bytes);

/// The file as Ghostscript writes it anew.
std::string RewrittenByGhostscript(std::string_view bytes);

/// The embedded TrueType program of the page's font, whatever its kind.
FontBytes EmbeddedProgram(const PdfFile &file, const std::string &name = "/F1");

/// Without white space at both ends.
std::string Trimmed(std::string text);

}  // namespace quillbar::test
