// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <vector>

#include "plugin/engine/streams/memory_stream_mark.h"

namespace quillbar::engine {

/// The pages of a document with the ends of what is open on them, for as long as this lives: a document is saved with
/// them, and its pages stay as they were.
class EndedPages {
 public:
  EndedPages() = default;
  /// Takes the ends back.
  ~EndedPages();
  EndedPages(const EndedPages &) = delete;
  EndedPages &operator=(const EndedPages &) = delete;

  /// Writes the ends of what is open, paths, text objects and saved graphics states, on all pages of `xref`. The
  /// library's status.
  HPDF_STATUS EndAll(HPDF_Xref xref);

 private:
  HPDF_STATUS End(const HPDF_PageAttr_Rec &page);

  std::vector<MemoryStreamMark> marks_;
};

}  // namespace quillbar::engine
