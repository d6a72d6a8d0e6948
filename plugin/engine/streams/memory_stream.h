// SPDX-License-Identifier: MIT
/// Streams in memory: the content of pages, of fonts and images, and of a document that is saved into memory.
///
/// The content is in blocks, all full but the last one. A block has 4 KB in the first 64 KB of a stream and 64 KB after
/// that, so that large streams need no large piece of an address space of 32 bits; the first one begins small and doubles
/// until it has its size, so that short streams take little, and all take less once they are complete. Blocks begin at
/// multiples of 4 KB: what is deflated in pieces of so much need not be copied for it.
#pragma once

#include <hpdf.h>
#include <hpdf_streams.h>

#include <algorithm>
#include <span>

namespace quillbar::engine {

/// A stream record and the content after it.
///
/// Bytes are added by HPDF_Stream_Write, or directly: written to `tail` and what follows it up to `limit`, and entered
/// with `Commit`. Without memory, or while a failure is on its way out of the library, nothing of a write is added.
struct MemoryStream : HPDF_Stream_Rec {
  /// Pieces in which content is read and deflated.
  static constexpr HPDF_UINT kPiece = 4096;

  HPDF_BYTE *tail, *limit;  // null without blocks
  HPDF_BYTE **blocks;       // as many as hold the content; `onlyBlock` while there is room for one
  HPDF_BYTE *onlyBlock;
  HPDF_UINT blockCount, blockRoom, readPosition;

  /// Enters `count` bytes that were written to `tail`.
  void Commit(HPDF_UINT count) {
    tail += count;
    size += count;
  }

  /// Whether more room takes another block: the last one has its full size, or there is none.
  bool IsLastBlockFull() const;

  /// Makes the last block larger, which may move it, so that there is more room in one piece. Whether it became so:
  /// not when the block has its full size, nor when memory is short; no error is set.
  bool ExtendTail();

  /// Gives back what room the last block has to spare, if that is much of it; for a stream that is complete as far as
  /// anybody knows. More can be added. Nothing happens when memory is short.
  void GiveBackSpareRoom();

  /// Ends the stream at `newSize` bytes, at most those that it has. A reader that was further on is at the end then.
  void CutBack(HPDF_UINT newSize);

  /// The content from `position` on, as far as it is in one block; `position` must be within the content.
  std::span<const HPDF_BYTE> ContentFrom(HPDF_UINT position) const;

  /// Moves the content to `bytes`, where there must be room for it, and leaves the stream empty. Each block is given
  /// back once it is copied.
  void MoveTo(HPDF_BYTE *bytes);
};

/// `stream` as the memory stream that it must be.
inline MemoryStream &AsMemoryStream(HPDF_Stream stream) { return *static_cast<MemoryStream *>(stream); }

/// Where a memory stream ended when this was made. What has been written since can be taken back.
class MemoryStreamMark {
 public:
  /// `stream` must be a memory stream and live longer than this.
  explicit MemoryStreamMark(HPDF_Stream stream) : stream_(stream), size_(stream->size) {}

  /// Ends the stream here again.
  void CutBack() const { AsMemoryStream(stream_).CutBack(size_); }

 private:
  HPDF_Stream stream_;
  HPDF_UINT size_;
};

}  // namespace quillbar::engine
