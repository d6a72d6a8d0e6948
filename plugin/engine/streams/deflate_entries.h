// SPDX-License-Identifier: MIT
/// The deflate entry points that the library compresses with. Nothing of a compressor is linked in: a compressor of
/// the host hands in its three functions at run time, and they serve all documents of the process.
#pragma once

/// zlib's stream record. Its layout is declared in deflater.h; a compressor brings zlib's own declaration.
struct z_stream_s;

namespace quillbar::engine {

/// zlib's deflateInit_: the stream record, the compression level, the version text, the record's size in bytes.
using DeflateInitEntry = int (*)(z_stream_s *stream, int level, const char *version, int recordSize);
/// zlib's deflate: the stream record, the flush mode.
using DeflateEntry = int (*)(z_stream_s *stream, int flush);
/// zlib's deflateEnd.
using DeflateEndEntry = int (*)(z_stream_s *stream);

/// All null at first; set by whoever has a compressor. While one of them is null, writing a compressed stream fails
/// with HPDF_ZLIB_ERROR.
extern DeflateInitEntry deflateInitEntry;
extern DeflateEntry deflateEntry;
extern DeflateEndEntry deflateEndEntry;

}  // namespace quillbar::engine
