// SPDX-License-Identifier: MIT
// Streams in memory: the content of pages, of fonts and images, and of a document that is saved into memory.
//
// The content is in blocks of one size, so that it grows without being moved, and large ones need no large piece of an
// address space of 32 bits. Where it ends follows from its size alone, and where reading goes on is a number: nothing
// points into a block, so a stream can be emptied or cut back at any time, and a write for which memory was too short
// has written nothing.
#include <hpdf.h>
#include <hpdf_conf.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "plugin/engine/streams/memory_stream_mark.h"
#include "plugin/engine/streams/stream.h"

namespace quillbar::engine {

namespace {

constexpr HPDF_UINT kBlockSize = HPDF_STREAM_BUF_SIZ;

struct MemoryContent {
  HPDF_List blocks;  // at least as many as the stream's size takes
  HPDF_UINT readPosition;
};

MemoryContent &ContentOf(HPDF_Stream stream) { return *static_cast<MemoryContent *>(stream->attr); }

// Calls `use(bytes, count)` for each piece of `size` bytes of the content from `position` on.
template <typename Use>
void ForEachPiece(const MemoryContent &content, HPDF_UINT position, HPDF_UINT size, Use use) {
  while (size != 0) {
    const HPDF_UINT offset = position % kBlockSize;
    const HPDF_UINT count = std::min(size, kBlockSize - offset);
    use(static_cast<HPDF_BYTE *>(content.blocks->obj[position / kBlockSize]) + offset, count);
    position += count;
    size -= count;
  }
}

bool AddBlock(HPDF_Stream stream) {
  void *const block = HPDF_GetMem(stream->mmgr, kBlockSize);
  if (block == nullptr) return false;
  if (HPDF_List_Add(ContentOf(stream).blocks, block) == HPDF_OK) return true;
  HPDF_FreeMem(stream->mmgr, block);
  return false;
}

void FreeBlocksFrom(HPDF_Stream stream, HPDF_UINT first) {
  const HPDF_List blocks = ContentOf(stream).blocks;
  while (blocks->count > first) HPDF_FreeMem(stream->mmgr, HPDF_List_RemoveByIndex(blocks, blocks->count - 1));
}

HPDF_STATUS Write(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size) {
  // While a failure is on its way out of the library nothing is written.
  if (HPDF_Error_GetCode(stream->error) != HPDF_NOERROR) return HPDF_THIS_FUNC_WAS_SKIPPED;
  if (size > std::numeric_limits<HPDF_UINT>::max() - kBlockSize - stream->size) {
    return HPDF_SetError(stream->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  const MemoryContent &content = ContentOf(stream);
  // Most writes are short and stay within a block.
  const HPDF_UINT offset = stream->size % kBlockSize;
  if (offset != 0 && size != 0 && size <= kBlockSize - offset) [[likely]] {
    // Called and not inlined: GCC copies what has a known limit with "rep movsq", which is slow for a few bytes.
    HPDF_MemCpy(static_cast<HPDF_BYTE *>(content.blocks->obj[stream->size / kBlockSize]) + offset, bytes, size);
    return HPDF_OK;
  }
  const HPDF_UINT blockCount = (stream->size + size + kBlockSize - 1) / kBlockSize;
  while (content.blocks->count < blockCount) {
    if (!AddBlock(stream)) return HPDF_Error_GetCode(stream->error);
  }
  ForEachPiece(content, stream->size, size, [&bytes](HPDF_BYTE *piece, HPDF_UINT count) {
    std::memcpy(piece, bytes, count);
    bytes += count;
  });
  return HPDF_OK;
}

HPDF_STATUS Read(HPDF_Stream stream, HPDF_BYTE *bytes, HPDF_UINT *size) {
  MemoryContent &content = ContentOf(stream);
  const HPDF_UINT asked = *size;
  *size = std::min(asked, stream->size - content.readPosition);
  ForEachPiece(content, content.readPosition, *size, [&bytes](const HPDF_BYTE *piece, HPDF_UINT count) {
    std::memcpy(bytes, piece, count);
    bytes += count;
  });
  content.readPosition += *size;
  return *size == asked ? HPDF_OK : HPDF_STREAM_EOF;
}

HPDF_STATUS Seek(HPDF_Stream stream, HPDF_INT offset, HPDF_WhenceMode mode) {
  MemoryContent &content = ContentOf(stream);
  std::int64_t position = offset;
  if (mode == HPDF_SEEK_CUR) position += content.readPosition;
  if (mode == HPDF_SEEK_END) position = std::int64_t{stream->size} - offset;
  if (position < 0 || position > stream->size) return HPDF_SetError(stream->error, HPDF_STREAM_EOF, 0);
  content.readPosition = static_cast<HPDF_UINT>(position);
  return HPDF_OK;
}

void Free(HPDF_Stream stream) {
  FreeBlocksFrom(stream, 0);
  HPDF_List_Free(ContentOf(stream).blocks);
  HPDF_FreeMem(stream->mmgr, stream->attr);
}

}  // namespace

void MemoryStreamMark::CutBack() const {
  FreeBlocksFrom(stream_, (size_ + kBlockSize - 1) / kBlockSize);
  stream_->size = size_;
  MemoryContent &content = ContentOf(stream_);
  content.readPosition = std::min(content.readPosition, size_);
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

/// An empty stream; null, with the error record set, when memory is short. The size of its blocks is not the caller's
/// to choose.
HPDF_Stream HPDF_MemStream_New(HPDF_MMgr memory, HPDF_UINT) {
  const HPDF_Stream stream = NewStream(memory, HPDF_STREAM_MEMORY);
  if (stream == nullptr) return nullptr;
  auto *content = static_cast<MemoryContent *>(HPDF_GetMem(memory, sizeof(MemoryContent)));
  const HPDF_List blocks = content == nullptr ? nullptr : HPDF_List_New(memory, HPDF_DEF_ITEMS_PER_BLOCK);
  if (blocks == nullptr) {
    HPDF_FreeMem(memory, content);
    HPDF_FreeMem(memory, stream);
    return nullptr;
  }
  *content = {blocks, 0};
  stream->attr = content;
  stream->write_fn = &Write;
  stream->read_fn = &Read;
  stream->seek_fn = &Seek;
  stream->free_fn = &Free;
  return stream;
}

/// Empties a memory stream; nothing happens for null or another stream.
void HPDF_MemStream_FreeData(HPDF_Stream stream) {
  if (stream == nullptr || stream->type != HPDF_STREAM_MEMORY) return;
  FreeBlocksFrom(stream, 0);
  stream->size = 0;
  ContentOf(stream).readPosition = 0;
}

}  // extern "C"
