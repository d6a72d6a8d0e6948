// SPDX-License-Identifier: MIT
// HPDF_MemStream_FreeData forgets where reading stood.
//
// libharu's frees a memory stream's buffers and keeps the pointer into them from which the next read goes on.
// Saving a document to its stream empties it first, so every save after a read left the stream reading freed
// memory.
#include <hpdf.h>

extern "C" {

void Libharu_HPDF_MemStream_FreeData(HPDF_Stream stream);

void HPDF_MemStream_FreeData(HPDF_Stream stream) {
  Libharu_HPDF_MemStream_FreeData(stream);
  if (stream != nullptr && stream->type == HPDF_STREAM_MEMORY) {
    static_cast<HPDF_MemStreamAttr>(stream->attr)->r_ptr = nullptr;
  }
}

}  // extern "C"
