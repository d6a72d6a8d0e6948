// SPDX-License-Identifier: MIT
/// A document's memory: every block of a document comes from its manager and goes back to it.
#pragma once

#include <hpdf.h>
#include <hpdf_mmgr.h>

#include <memory>
#include <optional>

#include "plugin/engine/memory/compressor_memory.h"
#include "plugin/engine/memory/small_blocks.h"

namespace quillbar::engine {

/// What a module keeps for a document beside its objects; it goes after them.
class DocumentPart {
 public:
  virtual ~DocumentPart() = default;
};

/// The manager as the engine knows it; libharu knows its base.
struct MemoryManager : HPDF_MMgr_Rec {
  explicit MemoryManager(const HPDF_MMgr_Rec &functions) : HPDF_MMgr_Rec(functions), compressorMemory(this) {}

  CompressorMemory compressorMemory;
  std::unique_ptr<DocumentPart> fontIndex;  // made and read by the fonts alone
  std::optional<SmallBlocks> smallBlocks;   // none where each block is to be fetched alone
};

/// As HPDF_GetMem, but without an error when memory is short.
void *TryToGetMemory(HPDF_MMgr manager, HPDF_UINT size);

/// The memory for compressors of the document to which `manager` belongs; lives as long as the document.
inline CompressorMemory &CompressorMemoryOf(HPDF_MMgr manager) {
  return static_cast<MemoryManager *>(manager)->compressorMemory;
}

}  // namespace quillbar::engine
