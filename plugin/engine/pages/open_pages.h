// SPDX-License-Identifier: MIT
/// Saving pages on which something is open.
#pragma once

#include <hpdf.h>

#include <vector>

#include "plugin/engine/pages/page_object.h"
#include "plugin/engine/streams/memory_stream.h"

namespace quillbar::engine {

/// Ends what is open on a document's pages, a path, a text object and saved graphics states, in their content and not
/// on the pages themselves. When this goes, the content is as it was, so that a script that has saved in the middle of
/// a text object can go on with it.
class EndedPages {
 public:
  EndedPages() = default;
  EndedPages(const EndedPages &) = delete;
  EndedPages &operator=(const EndedPages &) = delete;
  ~EndedPages();

  /// Ends all pages that `xref` lists. The library's status: memory may run out.
  HPDF_STATUS EndAll(HPDF_Xref xref);

 private:
  HPDF_STATUS End(const PageAttributes &page);

  std::vector<MemoryStreamMark> contents_;
};

}  // namespace quillbar::engine
