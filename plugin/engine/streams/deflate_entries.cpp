// SPDX-License-Identifier: MIT
// Compression through entry points handed in at run time, in place of a linked zlib: libharu's sources are
// compiled with zlib-interface/zlib.h, whose deflate functions are these. A null entry gives zlib's stream
// error, which libharu reports as HPDF_ZLIB_ERROR; it is never called.
#include "plugin/engine/streams/deflate_entries.h"

#include "plugin/engine/streams/zlib-interface/zlib.h"

// zlib's sizes: 32 bits, Windows with 64 (whose longs have 32), other platforms with 64.
static_assert(sizeof(z_stream) == (sizeof(void *) == 4 ? 56 : sizeof(long) == 4 ? 88 : 112));

namespace quillbar::engine {

DeflateInitEntry deflateInitEntry = nullptr;
DeflateEntry deflateEntry = nullptr;
DeflateEndEntry deflateEndEntry = nullptr;

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

int QuillbarDeflateInit(z_stream *stream, int level, const char *version, int recordSize) {
  // All three are asked for at once: with one missing, what the first allocates could not be given back.
  if (deflateInitEntry == nullptr || deflateEntry == nullptr || deflateEndEntry == nullptr) return Z_STREAM_ERROR;
  return deflateInitEntry(stream, level, version, recordSize);
}

int QuillbarDeflate(z_stream *stream, int flush) {
  if (deflateEntry == nullptr) return Z_STREAM_ERROR;
  const unsigned int inputBefore = stream->avail_in;
  const unsigned int outputBefore = stream->avail_out;
  const int result = deflateEntry(stream, flush);
  // zlib says so itself when it cannot go on; one that claims success without progress, or the end with the
  // input untouched, would be called for ever.
  const bool tookNothing = stream->avail_in == inputBefore;
  if (result == Z_OK && tookNothing && stream->avail_out == outputBefore) return Z_BUF_ERROR;
  if (result == Z_STREAM_END && tookNothing && inputBefore != 0) return Z_BUF_ERROR;
  return result;
}

int QuillbarDeflateEnd(z_stream *stream) {
  return deflateEndEntry == nullptr ? Z_STREAM_ERROR : deflateEndEntry(stream);
}

}  // extern "C"
