// SPDX-License-Identifier: MIT
#include "tests/support/pdf_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <qpdf/Buffer.hh>
#include <stdexcept>
#include <utility>

namespace quillbar::test {
namespace {

Operand OperandOf(QPDFObjectHandle object) {
  if (object.isNumber()) return {Operand::Kind::kNumber, object.getNumericValue(), object.unparse(), {}};
  if (object.isName()) return {Operand::Kind::kName, 0, object.getName(), {}};
  if (object.isString()) return {Operand::Kind::kString, 0, object.getStringValue(), {}};
  if (object.isArray()) {
    Operand array{Operand::Kind::kArray, 0, {}, {}};
    for (const QPDFObjectHandle &element : object.getArrayAsVector()) array.elements.push_back(OperandOf(element));
    return array;
  }
  return {Operand::Kind::kOther, 0, object.unparse(), {}};
}

class OperatorCollector : public QPDFObjectHandle::ParserCallbacks {
 public:
  void handleObject(QPDFObjectHandle object, std::size_t offset, std::size_t) override {
    if (!object.isOperator()) {
      operands_.push_back(OperandOf(object));
      return;
    }
    operators.push_back({object.getOperatorValue(), std::exchange(operands_, {}), offset});
  }
  void handleEOF() override {
    if (operands_.empty()) return;
    throw std::runtime_error(std::to_string(operands_.size()) + " operands without an operator at the end");
  }

  std::vector<ContentOperator> operators;

 private:
  std::vector<Operand> operands_;
};

bool UsesFilter(QPDFObjectHandle stream, std::string_view filter) {
  return stream.getDict().getKey("/Filter").unparse().find(filter) != std::string::npos;
}

}  // namespace

std::vector<ContentOperator> OperatorsOf(const std::string &content) {
  const std::shared_ptr<QPDF> holder = QPDF::create();
  holder->setSuppressWarnings(true);
  holder->emptyPDF();
  OperatorCollector collector;
  QPDFObjectHandle::newStream(holder.get(), content).parseAsContents(&collector);
  return std::move(collector.operators);
}

PdfFile::PdfFile(std::string bytes, const char *password) : bytes_(std::move(bytes)) {
  qpdf_->setSuppressWarnings(true);
  try {
    qpdf_->processMemoryFile("saved.pdf", bytes_.data(), bytes_.size(), password);
    for (QPDFObjectHandle &object : qpdf_->getAllObjects()) {
      // JPEG data stays as it is: qpdf decodes it only on request.
      if (object.isStream() && !UsesFilter(object, "/DCTDecode")) object.getStreamData(qpdf_dl_generalized);
    }
    pages_ = qpdf_->getAllPages();
    isOpen_ = true;
  } catch (const std::exception &problem) {
    ADD_FAILURE() << "qpdf: " << problem.what();
  }
  for (const QPDFExc &warning : qpdf_->getWarnings()) ADD_FAILURE() << "qpdf: " << warning.what();
}

QPDFObjectHandle PdfFile::Page(std::size_t page) const {
  if (page >= pages_.size()) {
    ADD_FAILURE() << "the file has " << pages_.size() << " pages and none with index " << page;
    return QPDFObjectHandle::newDictionary();
  }
  return pages_[page];
}

std::string PdfFile::Content(std::size_t page) const {
  QPDFObjectHandle contents = Page(page).getKey("/Contents");
  if (!contents.isStream()) return {};
  const std::shared_ptr<Buffer> data = contents.getStreamData(qpdf_dl_generalized);
  return {reinterpret_cast<const char *>(data->getBuffer()), data->getSize()};
}

std::vector<ContentOperator> PdfFile::Operators(std::size_t page) const {
  OperatorCollector collector;
  try {
    Page(page).parsePageContents(&collector);
  } catch (const std::exception &problem) {
    ADD_FAILURE() << "qpdf, reading the content of page " << page << ": " << problem.what();
  }
  for (const QPDFExc &warning : qpdf_->getWarnings()) ADD_FAILURE() << "qpdf: " << warning.what();
  return std::move(collector.operators);
}

std::array<double, 4> PdfFile::MediaBox(std::size_t page) const {
  const QPDFObjectHandle::Rectangle box = Page(page).getKey("/MediaBox").getArrayAsRectangle();
  return {box.llx, box.lly, box.urx, box.ury};
}

QPDFObjectHandle PdfFile::Font(std::size_t page, const std::string &name) const {
  return Page(page).getKey("/Resources").getKey("/Font").getKey(name);
}

std::string PdfFile::Information(const std::string &key) const {
  QPDFObjectHandle information = qpdf_->getTrailer().getKey("/Info");
  if (!information.isDictionary() || !information.hasKey(key)) return {};
  return information.getKey(key).getUTF8Value();
}

bool PdfFile::HasFilter(std::string_view filter) const {
  for (QPDFObjectHandle &object : qpdf_->getAllObjects()) {
    if (object.isStream() && UsesFilter(object, filter)) return true;
  }
  return false;
}

}  // namespace quillbar::test
