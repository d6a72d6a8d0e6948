// SPDX-License-Identifier: MIT
#include "companion/compressor/part_compressor.h"

#include <stdatomic.h>

// deflate_compress.c is part of this file for what it keeps to itself: parts that are followed.
#include "lib/lib_common.h"

#include "libdeflate.h"

// The library's functions for memory get no argument of the caller's. Here they do: the options are the beginning of
// this.
struct OwnedOptions {
  struct libdeflate_options options;
  PartMemory memory;
  void *opaque;
  void *block;
};

static void *AllocateCompressor(const struct libdeflate_options *options, size_t alignment, size_t size) {
  struct OwnedOptions *owned = (struct OwnedOptions *)options;
  owned->block = owned->memory(owned->opaque, 1, (unsigned int)(size + alignment - 1));
  return owned->block == NULL ? NULL
                              : (void *)(((uintptr_t)owned->block + alignment - 1) & ~(uintptr_t)(alignment - 1));
}

static void InitStaticCodes(PartCompressor *compressor);

#define libdeflate_aligned_malloc(function, alignment, size) AllocateCompressor(options, alignment, size)
#include "lib/deflate_compress.c"

// The first compressor of the process makes them, which takes as long as compressing some lines of text. The others copy
// them.
static void InitStaticCodes(PartCompressor *compressor) {
  enum { kNone, kBeingCopied, kThere };
  static atomic_int state = kNone;
  static struct deflate_codes codes;
  if (atomic_load_explicit(&state, memory_order_acquire) == kThere) {
    compressor->static_codes = codes;
    return;
  }
  deflate_init_static_codes(compressor);
  int expected = kNone;
  if (atomic_compare_exchange_strong(&state, &expected, kBeingCopied)) {
    codes = compressor->static_codes;
    atomic_store_explicit(&state, kThere, memory_order_release);
  }
}

// How many earlier places are tried for each match at the level that nobody chose: libdeflate's 35 take a twentieth to a
// fourteenth more time for documents, which become up to 2.6 % smaller, and 16 make pages of text larger than zlib does.
enum { kDefaultLevel = 6, kDefaultSearchDepth = 24 };

PartCompressor *NewPartCompressor(int level, PartMemory memory, void *opaque, void **block) {
  struct OwnedOptions owned = {{sizeof owned.options}, memory, opaque, NULL};
  PartCompressor *compressor = libdeflate_alloc_compressor_ex(level, &owned.options);
  *block = owned.block;
  if (compressor != NULL && level == kDefaultLevel) compressor->max_search_depth = kDefaultSearchDepth;
  return compressor;
}

// An empty block without compression, after which a part ends at a byte: three bits, the rest of their byte, four bytes.
enum { kMarkSize = 5 };

size_t PartBound(size_t size) { return libdeflate_deflate_compress_bound(NULL, size) + kMarkSize; }

size_t CompressPart(PartCompressor *compressor, const void *input, size_t size, bool isLast, void *output) {
  compressor->is_followed = !isLast;
  if (isLast) return libdeflate_deflate_compress(compressor, input, size, output, PartBound(size));

  u8 *next = output;
  unsigned bits = 0;
  if (size > compressor->max_passthrough_size) {
    struct deflate_output_bitstream stream = {0};
    stream.next = next;
    stream.end = next + PartBound(size);
    compressor->impl(compressor, input, size, &stream);
    next = stream.next;
    bits = stream.bitcount;
    if (bits != 0) *next++ = (u8)stream.bitbuf;
  } else if (size > 0) {
    // Too short to be compressed, or of level 0. The last one of these blocks says that it is the last.
    u8 *last = next + (size - 1) / UINT16_MAX * (5 + UINT16_MAX);
    next += deflate_compress_none(input, size, next, PartBound(size));
    *last &= ~1;
  }
  // The three bits have room in the byte that was begun, if five at most are taken.
  if (bits == 0 || bits > 5) *next++ = 0;
  put_unaligned_le32(0xFFFF0000, next);
  return (size_t)(next + 4 - (u8 *)output);
}

unsigned long UpdateChecksum(unsigned long sum, const void *bytes, size_t size) {
  return libdeflate_adler32((u32)sum, bytes, size);
}
