// SPDX-License-Identifier: MIT
#include "plugin/document/document_lifecycle.h"

#include <utility>

#include "binding/contained.h"
#include "plugin/document/compressor_handle.h"
#include "plugin/document/errors.h"
#include "plugin/document/output_intent.h"
#include "plugin/engine/document/document.h"
#include "plugin/engine/pages/page_tree.h"
#include "plugin/guard/library_call.h"
#include "plugin/page/page_data.h"
#include "plugin/script/document_data.h"
#include "plugin/script/wrapper.h"

namespace quillbar::document {

void Initialize(Object object) {
  auto *document = static_cast<PDFDocument *>(object);
  DocumentData &data = DataOf(document);
  data.outputIntentHook = Containing<&AppendOutputIntent>();
  data.libraryDocument = engine::NewDocument(HandleLibraryError, document);
  data.japaneseLoaded = data.koreanLoaded = 0;
  data.traditionalChineseLoaded = data.simplifiedChineseLoaded = 0;
  data.lastError = data.lastErrorDetail = 0;
  if (Call<HPDF_UseUTFEncodings>(data.libraryDocument) == HPDF_OK &&
      Call<HPDF_SetCurrentEncoder>(data.libraryDocument, "UTF-8") == HPDF_OK) {
    return;
  }
  // Memory was short. A document without its encoding would write texts wrongly.
  if (data.libraryDocument != nullptr) Call<HPDF_Free>(std::exchange(data.libraryDocument, nullptr));
  data.lastError = HPDF_FAILD_TO_ALLOC_MEM;
}

void Finalize(Object object) {
  DocumentData &data = DataOf(static_cast<PDFDocument *>(object));
  if (data.libraryDocument == nullptr) return;
  Call<HPDF_Free>(data.libraryDocument);
  data.libraryDocument = nullptr;
}

void Constructor(PDFDocument *) {}

void ConstructorWithCompressor(PDFDocument *document, CompressorHandle *compressor) {
  if (compressor == nullptr || !TakeCompressor(compressor)) return;
  Call<HPDF_SetCompressionMode>(DataOf(document).libraryDocument, HPDF_COMP_ALL);
}

Page *AddPage(PDFDocument *document) {
  Page *page = NewOwnedByDocument<"QuillbarPDFWriter.Page", Page, PageData>(document);
  if (page != nullptr) DataOf(page).pageHandle = Call<engine::AddPage>(DataOf(document).libraryDocument);
  return page;
}

}  // namespace quillbar::document
