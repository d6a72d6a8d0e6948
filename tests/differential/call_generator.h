// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "tests/differential/call.h"
#include "tests/differential/random_numbers.h"

namespace quillbar::differential {

/// Makes up calls. Most fit the page's mode and have usual values, so that sequences get deep; the others are what
/// careless scripts do.
class CallGenerator {
 public:
  explicit CallGenerator(std::uint64_t seed) : random_(seed) {}

  /// A sequence without calls: the fonts of its document.
  Sequence Begin();
  /// The next call for a page in this graphics mode.
  Call Next(unsigned mode);
  /// Whether the sequence should continue; sequences have 50 calls on average.
  bool Continues() { return random_.Below(50) != 0; }

 private:
  Member NextMember(unsigned mode);
  float Any();
  float Coordinate();
  float Length();
  float Component();
  float Angle();
  float FontSize();
  float Scale();
  void FillMatrix(float *matrix);
  std::int32_t NumberUpTo(std::int32_t last);
  std::string Text();

  RandomNumbers random_;
};

}  // namespace quillbar::differential
