// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/document_contents.h"

namespace quillbar::bench {

/// Writes with libharu's own functions, as a C++ program would.
class LibraryWriter {
 public:
  explicit LibraryWriter(const Lines &lines) : lines_(lines) {}
  LibraryWriter(const LibraryWriter &) = delete;
  LibraryWriter &operator=(const LibraryWriter &) = delete;

  void BeginDocument(bool isCompressed, const std::string &trueTypeFile = {}) {
    document_ = HPDF_New(&LibraryWriter::Fail, nullptr);
    if (isCompressed) HPDF_SetCompressionMode(document_, HPDF_COMP_ALL);
    if (trueTypeFile.empty()) {
      font_ = HPDF_GetFont(document_, "Helvetica", "WinAnsiEncoding");
    } else {
      HPDF_UseUTFEncodings(document_);
      font_ = HPDF_GetFont(document_, HPDF_LoadTTFontFromFile(document_, trueTypeFile.c_str(), HPDF_TRUE), "UTF-8");
    }
  }
  void EndDocument(const std::string &file) {
    HPDF_SaveToFile(document_, file.c_str());
    HPDF_Free(document_);
  }

  void BeginPage() {
    page_ = HPDF_AddPage(document_);
    HPDF_Page_SetSize(page_, HPDF_PAGE_SIZE_A4, HPDF_PAGE_PORTRAIT);
  }
  void EndPage() {}

  void BeginText() { HPDF_Page_BeginText(page_); }
  void SetFont(float size) { HPDF_Page_SetFontAndSize(page_, font_, size); }
  void MoveTextPosition(float x, float y) { HPDF_Page_MoveTextPos(page_, x, y); }
  void ShowText(std::size_t line) { HPDF_Page_ShowText(page_, lines_[line].c_str()); }
  void EndText() { HPDF_Page_EndText(page_); }

  void SetRGBStroke(float r, float g, float b) { HPDF_Page_SetRGBStroke(page_, r, g, b); }
  void SetLineWidth(float width) { HPDF_Page_SetLineWidth(page_, width); }
  void MoveTo(float x, float y) { HPDF_Page_MoveTo(page_, x, y); }
  void LineTo(float x, float y) { HPDF_Page_LineTo(page_, x, y); }
  void CurveTo(float x1, float y1, float x2, float y2, float x3, float y3) {
    HPDF_Page_CurveTo(page_, x1, y1, x2, y2, x3, y3);
  }
  void Rectangle(float x, float y, float width, float height) { HPDF_Page_Rectangle(page_, x, y, width, height); }
  void Stroke() { HPDF_Page_Stroke(page_); }

 private:
  // The documents are valid, so a failure means a broken benchmark. It runs inside libharu's C code, which no
  // exception may cross.
  static void Fail(HPDF_STATUS code, HPDF_STATUS detail, void *) {
    std::fprintf(stderr, "libharu failed with error %lu, detail %lu\n", code, detail);
    std::_Exit(1);
  }

  const Lines &lines_;
  HPDF_Doc document_ = nullptr;
  HPDF_Font font_ = nullptr;
  HPDF_Page page_ = nullptr;
};

}  // namespace quillbar::bench
