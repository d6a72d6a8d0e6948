#pragma once

#include <hpdf.h>

namespace quillbar {

/// Frees a dictionary that was registered last in the document's cross-reference table, together with its
/// entry there. The library's own HPDF_Dict_Free leaves the entry, and the document would free the
/// dictionary once more. Nothing for an object that isn't the last one.
void DiscardObject(HPDF_Doc document, HPDF_Dict dictionary);

}  // namespace quillbar
