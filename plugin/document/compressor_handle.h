// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// The deflate entry points that a `CompressorHandle` carries. They serve all documents of the process.
namespace quillbar {

/// Copies the compressor's three entry points into the library's, even where one is null. Whether
/// compression can be switched on: all three are there.
bool TakeCompressor(CompressorHandle *compressor);

/// Sets all three entry points to null and forgets the class.
void ClearCompressor();

}  // namespace quillbar
