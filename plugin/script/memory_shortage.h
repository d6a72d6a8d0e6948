// SPDX-License-Identifier: MIT
#pragma once

#include "binding/contained.h"
#include "plugin/engine/errors/error_state.h"
#include "plugin/script/document_data.h"

namespace quillbar {

/// The document whose error record an instance's failures go to; null for an instance that no document made.
inline HPDF_Doc ReportingDocument(PDFDocument *document) { return DataOf(document).libraryDocument; }
template <class Class>
HPDF_Doc ReportingDocument(Class *instance) {
  const HPDF_Doc *document = DataOf(instance).libraryDocument;
  return document != nullptr ? *document : nullptr;
}

/// Memory that runs out in a member reaches the script as the library's own failure does: by the number
/// HPDF_FAILD_TO_ALLOC_MEM in the event `ErrorLog` and in the error record.
template <FixedString Name>
struct MemoryShortage<Instance<Name>> {
  static void Report(Instance<Name> *instance) noexcept { engine::ReportShortage(ReportingDocument(instance)); }
};

}  // namespace quillbar
