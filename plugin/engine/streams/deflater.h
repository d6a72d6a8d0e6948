// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_conf.h>

#include <span>

#include "plugin/engine/memory/compressor_memory.h"
#include "plugin/engine/streams/deflate_entries.h"

/// zlib's stream record, with zlib's layout on every platform: 56 bytes where pointers and longs have 32 bits, 88
/// where only longs have, 112 where both have 64.
struct z_stream_s {
  const HPDF_BYTE *next_in;
  unsigned int avail_in;
  unsigned long total_in;
  HPDF_BYTE *next_out;
  unsigned int avail_out;
  unsigned long total_out;
  const char *msg;
  void *state;
  void *(*zalloc)(void *opaque, unsigned int items, unsigned int size);
  void (*zfree)(void *opaque, void *address);
  void *opaque;
  int data_type;
  unsigned long adler;
  unsigned long reserved;
};
static_assert(sizeof(z_stream_s) == (sizeof(void *) == 4 ? 56 : sizeof(long) == 4 ? 88 : 112));

namespace quillbar::engine {

/// One run of the compressor that was handed in (deflate_entries.h). Null entries are never called: they give zlib's
/// stream error.
///
/// Results are zlib's numbers, `kOk` and `kEnd` among them.
class Deflater {
 public:
  static constexpr int kOk = 0;
  static constexpr int kEnd = 1;

  /// The compressor works in `memory`, which must live longer than this.
  explicit Deflater(CompressorMemory &memory);
  /// Gives back what the compressor holds.
  ~Deflater();
  Deflater(const Deflater &) = delete;
  Deflater &operator=(const Deflater &) = delete;

  /// To be called once, before everything else.
  int Begin();

  /// The input of the next steps; the one before must have been used up.
  void SetInput(std::span<const HPDF_BYTE> input);
  bool HasInput() const { return record_.avail_in != 0; }

  /// Lets the compressor do what fits into the output; with `isLast` it ends the compressed data after the input, and
  /// is done when the result is `kEnd`. A compressor that neither takes nor gives anything is not asked for ever: its
  /// result becomes zlib's buffer error.
  int Step(bool isLast);

  /// The output of the steps since the last `TakeOutput`.
  std::span<const HPDF_BYTE> TakeOutput();
  bool IsOutputFull() const { return record_.avail_out == 0; }

 private:
  // What zlib's own rule of thumb makes of a block of input.
  static constexpr unsigned kOutputSize = HPDF_STREAM_BUF_SIZ * 11 / 10 + 13;

  z_stream_s record_{};
  bool isBegun_ = false;
  HPDF_BYTE output_[kOutputSize];
};

}  // namespace quillbar::engine
