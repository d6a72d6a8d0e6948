// SPDX-License-Identifier: MIT
#include "plugin/document/output.h"

#include <cstdlib>
#include <memory>

#include "binding/host_strings.h"
#include "binding/memory_block.h"
#include "binding/service.h"
#include "plugin/engine/document/document.h"
#include "plugin/engine/errors/error_state.h"
#include "plugin/guard/library_call.h"
#include "plugin/script/document_data.h"

namespace quillbar::document {

namespace {

struct FreeBytes {
  void operator()(char *bytes) const { std::free(bytes); }
};

}  // namespace

void Save(PDFDocument *document, FolderItem *f) {
  if (f == nullptr) return;
  // A file that the host can't tell about may exist, and an existing file is never overwritten.
  bool exists = true;
  if (!GetBoolProperty(f, "Exists", exists) || exists) return;
  const OwnedString path = GetNativePath(f);
  const StringData utf16Path(path.get(), TextEncoding::kUtf16);
  if (!utf16Path) return;
  Call<engine::SaveToFile>(DataOf(document).libraryDocument, utf16Path.bytes(),
                           HostSlot<service::ReportProgress>::Resolve());
}

String SaveToString(PDFDocument *document) {
  const HPDF_Doc libraryDocument = DataOf(document).libraryDocument;
  if (Call<engine::SaveToMemory>(libraryDocument) != HPDF_OK) return nullptr;
  const HPDF_UINT32 size = Call<HPDF_GetStreamSize>(libraryDocument);
  const std::unique_ptr<char, FreeBytes> buffer(static_cast<char *>(std::malloc(size)));
  if (buffer == nullptr) {
    engine::ReportShortage(libraryDocument);
    return nullptr;
  }
  Call<engine::TakeSaved>(libraryDocument, reinterpret_cast<HPDF_BYTE *>(buffer.get()));
  return BuildString({buffer.get(), size}, TextEncoding::kRawBytes);
}

MemoryBlock *SaveToMemoryBlock(PDFDocument *document) {
  const HPDF_Doc libraryDocument = DataOf(document).libraryDocument;
  if (Call<engine::SaveToMemory>(libraryDocument) != HPDF_OK) return nullptr;
  const HPDF_UINT32 size = Call<HPDF_GetStreamSize>(libraryDocument);
  MemoryBlock *block = NewMemoryBlock(static_cast<Integer>(size));
  if (block == nullptr) return nullptr;
  if (void *bytes = BytesOf(block)) {
    Call<engine::TakeSaved>(libraryDocument, static_cast<HPDF_BYTE *>(bytes));
  }
  return block;
}

}  // namespace quillbar::document
