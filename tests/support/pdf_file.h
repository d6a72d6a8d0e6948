// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/content_operator.h"
#include "tests/support/qpdf_headers.h"

namespace quillbar::test {

/// The operators of a content stream outside of any file. Throws std::exception when they can't be read.
std::vector<ContentOperator> OperatorsOf(const std::string &content);

/// A PDF file read back by qpdf. Every object is read and every stream decoded; any complaint of qpdf's fails the
/// test.
class PdfFile {
 public:
  explicit PdfFile(std::string bytes, const char *password = nullptr);

  /// False when the file could not be opened at all.
  bool IsOpen() const { return isOpen_; }

  /// The number of pages.
  std::size_t PageCount() const { return pages_.size(); }

  /// A page, counted from 0. A page that doesn't exist fails the test and reads as an empty one.
  QPDFObjectHandle Page(std::size_t page) const;
  /// The decoded content stream.
  std::string Content(std::size_t page) const;
  std::vector<ContentOperator> Operators(std::size_t page) const;
  /// The page's media box: left, bottom, right, top in points.
  std::array<double, 4> MediaBox(std::size_t page) const;
  /// The dictionary of a font in the page's resources, by its name: "/F1".
  QPDFObjectHandle Font(std::size_t page, const std::string &name) const;

  /// An information entry, by its name ("/Producer"), as UTF-8; empty when it doesn't exist.
  std::string Information(const std::string &key) const;
  /// Whether any stream of the file has this filter: "/FlateDecode".
  bool HasFilter(std::string_view filter) const;

  /// The file in qpdf's own terms.
  QPDF &qpdf() const { return *qpdf_; }
  /// The bytes of the file.
  const std::string &bytes() const { return bytes_; }

 private:
  std::string bytes_;
  std::shared_ptr<QPDF> qpdf_ = QPDF::create();
  std::vector<QPDFObjectHandle> pages_;
  bool isOpen_ = false;
};

}  // namespace quillbar::test
