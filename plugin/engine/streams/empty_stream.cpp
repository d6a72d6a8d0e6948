// SPDX-License-Identifier: MIT
// Streams without content are deflated as well when their filter says so.
//
// libharu writes no byte for an empty stream and still names the filter, so that readers miss the end of the
// compressed data: every page of a compressed document on which nothing was drawn.
#include <hpdf.h>

extern "C" {

HPDF_STATUS HPDF_Stream_WriteToStreamWithDeflate(HPDF_Stream source, HPDF_Stream destination, HPDF_Encrypt encryption);
HPDF_STATUS Libharu_HPDF_Stream_WriteToStream(HPDF_Stream source, HPDF_Stream destination, HPDF_UINT filter,
                                              HPDF_Encrypt encryption);

HPDF_STATUS HPDF_Stream_WriteToStream(HPDF_Stream source, HPDF_Stream destination, HPDF_UINT filter,
                                      HPDF_Encrypt encryption) {
  const bool canWrite = destination != nullptr && destination->write_fn != nullptr &&
                        HPDF_Error_GetCode(source->error) == HPDF_NOERROR &&
                        HPDF_Error_GetCode(destination->error) == HPDF_NOERROR;
  if (canWrite && (filter & HPDF_STREAM_FILTER_FLATE_DECODE) != 0 && HPDF_Stream_Size(source) == 0) {
    return HPDF_Stream_WriteToStreamWithDeflate(source, destination, encryption);
  }
  return Libharu_HPDF_Stream_WriteToStream(source, destination, filter, encryption);
}

}  // extern "C"
