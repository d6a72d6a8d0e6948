// SPDX-License-Identifier: MIT
#include "plugin/document/output_intent.h"

#include <hpdf_pdfa.h>

#include "plugin/engine/document/discard_stream.h"
#include "plugin/engine/images/image.h"
#include "plugin/guard/library_call.h"
#include "plugin/script/document_data.h"

namespace quillbar::document {

void AppendOutputIntent(PDFDocument *document, const char *name, Integer componentCount, const void *profile,
                        Integer byteCount) {
  const HPDF_Doc libraryDocument = DataOf(document).libraryDocument;
  if (libraryDocument == nullptr) return;
  const HPDF_Dict dictionary = Call<HPDF_DictStream_New>(libraryDocument->mmgr, libraryDocument->xref);
  if (dictionary == nullptr) return;
  Call<HPDF_Dict_AddNumber>(dictionary, "N", static_cast<HPDF_INT32>(componentCount));
  if (const char *space = engine::DeviceColorSpace(static_cast<std::size_t>(componentCount))) {
    Call<HPDF_Dict_AddName>(dictionary, "Alternate", space);
  }
  if (Call<HPDF_Stream_Write>(dictionary->stream, static_cast<const HPDF_BYTE *>(profile),
                              static_cast<HPDF_UINT>(byteCount)) != HPDF_OK) {
    Call<engine::DiscardStream>(libraryDocument, dictionary);
    return;
  }
  Call<HPDF_PDFA_AppendOutputIntents>(libraryDocument, name, dictionary);
}

}  // namespace quillbar::document
