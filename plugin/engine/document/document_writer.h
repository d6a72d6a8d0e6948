// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Writes the whole document into an empty stream: header, objects, cross-reference table and trailer (ISO 32000-1,
/// 7.5), encrypted if it has a password. What is open on its pages is ended in the stream alone. The library's status.
HPDF_STATUS WriteDocument(HPDF_Doc document, HPDF_Stream stream);

}  // namespace quillbar::engine
