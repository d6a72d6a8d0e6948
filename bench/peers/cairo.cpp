// SPDX-License-Identifier: MIT
// cairo: its y runs down the page, its streams are always compressed, and it embeds the part of a font that is used.
#include <cairo-pdf.h>

#include <cstddef>
#include <stdexcept>

#include "bench/peers/peer_program.h"

namespace quillbar::bench {
namespace {

constexpr double kWidth = 595.276;
constexpr double kHeight = 841.89;

class CairoWriter {
 public:
  explicit CairoWriter(const Lines &lines) : lines_(lines) {}

  void BeginDocument(bool isCompressed, const char *file) {
    if (!isCompressed) throw std::runtime_error("cairo only writes compressed documents");
    surface_ = cairo_pdf_surface_create(file, kWidth, kHeight);
    context_ = cairo_create(surface_);
  }
  void EndDocument() {
    cairo_surface_finish(surface_);
    const cairo_status_t status = cairo_surface_status(surface_);
    cairo_destroy(context_);
    cairo_surface_destroy(surface_);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
  }
  void BeginPage() {}
  void EndPage() { cairo_show_page(context_); }

  void BeginText() { x_ = y_ = 0; }
  void EndText() {}
  void SetFont(double size) {
    cairo_select_font_face(context_, "Helvetica", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context_, size);
  }
  void MoveTextPosition(double x, double y) {
    x_ += x;
    y_ += y;
  }
  void ShowText(std::size_t line) {
    cairo_move_to(context_, x_, kHeight - y_);
    cairo_show_text(context_, lines_[line].c_str());
  }

  void SetRGBStroke(double r, double g, double b) { cairo_set_source_rgb(context_, r, g, b); }
  void SetLineWidth(double width) { cairo_set_line_width(context_, width); }
  void MoveTo(double x, double y) { cairo_move_to(context_, x, kHeight - y); }
  void LineTo(double x, double y) { cairo_line_to(context_, x, kHeight - y); }
  void CurveTo(double x1, double y1, double x2, double y2, double x3, double y3) {
    cairo_curve_to(context_, x1, kHeight - y1, x2, kHeight - y2, x3, kHeight - y3);
  }
  void Rectangle(double x, double y, double width, double height) {
    cairo_rectangle(context_, x, kHeight - y - height, width, height);
  }
  void Stroke() { cairo_stroke(context_); }

 private:
  const Lines &lines_;
  cairo_surface_t *surface_ = nullptr;
  cairo_t *context_ = nullptr;
  double x_ = 0, y_ = 0;
};

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  return quillbar::bench::WriteAsPeer<quillbar::bench::CairoWriter>(argumentCount, arguments);
}
