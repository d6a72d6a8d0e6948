// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstddef>

#include "plugin/engine/layout/line_breaks.h"

namespace quillbar::engine {

/// How text is broken into lines.
struct LineSettings {
  HPDF_REAL width;  // of a line, in text space units like the sizes and spaces that follow
  HPDF_REAL fontSize;
  HPDF_REAL characterSpace;
  HPDF_REAL wordSpace;
  bool breaksAtWords;  // after white space, and where a LineBreaker says; otherwise before each character
};

/// Finds how much of a text fits into a line. A font takes the text's characters through it in order; all kinds of
/// fonts break lines alike, but for `Sum`, the type in which libharu adds up the widths in a kind of font: fits are
/// exact to the last bit.
template <typename Sum>
class LineFit {
 public:
  /// `reached` receives the width of what fits without the white space at its end; null if nobody asks.
  LineFit(const LineSettings &line, HPDF_REAL *reached) : line_(line), reachedWidth_(reached) {}

  /// A character begins at the byte `start`, before which its text has `itsBreak`.
  void BeginCharacter(std::size_t start, LineBreak itsBreak = LineBreak::kNone) {
    if (!line_.breaksAtWords || itsBreak == LineBreak::kAllowed) {
      Break(start);
    } else if (itsBreak == LineBreak::kEmergency && fitting_ == 0) {
      emergency_ = start;
      emergencyWidth_ = sum_;
    }
  }

  /// A white space ends before the byte `end`, where the line may be broken.
  void BeginWhiteSpace(std::size_t end) {
    Break(end);
    sum_ += line_.wordSpace;
  }

  void AddCharacterSpace() { sum_ += line_.characterSpace; }

  /// Adds a width in text space units. False when it does not fit: then `Fitting` is the answer.
  bool Add(Sum width) {
    sum_ += width;
    return !(sum_ > line_.width);
  }

  /// How many bytes of the text fit.
  HPDF_UINT Fitting() {
    if (fitting_ == 0 && emergency_ > 0) {
      sum_ = emergencyWidth_;
      Break(emergency_);
    }
    return static_cast<HPDF_UINT>(fitting_);
  }

  /// The answer when all the `length` bytes of the text fit.
  HPDF_UINT FittingWhole(std::size_t length) {
    Break(length);
    return Fitting();
  }

 private:
  void Break(std::size_t position) {
    fitting_ = position;
    if (reachedWidth_ != nullptr) *reachedWidth_ = static_cast<HPDF_REAL>(sum_);
  }

  const LineSettings &line_;
  HPDF_REAL *reachedWidth_;
  Sum sum_ = 0;
  std::size_t fitting_ = 0;
  Sum emergencyWidth_ = 0;
  std::size_t emergency_ = 0;
};

}  // namespace quillbar::engine
