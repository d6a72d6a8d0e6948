// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "interface/services.h"

namespace quillbar {

/// Reads a script's array of UInt16 while a call lasts.
class UInt16Array {
 public:
  explicit UInt16Array(ArrayOf<std::uint16_t> *array);

  /// The number of elements; 0 for Nil.
  std::size_t size() const { return size_; }

  /// Whether the host lets elements be read.
  bool IsReadable() const { return getter_ != nullptr; }

  /// Element `index`, counted from 0 and below `size()`. Only when `IsReadable()`.
  std::uint16_t operator[](std::size_t index) const { return getter_(array_, static_cast<std::intptr_t>(index)); }

 private:
  Array array_;
  std::size_t size_;
  UInt16ElementGetter getter_;
};

}  // namespace quillbar
