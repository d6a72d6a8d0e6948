// SPDX-License-Identifier: MIT
#include "tests/plugin/calls/file_complaints.h"

#include <qpdf/qpdf-c.h>

#include <memory>

namespace quillbar::test {

namespace {

// The library's C interface: not every compiler of the fuzz targets takes the other's headers.
struct Cleanup {
  void operator()(qpdf_data document) const { qpdf_cleanup(&document); }
};
using Document = std::unique_ptr<_qpdf_data, Cleanup>;

bool Opens(qpdf_data document, std::string_view file, const std::string &password) {
  return (qpdf_read_memory(document, "file", file.data(), file.size(), password.c_str()) & QPDF_ERRORS) == 0;
}

std::string ErrorOf(qpdf_data document) {
  const qpdf_error error = qpdf_get_error(document);
  return error == nullptr ? "" : std::string(qpdf_get_error_full_text(document, error)) + "\n";
}

}  // namespace

std::string FileComplaints(std::string_view file, const std::vector<std::string> &passwords) {
  Document document;
  const auto open = [&](const std::string &password) {
    document.reset(qpdf_init());
    qpdf_silence_errors(document.get());
    qpdf_set_suppress_warnings(document.get(), QPDF_TRUE);
    return Opens(document.get(), file, password);
  };
  bool isOpen = open("");
  for (std::size_t i = 0; !isOpen && i < passwords.size(); ++i) isOpen = open(passwords[i]);
  std::string complaints;
  if (isOpen) qpdf_check_pdf(document.get());
  complaints += ErrorOf(document.get());
  while (qpdf_more_warnings(document.get())) {
    complaints += std::string(qpdf_get_error_full_text(document.get(), qpdf_next_warning(document.get()))) + "\n";
  }
  return complaints;
}

}  // namespace quillbar::test
