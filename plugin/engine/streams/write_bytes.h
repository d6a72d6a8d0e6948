// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_streams.h>

#include <span>
#include <string_view>

namespace quillbar::engine {

/// Writes bytes to a stream; HPDF_OK or the stream's failure. Nothing is written for none.
inline HPDF_STATUS WriteBytes(HPDF_Stream stream, std::span<const HPDF_BYTE> bytes) {
  return bytes.empty() ? HPDF_OK : HPDF_Stream_Write(stream, bytes.data(), static_cast<HPDF_UINT>(bytes.size()));
}

/// The same for text.
inline HPDF_STATUS WriteText(HPDF_Stream stream, std::string_view text) {
  return WriteBytes(stream, {reinterpret_cast<const HPDF_BYTE *>(text.data()), text.size()});
}

}  // namespace quillbar::engine
