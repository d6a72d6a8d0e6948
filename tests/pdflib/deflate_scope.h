// SPDX-License-Identifier: MIT
// Sets the process-wide deflate entry points for one test.
#pragma once

#include <zlib.h>

#include "plugin/pdflib-changes/deflate_entries.h"

namespace quillbar {

class DeflateScope {
 public:
  // zlib itself, unless a test has entry points of its own.
  explicit DeflateScope(pdflib::DeflateInitEntry init = &deflateInit_, pdflib::DeflateEntry step = &deflate,
                        pdflib::DeflateEndEntry end = &deflateEnd) {
    pdflib::deflateInitEntry = init;
    pdflib::deflateEntry = step;
    pdflib::deflateEndEntry = end;
  }
  ~DeflateScope() {
    pdflib::deflateInitEntry = nullptr;
    pdflib::deflateEntry = nullptr;
    pdflib::deflateEndEntry = nullptr;
  }
  DeflateScope(const DeflateScope &) = delete;
  DeflateScope &operator=(const DeflateScope &) = delete;
};

}  // namespace quillbar
