// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Takes a stream dictionary that was just made with HPDF_DictStream_New back out of the document and frees
/// it, with the length that the library registered after it. The library's own HPDF_Dict_Free would leave
/// their entries, and the document would free both once more.
///
/// Nothing happens when other objects were registered since: object numbers are positions in the table, so
/// only its end can be given back. The stream then stays until the document goes.
void DiscardStream(HPDF_Doc document, HPDF_Dict stream);

}  // namespace quillbar::engine
