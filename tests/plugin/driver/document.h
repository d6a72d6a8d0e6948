// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "tests/plugin/driver/script_object.h"
#include "tests/support/pdf_file.h"

namespace quillbar::test {

/// What the event ErrorLog tells.
struct Failure {
  std::uint32_t number = 0;
  std::uint32_t detail = 0;

  bool operator==(const Failure &) const = default;
};

std::ostream &operator<<(std::ostream &stream, const Failure &failure);

/// A PDFDocument whose event ErrorLog is noted.
class Document : public ScriptObject {
 public:
  Document() = default;
  Document(host::Host &host, host::ObjectHandle handle);

  ScriptObject AddPage() const { return CallObject("AddPage"); }
  /// `encoding` is a member of Font.FontEncodingEnum by number.
  ScriptObject GetFont(const char *name, std::int64_t encoding = 1) const;

  /// The failures told since the last time this was asked.
  std::vector<Failure> TakeFailures() const { return std::exchange(*failures_, {}); }
  /// What LastErrorNumber and LastErrorDetailNumber read.
  Failure LastFailure() const;

  /// The whole file, through SaveToString.
  std::string Saved() const { return std::string(Call("SaveToString").AsString().Bytes()); }
  /// The operators of a page's content, counted from 0, read back from the saved file.
  std::vector<ContentOperator> Operators(std::size_t page = 0) const { return PdfFile(Saved()).Operators(page); }

 private:
  std::shared_ptr<std::vector<Failure>> failures_ = std::make_shared<std::vector<Failure>>();
};

}  // namespace quillbar::test
