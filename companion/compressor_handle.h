// SPDX-License-Identifier: MIT
#pragma once

#include "interface/records.h"
#include "interface/values.h"

namespace quillbar::companion {

using CompressorHandle = Instance<"CompressorHandle">;

/// The private data block, which other plugins read: four words in this order. The functions have
/// zlib's interface and take its stream record; see compressor/deflate_stream.h.
struct CompressorHandleData {
  void *unused;
  int (*end)(void *stream);
  int (*init)(void *stream, int level, const char *version, int streamSize);
  int (*deflate)(void *stream, int flush);

  static ClassRecord definition;
};
static_assert(sizeof(CompressorHandleData) == 4 * sizeof(void *));

}  // namespace quillbar::companion
