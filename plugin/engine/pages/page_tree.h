// SPDX-License-Identifier: MIT
/// The tree of a document's pages.
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Adds a page after the document's last one and makes it the current one. Null when there is no document, or when
/// memory ran out; the failure has been reported then. The document owns the page.
HPDF_Page AddPage(HPDF_Doc document);

}  // namespace quillbar::engine
