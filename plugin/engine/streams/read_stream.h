// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_streams.h>

#include <cstdint>
#include <vector>

namespace quillbar::engine {

/// Takes a font file into memory: appends all that `stream` has to `bytes`, but no more than `limit` and one block, so
/// that the caller sees a file that is too long. HPDF_OK or the stream's failure. Throws std::bad_alloc.
inline HPDF_STATUS ReadStream(HPDF_Stream stream, std::size_t limit, std::vector<std::uint8_t> &bytes) {
  constexpr HPDF_UINT kBlock = 1u << 16;
  while (bytes.size() <= limit) {
    const std::size_t start = bytes.size();
    bytes.resize(start + kBlock);
    HPDF_UINT count = kBlock;
    const HPDF_STATUS status = HPDF_Stream_Read(stream, bytes.data() + start, &count);
    bytes.resize(start + (status == HPDF_OK || status == HPDF_STREAM_EOF ? count : 0));
    if (status == HPDF_STREAM_EOF || (status == HPDF_OK && count == 0)) return HPDF_OK;
    if (status != HPDF_OK) return status;
  }
  return HPDF_OK;
}

}  // namespace quillbar::engine
