// SPDX-License-Identifier: MIT
#pragma once

#include <zlib.h>

/// zlib's deflateInit_, deflate and deflateEnd, with libdeflate behind them: about half of zlib's time for the same size.
///
/// libdeflate works on whole buffers, so input is gathered until it is a part of `kPartSize` bytes or the caller ends or
/// flushes the stream. A stream of at most a part's bytes, as the content of a page is, is compressed as a whole; in a
/// longer one no part refers to the one before.
///
/// Results, the record's members and what is refused are as zlib documents them, with these differences:
///   - deflate with Z_NO_FLUSH writes only whole parts;
///   - Z_PARTIAL_FLUSH, Z_SYNC_FLUSH, Z_FULL_FLUSH and Z_BLOCK all end a part, and the output at a byte;
///   - `data_type` stays Z_UNKNOWN.
namespace quillbar::companion {

/// In bytes. Larger parts hardly make smaller files; this one costs half a megabyte while a long stream is written.
inline constexpr unsigned kPartSize = 256 * 1024;

/// Begins a stream of `level`, 0 to 9 or -1 for 6. `version` is the text of the caller's zlib, of which the first
/// character must be that of this one's, `recordSize` the size of its stream record in bytes. Memory is asked for with
/// the record's `zalloc` if there is one. Gives Z_OK, Z_VERSION_ERROR, Z_STREAM_ERROR or Z_MEM_ERROR.
int InitDeflate(z_streamp stream, int level, const char *version, int recordSize);

/// Takes input and gives output until one of them is used up. Gives Z_OK, Z_STREAM_END, Z_STREAM_ERROR or Z_BUF_ERROR.
int Deflate(z_streamp stream, int flush);

/// Gives the stream's memory back: Z_OK, Z_DATA_ERROR if the stream wasn't finished, Z_STREAM_ERROR if there is none.
int EndDeflate(z_streamp stream);

}  // namespace quillbar::companion
