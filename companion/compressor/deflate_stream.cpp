// SPDX-License-Identifier: MIT
#include "companion/compressor/deflate_stream.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "companion/compressor/part_compressor.h"

namespace quillbar::companion {
namespace {

constexpr unsigned kFirstCapacity = 16 * 1024;
constexpr unsigned kGrowth = 4;
static_assert(kFirstCapacity * kGrowth * kGrowth == kPartSize);

constexpr std::size_t kHeaderSize = 2;
constexpr std::size_t kChecksumSize = 4;

// What Z_NO_FLUSH up to Z_BLOCK ask for, in growing order, as zlib sorts them.
int Rank(int flush) { return flush * 2 - (flush > Z_FINISH ? 9 : 0); }

void *Allocate(void *opaque, unsigned items, unsigned size) {
  const auto stream = static_cast<z_streamp>(opaque);
  if (stream->zalloc != nullptr) return stream->zalloc(stream->opaque, items, size);
  return std::malloc(std::size_t{items} * size);
}

void Free(z_streamp stream, void *block) {
  if (stream->zfree != nullptr) {
    stream->zfree(stream->opaque, block);
  } else {
    std::free(block);
  }
}

class DeflateStream {
 public:
  explicit DeflateStream(z_streamp owner) : owner_(owner) {}

  // What was allocated is there to be given back whether or not this succeeds.
  bool Begin(int level) {
    level_ = level;
    compressor_ = NewPartCompressor(level, Allocate, owner_, &compressorBlock_);
    return compressor_ != nullptr && Grow(kFirstCapacity);
  }

  void GiveBack() {
    if (buffers_ != nullptr) Free(owner_, buffers_);
    if (compressorBlock_ != nullptr) Free(owner_, compressorBlock_);
  }

  bool IsOf(z_streamp stream) const { return owner_ == stream; }
  bool IsFinished() const { return isFinished_; }
  bool IsUntouched() const { return flush_ < 0; }

  int Run(int flush) {
    z_stream &record = *owner_;
    if (isFinished_ && flush != Z_FINISH) return Refuse(Z_STREAM_ERROR);
    if (record.avail_out == 0) return Refuse(Z_BUF_ERROR);
    const bool wasPending = IsPending();
    const int flushBefore = flush_;
    flush_ = flush;
    if (!wasPending && record.avail_in == 0 && flush != Z_FINISH && Rank(flush) <= Rank(flushBefore)) {
      return Refuse(Z_BUF_ERROR);
    }
    if (isFinished_ && record.avail_in != 0) return Refuse(Z_BUF_ERROR);

    for (;;) {
      GiveOutput();
      if (IsPending()) return Z_OK;
      if (isFinished_) return Z_STREAM_END;
      TakeInput();
      if (record.avail_in != 0) {
        CompressGathered(false);
      } else if (flush == Z_FINISH) {
        CompressGathered(true);
      } else if (flush != Z_NO_FLUSH && (!isFlushed_ || gathered_ != 0)) {
        CompressGathered(false);
        isFlushed_ = true;
      } else {
        return Z_OK;
      }
    }
  }

 private:
  int Refuse(int result) {
    owner_->msg = const_cast<char *>(result == Z_BUF_ERROR ? "buffer error" : "stream error");
    return result;
  }

  bool IsPending() const { return given_ != outputSize_; }

  // The input's buffer and, behind it, the output's. The stream keeps those it has where there is no memory for others.
  bool Grow(unsigned capacity) {
    const std::size_t size = capacity + kHeaderSize + PartBound(capacity) + kChecksumSize;
    auto *buffers = static_cast<std::uint8_t *>(Allocate(owner_, 1, static_cast<unsigned>(size)));
    if (buffers == nullptr) return false;
    if (buffers_ != nullptr) {
      std::memcpy(buffers, buffers_, gathered_);
      Free(owner_, buffers_);
    }
    buffers_ = buffers;
    output_ = buffers + capacity;
    capacity_ = capacity;
    return true;
  }

  // Until there is no more of it or the buffer can't hold more.
  void TakeInput() {
    z_stream &record = *owner_;
    while (record.avail_in != 0) {
      if (gathered_ == capacity_ && (capacity_ == kPartSize || !Grow(capacity_ * kGrowth))) return;
      const unsigned size = std::min(record.avail_in, capacity_ - gathered_);
      std::memcpy(buffers_ + gathered_, record.next_in, size);
      record.adler = UpdateChecksum(record.adler, record.next_in, size);
      record.next_in += size;
      record.avail_in -= size;
      record.total_in += size;
      gathered_ += size;
    }
  }

  void CompressGathered(bool isLast) {
    std::uint8_t *next = output_;
    if (!hasHeader_) {
      next = PutHeader(next);
      hasHeader_ = true;
    }
    next += CompressPart(compressor_, buffers_, gathered_, isLast, next);
    if (isLast) {
      for (int shift = 24; shift >= 0; shift -= 8) *next++ = static_cast<std::uint8_t>(owner_->adler >> shift);
      isFinished_ = true;
    }
    outputSize_ = static_cast<std::size_t>(next - output_);
    given_ = 0;
    gathered_ = 0;
    isFlushed_ = false;
  }

  // Deflate with a window of 32 KB, and how hard was tried, as RFC 1950 has them; together a multiple of 31.
  std::uint8_t *PutHeader(std::uint8_t *next) const {
    const unsigned effort = level_ < 2 ? 0 : level_ < 6 ? 1 : level_ == 6 ? 2 : 3;
    unsigned header = 0x7800 | effort << 6;
    header += 31 - header % 31;
    *next++ = static_cast<std::uint8_t>(header >> 8);
    *next++ = static_cast<std::uint8_t>(header);
    return next;
  }

  void GiveOutput() {
    z_stream &record = *owner_;
    const auto size = static_cast<unsigned>(std::min<std::size_t>(record.avail_out, outputSize_ - given_));
    if (size == 0) return;
    std::memcpy(record.next_out, output_ + given_, size);
    record.next_out += size;
    record.avail_out -= size;
    record.total_out += size;
    given_ += size;
  }

  z_streamp owner_;
  PartCompressor *compressor_ = nullptr;
  void *compressorBlock_ = nullptr;
  std::uint8_t *buffers_ = nullptr;
  std::uint8_t *output_ = nullptr;
  unsigned capacity_ = 0;
  unsigned gathered_ = 0;
  std::size_t outputSize_ = 0;
  std::size_t given_ = 0;
  int level_ = 0;
  int flush_ = -1;
  bool hasHeader_ = false;
  bool isFlushed_ = false;
  bool isFinished_ = false;
};

// zlib's declaration names a structure of its own there.
DeflateStream *StateOf(z_streamp stream) {
  if (stream == nullptr) return nullptr;
  auto *state = reinterpret_cast<DeflateStream *>(stream->state);
  return state != nullptr && state->IsOf(stream) ? state : nullptr;
}

}  // namespace

int InitDeflate(z_streamp stream, int level, const char *version, int recordSize) {
  if (version == nullptr || version[0] != ZLIB_VERSION[0] || recordSize != static_cast<int>(sizeof(z_stream))) {
    return Z_VERSION_ERROR;
  }
  if (stream == nullptr) return Z_STREAM_ERROR;
  stream->msg = nullptr;
  stream->state = nullptr;
  if (level == Z_DEFAULT_COMPRESSION) level = 6;
  if (level < 0 || level > 9) return Z_STREAM_ERROR;
  void *block = Allocate(stream, 1, sizeof(DeflateStream));
  if (block == nullptr) return Z_MEM_ERROR;
  auto *state = new (block) DeflateStream(stream);
  if (!state->Begin(level)) {
    state->GiveBack();
    Free(stream, block);
    return Z_MEM_ERROR;
  }
  stream->state = reinterpret_cast<internal_state *>(state);
  stream->total_in = 0;
  stream->total_out = 0;
  stream->data_type = Z_UNKNOWN;
  stream->adler = 1;
  return Z_OK;
}

int Deflate(z_streamp stream, int flush) {
  DeflateStream *state = StateOf(stream);
  if (state == nullptr || flush < Z_NO_FLUSH || flush > Z_BLOCK || stream->next_out == nullptr ||
      (stream->avail_in != 0 && stream->next_in == nullptr)) {
    return Z_STREAM_ERROR;
  }
  return state->Run(flush);
}

int EndDeflate(z_streamp stream) {
  DeflateStream *state = StateOf(stream);
  if (state == nullptr) return Z_STREAM_ERROR;
  const bool isUnfinished = !state->IsFinished() && !state->IsUntouched();
  state->GiveBack();
  Free(stream, state);
  stream->state = nullptr;
  return isUnfinished ? Z_DATA_ERROR : Z_OK;
}

}  // namespace quillbar::companion
