// SPDX-License-Identifier: MIT
#include "plugin/engine/streams/memory_stream.h"

#include <hpdf_conf.h>
#include <hpdf_utils.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

#include "plugin/engine/memory/memory_manager.h"
#include "plugin/engine/streams/stream.h"

namespace quillbar::engine {

namespace {

constexpr HPDF_UINT kSmallBlock = MemoryStream::kPiece;
constexpr HPDF_UINT kLargeBlock = 1 << 16;
// The small blocks are as large as a large one together.
constexpr HPDF_UINT kSmallBlocks = kLargeBlock / kSmallBlock;
constexpr HPDF_UINT kFirstRoom = 256;
// Of a block's room, the part that must be spare to be given back.
constexpr HPDF_UINT kWorthwhilePart = 8;

// Where in the content a block begins, and the block that has a byte of it.
constexpr HPDF_UINT StartOf(HPDF_UINT block) {
  return block < kSmallBlocks ? block * kSmallBlock : (block - kSmallBlocks + 1) * kLargeBlock;
}
constexpr HPDF_UINT BlockAt(HPDF_UINT position) {
  return position < kLargeBlock ? position / kSmallBlock : position / kLargeBlock + kSmallBlocks - 1;
}
constexpr HPDF_UINT FullSize(HPDF_UINT block) { return block < kSmallBlocks ? kSmallBlock : kLargeBlock; }

// Both without an error: a writer sets it, and tries no further.
void *Fetch(const MemoryStream &stream, std::size_t size) {
  return TryToGetMemory(stream.mmgr, static_cast<HPDF_UINT>(size));
}
void GiveBack(const MemoryStream &stream, void *memory) { HPDF_FreeMem(stream.mmgr, memory); }

// Moves the last block into one with room for `room` bytes, in which its content must fit. False when memory is short.
bool MoveLastBlock(MemoryStream &stream, HPDF_UINT room) {
  HPDF_BYTE *&last = stream.blocks[stream.blockCount - 1];
  auto *const moved = static_cast<HPDF_BYTE *>(Fetch(stream, room));
  if (moved == nullptr) return false;
  const auto count = static_cast<std::size_t>(stream.tail - last);
  std::memcpy(moved, last, count);
  GiveBack(stream, last);
  last = moved;
  stream.tail = moved + count;
  stream.limit = moved + room;
  return true;
}

bool HasRoomForABlock(MemoryStream &stream) {
  if (stream.blockCount < stream.blockRoom) return true;
  const HPDF_UINT room = stream.blockRoom < 8 ? 8 : stream.blockRoom * 2;
  auto **blocks = static_cast<HPDF_BYTE **>(Fetch(stream, room * sizeof(HPDF_BYTE *)));
  if (blocks == nullptr) return false;
  std::copy_n(stream.blocks, stream.blockCount, blocks);
  if (stream.blocks != &stream.onlyBlock) GiveBack(stream, stream.blocks);
  stream.blocks = blocks;
  stream.blockRoom = room;
  return true;
}

// Adds a block with room for `wanted` bytes, as far as a block may have it. The last one must be full.
bool AddBlock(MemoryStream &stream, HPDF_UINT wanted) {
  if (!HasRoomForABlock(stream)) return false;
  const HPDF_UINT full = FullSize(stream.blockCount);
  HPDF_UINT room = stream.blockCount == 0 ? kFirstRoom : full;
  while (room < wanted && room < full) room *= 2;
  auto *block = static_cast<HPDF_BYTE *>(Fetch(stream, room));
  if (block == nullptr) return false;
  stream.blocks[stream.blockCount++] = block;
  stream.tail = block;
  stream.limit = block + room;
  return true;
}

// Appends without counting, so that what a failure leaves behind can be cut off.
bool Append(MemoryStream &stream, const HPDF_BYTE *bytes, HPDF_UINT size) {
  for (;;) {
    const HPDF_UINT count = std::min(size, static_cast<HPDF_UINT>(stream.limit - stream.tail));
    if (count != 0) std::memcpy(stream.tail, bytes, count);
    stream.tail += count;
    size -= count;
    if (size == 0) return true;
    bytes += count;
    // A block that couldn't become larger is no reason for another: only the last one may have less than its full size.
    if (!(stream.IsLastBlockFull() ? AddBlock(stream, size) : stream.ExtendTail())) return false;
  }
}

HPDF_STATUS Write(HPDF_Stream record, const HPDF_BYTE *bytes, HPDF_UINT size) {
  // While a failure is on its way out of the library nothing is written.
  if (HPDF_Error_GetCode(record->error) != HPDF_NOERROR) return HPDF_THIS_FUNC_WAS_SKIPPED;
  MemoryStream &stream = AsMemoryStream(record);
  if (size <= static_cast<HPDF_UINT>(stream.limit - stream.tail)) [[likely]] {
    // Called and not inlined: GCC copies what has a known limit with "rep movsq", which is slow for a few bytes.
    HPDF_MemCpy(stream.tail, bytes, size);
    stream.tail += size;
    return HPDF_OK;
  }
  const bool hasRoom = size <= std::numeric_limits<HPDF_UINT>::max() - kLargeBlock - stream.size;
  if (hasRoom && Append(stream, bytes, size)) return HPDF_OK;
  stream.CutBack(stream.size);
  return HPDF_SetError(stream.error, HPDF_FAILD_TO_ALLOC_MEM, 0);
}

HPDF_STATUS Read(HPDF_Stream record, HPDF_BYTE *bytes, HPDF_UINT *size) {
  MemoryStream &stream = AsMemoryStream(record);
  const HPDF_UINT asked = *size;
  *size = std::min(asked, stream.size - stream.readPosition);
  for (const HPDF_UINT end = stream.readPosition + *size; stream.readPosition != end;) {
    const std::span<const HPDF_BYTE> piece = stream.ContentFrom(stream.readPosition);
    const HPDF_UINT count = std::min(static_cast<HPDF_UINT>(piece.size()), end - stream.readPosition);
    bytes = HPDF_MemCpy(bytes, piece.data(), count);
    stream.readPosition += count;
  }
  return *size == asked ? HPDF_OK : HPDF_STREAM_EOF;
}

HPDF_STATUS Seek(HPDF_Stream record, HPDF_INT offset, HPDF_WhenceMode mode) {
  MemoryStream &stream = AsMemoryStream(record);
  std::int64_t position = offset;
  if (mode == HPDF_SEEK_CUR) position += stream.readPosition;
  if (mode == HPDF_SEEK_END) position = std::int64_t{stream.size} - offset;
  if (position < 0 || position > stream.size) return HPDF_SetError(stream.error, HPDF_STREAM_EOF, 0);
  stream.readPosition = static_cast<HPDF_UINT>(position);
  return HPDF_OK;
}

void Free(HPDF_Stream record) {
  MemoryStream &stream = AsMemoryStream(record);
  stream.CutBack(0);
  if (stream.blocks != &stream.onlyBlock) GiveBack(stream, stream.blocks);
}

}  // namespace

bool MemoryStream::IsLastBlockFull() const {
  return blockCount == 0 || limit == blocks[blockCount - 1] + FullSize(blockCount - 1);
}

bool MemoryStream::ExtendTail() {
  if (IsLastBlockFull()) return false;
  const auto room = static_cast<HPDF_UINT>(limit - blocks[blockCount - 1]);
  return MoveLastBlock(*this, std::clamp(2 * room, kFirstRoom, FullSize(blockCount - 1)));
}

void MemoryStream::GiveBackSpareRoom() {
  if (blockCount == 0) return;
  const auto room = static_cast<HPDF_UINT>(limit - blocks[blockCount - 1]);
  const auto used = static_cast<HPDF_UINT>(tail - blocks[blockCount - 1]);
  if (used <= room - room / kWorthwhilePart) MoveLastBlock(*this, used);
}

void MemoryStream::CutBack(HPDF_UINT newSize) {
  const HPDF_UINT needed = newSize == 0 ? 0 : BlockAt(newSize - 1) + 1;
  const bool losesBlocks = needed < blockCount;
  while (blockCount > needed) GiveBack(*this, blocks[--blockCount]);
  if (needed == 0) {
    tail = limit = nullptr;
  } else {
    HPDF_BYTE *const last = blocks[needed - 1];
    tail = last + (newSize - StartOf(needed - 1));
    if (losesBlocks) limit = last + FullSize(needed - 1);
  }
  size = newSize;
  readPosition = std::min(readPosition, newSize);
}

std::span<const HPDF_BYTE> MemoryStream::ContentFrom(HPDF_UINT position) const {
  const HPDF_UINT block = BlockAt(position);
  const HPDF_UINT end = std::min(size, StartOf(block) + FullSize(block));
  return {blocks[block] + (position - StartOf(block)), end - position};
}

void MemoryStream::MoveTo(HPDF_BYTE *bytes) {
  for (HPDF_UINT block = 0; block < blockCount; ++block) {
    const std::span<const HPDF_BYTE> content = ContentFrom(StartOf(block));
    bytes = HPDF_MemCpy(bytes, content.data(), static_cast<HPDF_UINT>(content.size()));
    GiveBack(*this, blocks[block]);
  }
  blockCount = 0;
  CutBack(0);
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

/// An empty stream; null, with the error record set, when memory is short. The size of its blocks is not the caller's
/// to choose.
HPDF_Stream HPDF_MemStream_New(HPDF_MMgr memory, HPDF_UINT) {
  void *const place = HPDF_GetMem(memory, sizeof(MemoryStream));
  if (place == nullptr) return nullptr;
  auto *stream = new (place) MemoryStream{};
  static_cast<HPDF_Stream_Rec &>(*stream) = NewStreamRecord(memory, HPDF_STREAM_MEMORY);
  stream->blocks = &stream->onlyBlock;
  stream->blockRoom = 1;
  stream->write_fn = &Write;
  stream->read_fn = &Read;
  stream->seek_fn = &Seek;
  stream->free_fn = &Free;
  return stream;
}

/// Empties a memory stream; nothing happens for null or another stream.
void HPDF_MemStream_FreeData(HPDF_Stream stream) {
  if (stream == nullptr || stream->type != HPDF_STREAM_MEMORY) return;
  AsMemoryStream(stream).CutBack(0);
}

}  // extern "C"
