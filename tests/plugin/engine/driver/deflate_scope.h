// SPDX-License-Identifier: MIT
// Sets the process-wide deflate entry points for one test.
#pragma once

#include <zlib.h>

#include "plugin/engine/streams/deflate_entries.h"

namespace quillbar {

class DeflateScope {
 public:
  // zlib itself, unless a test has entry points of its own.
  explicit DeflateScope(engine::DeflateInitEntry init = &deflateInit_, engine::DeflateEntry step = &deflate,
                        engine::DeflateEndEntry end = &deflateEnd) {
    engine::deflateInitEntry = init;
    engine::deflateEntry = step;
    engine::deflateEndEntry = end;
  }
  ~DeflateScope() {
    engine::deflateInitEntry = nullptr;
    engine::deflateEntry = nullptr;
    engine::deflateEndEntry = nullptr;
  }
  DeflateScope(const DeflateScope &) = delete;
  DeflateScope &operator=(const DeflateScope &) = delete;
};

}  // namespace quillbar
