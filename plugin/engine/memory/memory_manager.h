// SPDX-License-Identifier: MIT
/// A document's memory: every block of a document comes from its manager and goes back to it.
#pragma once

#include <hpdf.h>
#include <hpdf_mmgr.h>

#include "plugin/engine/memory/compressor_memory.h"

namespace quillbar::engine {

/// The manager as the engine knows it; libharu knows its base.
struct MemoryManager : HPDF_MMgr_Rec {
  explicit MemoryManager(const HPDF_MMgr_Rec &functions) : HPDF_MMgr_Rec(functions), compressorMemory(this) {}

  CompressorMemory compressorMemory;
};

/// The memory for compressors of the document to which `manager` belongs; lives as long as the document.
inline CompressorMemory &CompressorMemoryOf(HPDF_MMgr manager) {
  return static_cast<MemoryManager *>(manager)->compressorMemory;
}

}  // namespace quillbar::engine
