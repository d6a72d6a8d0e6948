// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "bench/document_contents.h"
#include "host/runtime/host.h"

namespace quillbar::bench {

/// Writes through the plugin's registered functions, called by address with the C types of their
/// declarations, as the commercial host calls them.
class PluginWriter {
 public:
  explicit PluginWriter(const Lines &lines);
  PluginWriter(const PluginWriter &) = delete;
  PluginWriter &operator=(const PluginWriter &) = delete;

  /// Starts a new document, optionally compressed, with text in Helvetica or, unless it is empty, in a TrueType file in
  /// UTF-8; and its file at the end.
  void BeginDocument(bool isCompressed, const std::string &trueTypeFile = {});
  void EndDocument(const std::string &file);

  void BeginPage();
  void EndPage();

  void BeginText() { members_.beginText(page_); }
  void SetFont(float size) { members_.setFont(page_, font_.Get(), size); }
  void MoveTextPosition(float x, float y) { members_.moveTextPosition(page_, x, y); }
  void ShowText(std::size_t line) { members_.showText(page_, lines_[line].Get()); }
  void EndText() { members_.endText(page_); }

  void SetRGBStroke(float r, float g, float b) { members_.setRGBStroke(page_, r, g, b); }
  void SetLineWidth(float width) { members_.setLineWidth(page_, 0, width); }
  void MoveTo(float x, float y) { members_.moveTo(page_, x, y); }
  void LineTo(float x, float y) { members_.lineTo(page_, x, y); }
  void CurveTo(float x1, float y1, float x2, float y2, float x3, float y3) {
    members_.curveTo(page_, x1, y1, x2, y2, x3, y3);
  }
  void Rectangle(float x, float y, float width, float height) { members_.rectangle(page_, x, y, width, height); }
  void Stroke() { members_.draw(page_); }

 private:
  // Registered functions of the members in use; a setter also receives its property's parameter word.
  struct Members {
    Object (*addPage)(Object);
    void (*setSize)(Object, Integer size, Integer direction);
    void (*beginText)(Object);
    void (*setFont)(Object, Object font, float size);
    void (*moveTextPosition)(Object, float, float);
    void (*showText)(Object, String);
    void (*endText)(Object);
    void (*setRGBStroke)(Object, float, float, float);
    void (*setLineWidth)(Object, Integer parameter, float);
    void (*moveTo)(Object, float, float);
    void (*lineTo)(Object, float, float);
    void (*curveTo)(Object, float, float, float, float, float, float);
    void (*rectangle)(Object, float, float, float, float);
    void (*draw)(Object);
  };

  host::Host host_;
  Members members_;
  std::vector<host::StringHandle> lines_;
  std::vector<std::unique_ptr<host::Host::Loan>> loans_;
  host::ObjectHandle document_;
  host::ObjectHandle font_;
  host::ObjectHandle pageHandle_;
  std::unique_ptr<host::Host::Loan> pageLoan_;
  Object page_ = nullptr;
};

}  // namespace quillbar::bench
