// SPDX-License-Identifier: MIT
#pragma once

#include <stdbool.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// libdeflate's compressor, one part of a deflate stream after the other. A part refers to nothing before it, and begins
/// and ends at a byte.
typedef struct libdeflate_compressor PartCompressor;

/// A block of memory from zlib's `zalloc`: `items` times `size` bytes, or null.
typedef void *(*PartMemory)(void *opaque, unsigned int items, unsigned int size);

/// A compressor of zlib's level 0 to 9 in one block of `memory`, which has no other owner: whoever gave it takes
/// `*block` back when the compressor is done. Null when there is no memory.
PartCompressor *NewPartCompressor(int level, PartMemory memory, void *opaque, void **block);

/// The most bytes that `CompressPart` makes of `size` bytes.
size_t PartBound(size_t size);

/// Deflates `size` bytes into `output`, which must have room for `PartBound(size)`. Gives the bytes written.
size_t CompressPart(PartCompressor *compressor, const void *input, size_t size, bool isLast, void *output);

/// Adler-32 of the bytes summed up before and of `size` more; 1 for none.
unsigned long UpdateChecksum(unsigned long sum, const void *bytes, size_t size);

#ifdef __cplusplus
}
#endif
