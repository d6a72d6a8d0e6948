// A PDF file judged by qpdf, a library that we did not write.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <vector>

namespace quillbar {

// Opens `bytes` as a PDF file, reads every object and decodes every stream; a test fails if qpdf has any
// complaint.
class CheckedPdf {
 public:
  explicit CheckedPdf(std::string bytes, const char *password = nullptr) : bytes_(std::move(bytes)) {
    pdf_->setSuppressWarnings(true);
    try {
      pdf_->processMemoryFile("saved.pdf", bytes_.data(), bytes_.size(), password);
      for (QPDFObjectHandle &object : pdf_->getAllObjects()) {
        if (object.isStream()) object.getStreamData(qpdf_dl_generalized);
      }
    } catch (const std::exception &problem) {
      ADD_FAILURE() << "qpdf: " << problem.what();
    }
    for (const auto &warning : pdf_->getWarnings()) ADD_FAILURE() << "qpdf: " << warning.what();
  }

  QPDF *operator->() { return pdf_.get(); }

  std::size_t PageCount() { return pdf_->getAllPages().size(); }

  // The page at `index`, counted from 0.
  QPDFObjectHandle Page(std::size_t index) { return pdf_->getAllPages().at(index); }

  // The decoded content stream of the page at `index`.
  std::string PageContent(std::size_t index) {
    const std::shared_ptr<Buffer> data = Page(index).getKey("/Contents").getStreamData(qpdf_dl_generalized);
    return {reinterpret_cast<const char *>(data->getBuffer()), data->getSize()};
  }

 private:
  std::string bytes_;
  std::shared_ptr<QPDF> pdf_ = QPDF::create();
};

}  // namespace quillbar
