// SPDX-License-Identifier: MIT
// PoDoFo 0.9, with the document that it offers for speed: each page is written to the file when it is finished.
#include <podofo/podofo.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/peers/peer_program.h"

namespace quillbar::bench {
namespace {

class PodofoWriter {
 public:
  explicit PodofoWriter(const Lines &lines) : lines_(lines) {}

  void BeginDocument(bool isCompressed, const char *file) {
    PoDoFo::PdfStream::eDefaultFilter = isCompressed ? PoDoFo::ePdfFilter_FlateDecode : PoDoFo::ePdfFilter_None;
    document_ = std::make_unique<PoDoFo::PdfStreamedDocument>(file);
    font_ = document_->CreateFont("Helvetica");
    if (font_ == nullptr) throw std::runtime_error("PoDoFo has no Helvetica");
  }
  void EndDocument() {
    document_->Close();
    document_.reset();
  }
  void BeginPage() {
    painter_.SetPage(document_->CreatePage(PoDoFo::PdfPage::CreateStandardPageSize(PoDoFo::ePdfPageSize_A4)));
  }
  void EndPage() { painter_.FinishPage(); }

  void BeginText() { hasBegun_ = false; }
  void SetFont(double size) {
    font_->SetFontSize(static_cast<float>(size));
    painter_.SetFont(font_);
  }
  void MoveTextPosition(double x, double y) {
    if (hasBegun_) {
      painter_.MoveTextPos(x, y);
    } else {
      painter_.BeginText(x, y);
    }
    hasBegun_ = true;
  }
  void ShowText(std::size_t line) { painter_.AddText(PoDoFo::PdfString(lines_[line])); }
  void EndText() { painter_.EndText(); }

  void SetRGBStroke(double r, double g, double b) { painter_.SetStrokingColor(r, g, b); }
  void SetLineWidth(double width) { painter_.SetStrokeWidth(width); }
  void MoveTo(double x, double y) { painter_.MoveTo(x, y); }
  void LineTo(double x, double y) { painter_.LineTo(x, y); }
  void CurveTo(double x1, double y1, double x2, double y2, double x3, double y3) {
    painter_.CubicBezierTo(x1, y1, x2, y2, x3, y3);
  }
  void Rectangle(double x, double y, double width, double height) { painter_.Rectangle(x, y, width, height); }
  void Stroke() { painter_.Stroke(); }

 private:
  const Lines &lines_;
  std::unique_ptr<PoDoFo::PdfStreamedDocument> document_;
  PoDoFo::PdfFont *font_ = nullptr;
  PoDoFo::PdfPainter painter_;
  bool hasBegun_ = false;
};

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  return quillbar::bench::WriteAsPeer<quillbar::bench::PodofoWriter>(argumentCount, arguments);
}
