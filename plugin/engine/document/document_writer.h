// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstdint>

namespace quillbar::engine {

/// Told after each object how many are written, and of how many; nonzero gives the writing up.
using SaveProgress = std::int8_t (*)(std::uint32_t written, std::uint32_t total);

/// Writes the whole document into an empty stream: header, objects, cross-reference table and trailer (ISO 32000-1,
/// 7.5), encrypted if it has a password. What is open on its pages is ended in the stream alone. `progress` may be
/// null; calls that are made from there on the same document are calls of their own, with failures of their own. The
/// library's status; HPDF_FILE_IO_ERROR with ECANCELED as detail when the writing was given up; HPDF_INVALID_OPERATION
/// for an encrypted document that is being written already, because each file has a key of its own.
HPDF_STATUS WriteDocument(HPDF_Doc document, HPDF_Stream stream, SaveProgress progress);

}  // namespace quillbar::engine
