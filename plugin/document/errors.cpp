// SPDX-License-Identifier: MIT
#include "plugin/document/errors.h"

#include "plugin/engine/errors/error_state.h"
#include "plugin/script/document_data.h"
#include "plugin/script/events.h"

namespace quillbar::document {

namespace {

/// How many `ErrorLog` events of one document may be running, each raised by a failure inside the one before.
constexpr unsigned kDeepestEvent = 16;

}  // namespace

void HPDF_STDCALL HandleLibraryError(HPDF_STATUS errorNumber, HPDF_STATUS detailNumber, void *userData) {
  auto *document = static_cast<PDFDocument *>(userData);
  DocumentData &data = DataOf(document);
  const auto number = static_cast<std::uint32_t>(errorNumber);
  const auto detail = static_cast<std::uint32_t>(detailNumber);
  if (engine::RunningHandlers(data.libraryDocument) <= kDeepestEvent)
    RaiseEvent<ErrorLogEvent>(document, number, detail);
  data.lastErrorDetail = detail;
  data.lastError = number;
}

std::uint32_t GetLastErrorNumber(PDFDocument *document) { return DataOf(document).lastError; }

std::uint32_t GetLastErrorDetailNumber(PDFDocument *document) { return DataOf(document).lastErrorDetail; }

void ClearError(PDFDocument *document) {
  DocumentData &data = DataOf(document);
  data.lastError = 0;
  data.lastErrorDetail = 0;
}

}  // namespace quillbar::document
