// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_streams.h>

namespace quillbar::engine {

/// Where a memory stream ended when this was made. What has been written since can be taken back.
class MemoryStreamMark {
 public:
  /// `stream` must be a memory stream and live longer than this.
  explicit MemoryStreamMark(HPDF_Stream stream) : stream_(stream), size_(stream->size) {}

  /// Ends the stream here again. A reader that was further on is at the end then.
  void CutBack() const;

 private:
  HPDF_Stream stream_;
  HPDF_UINT size_;
};

}  // namespace quillbar::engine
