// SPDX-License-Identifier: MIT
#include "plugin/engine/document/document.h"

#include <hpdf_conf.h>
#include <hpdf_doc.h>

#include "plugin/engine/document/document_writer.h"
#include "plugin/engine/streams/file_writer.h"
#include "plugin/engine/streams/memory_stream.h"

namespace quillbar::engine {

HPDF_Doc NewDocument(HPDF_Error_Handler handler, void *userData) {
  const HPDF_Doc document = HPDF_New(nullptr, userData);
  if (document == nullptr) return nullptr;
  if (HPDF_SetInfoAttr(document, HPDF_INFO_PRODUCER, "Quillbar PDF Plugin") != HPDF_OK) {
    HPDF_Free(document);
    return nullptr;
  }
  document->error.error_fn = handler;
  return document;
}

HPDF_STATUS SaveToFile(HPDF_Doc document, const char *utf16Path, SaveProgress progress) {
  if (HPDF_HasDoc(document) == HPDF_FALSE) return HPDF_INVALID_DOCUMENT;
  const HPDF_Stream stream = NewFileWriter(document->mmgr, utf16Path);
  if (stream == nullptr) return HPDF_CheckError(&document->error);
  const HPDF_STATUS status = EndFile(stream, WriteDocument(document, stream, progress));
  // A failure that nobody marked is one too.
  if (status != HPDF_OK && document->error.error_no == HPDF_OK && document->error.raised_no == HPDF_OK) {
    HPDF_SetError(&document->error, status, 0);
  }
  return HPDF_CheckError(&document->error);
}

HPDF_STATUS SaveToMemory(HPDF_Doc document) {
  if (HPDF_HasDoc(document) == HPDF_FALSE) return HPDF_INVALID_DOCUMENT;
  if (document->stream == nullptr) document->stream = HPDF_MemStream_New(document->mmgr, HPDF_STREAM_BUF_SIZ);
  if (document->stream == nullptr) return HPDF_CheckError(&document->error);
  HPDF_MemStream_FreeData(document->stream);
  return WriteDocument(document, document->stream, nullptr) == HPDF_OK ? HPDF_OK : HPDF_CheckError(&document->error);
}

void TakeSaved(HPDF_Doc document, HPDF_BYTE *bytes) {
  if (HPDF_HasDoc(document) != HPDF_FALSE && document->stream != nullptr)
    AsMemoryStream(document->stream).MoveTo(bytes);
}

}  // namespace quillbar::engine
