// SPDX-License-Identifier: MIT
// What all streams have in common: they are read, written and freed through the functions in their records. Which those
// are is settled where a stream is made: memory_stream.cpp, file_reader.cpp, file_writer.cpp.
#include "plugin/engine/streams/stream.h"

#include <hpdf_utils.h>

#include <iterator>

namespace quillbar::engine {

HPDF_Stream_Rec NewStreamRecord(HPDF_MMgr memory, HPDF_StreamType type) {
  HPDF_Stream_Rec stream{};
  stream.sig_bytes = HPDF_STREAM_SIG_BYTES;
  stream.type = type;
  stream.mmgr = memory;
  stream.error = memory->error;
  return stream;
}

HPDF_Stream NewStream(HPDF_MMgr memory, HPDF_StreamType type) {
  auto *stream = static_cast<HPDF_Stream>(HPDF_GetMem(memory, sizeof(HPDF_Stream_Rec)));
  if (stream != nullptr) *stream = NewStreamRecord(memory, type);
  return stream;
}

namespace {

HPDF_STATUS WriteText(HPDF_Stream stream, const char *begin, const char *end) {
  return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(begin), static_cast<HPDF_UINT>(end - begin));
}

}  // namespace

}  // namespace quillbar::engine

using quillbar::engine::WriteText;

extern "C" {

HPDF_STATUS HPDF_Stream_Validate(HPDF_Stream stream) {
  return stream != nullptr && stream->sig_bytes == HPDF_STREAM_SIG_BYTES ? HPDF_TRUE : HPDF_FALSE;
}

/// Nothing happens for null.
void HPDF_Stream_Free(HPDF_Stream stream) {
  if (stream == nullptr) return;
  if (stream->free_fn != nullptr) stream->free_fn(stream);
  stream->sig_bytes = 0;
  HPDF_FreeMem(stream->mmgr, stream);
}

/// Reads up to `*size` bytes, whose number becomes `*size`. HPDF_STREAM_EOF when the content ends before as many.
HPDF_STATUS HPDF_Stream_Read(HPDF_Stream stream, HPDF_BYTE *bytes, HPDF_UINT *size) {
  if (stream->read_fn == nullptr) return HPDF_SetError(stream->error, HPDF_INVALID_OPERATION, 0);
  return stream->read_fn(stream, bytes, size);
}

/// Sets where the next read begins.
HPDF_STATUS HPDF_Stream_Seek(HPDF_Stream stream, HPDF_INT position, HPDF_WhenceMode mode) {
  if (stream->seek_fn == nullptr) return HPDF_SetError(stream->error, HPDF_INVALID_OPERATION, 0);
  if (HPDF_Error_GetCode(stream->error) != HPDF_NOERROR) return HPDF_THIS_FUNC_WAS_SKIPPED;
  return stream->seek_fn(stream, position, mode);
}

/// The bytes that a stream for writing has, which memory streams are too.
HPDF_UINT32 HPDF_Stream_Size(HPDF_Stream stream) { return stream->size; }

HPDF_STATUS HPDF_Stream_Write(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size) {
  if (stream->write_fn == nullptr) return HPDF_SetError(stream->error, HPDF_INVALID_OPERATION, 0);
  const HPDF_STATUS status = stream->write_fn(stream, bytes, size);
  if (status == HPDF_OK) stream->size += size;
  return status;
}

HPDF_STATUS HPDF_Stream_WriteChar(HPDF_Stream stream, char value) { return WriteText(stream, &value, &value + 1); }

/// Writes nothing for null.
HPDF_STATUS HPDF_Stream_WriteStr(HPDF_Stream stream, const char *text) {
  return WriteText(stream, text, text + HPDF_StrLen(text, -1));
}

HPDF_STATUS HPDF_Stream_WriteInt(HPDF_Stream stream, HPDF_INT value) {
  char text[HPDF_INT_LEN + 1];
  return WriteText(stream, text, HPDF_IToA(text, value, std::end(text) - 1));
}

HPDF_STATUS HPDF_Stream_WriteReal(HPDF_Stream stream, HPDF_REAL value) {
  // More than the longest real takes, such as "-0.0000012345".
  char text[32];
  return WriteText(stream, text, HPDF_FToA(text, value, std::end(text) - 1));
}

}  // extern "C"
