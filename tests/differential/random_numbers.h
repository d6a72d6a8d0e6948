// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>

namespace quillbar::differential {

/// Random numbers that are the same on every platform for the same seed, unlike the distributions of the C++ library.
/// SplitMix64.
class RandomNumbers {
 public:
  explicit RandomNumbers(std::uint64_t seed) : state_(seed) {}

  /// The next 64 random bits.
  std::uint64_t Next() {
    std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
  }
  /// 0 to `count` - 1.
  unsigned Below(unsigned count) { return static_cast<unsigned>((Next() >> 32) % count); }
  int Between(int first, int last) { return first + static_cast<int>(Below(static_cast<unsigned>(last - first + 1))); }
  bool Percent(unsigned chance) { return Below(100) < chance; }
  template <class T>
  T OneOf(std::initializer_list<T> values) {
    return values.begin()[Below(static_cast<unsigned>(values.size()))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace quillbar::differential
