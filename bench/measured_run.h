// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

namespace quillbar::bench {

/// What one run took.
struct Measurement {
  double seconds = 0;
  double processorSeconds = 0;   // of this process alone
  std::int64_t peakBytes = 0;    // peak resident memory of the process
  std::int64_t growthBytes = 0;  // what the measured part added to the peak before it
  std::int64_t fileBytes = 0;
};

/// What a run does: `prepare` is not measured and returns the part that is, which returns the size of the
/// file that it wrote.
using MeasuredPart = std::function<std::int64_t()>;
using Run = std::function<MeasuredPart()>;

/// Runs this in a process of its own, so that each run has its own peak of memory and a fresh heap. Throws
/// std::runtime_error when the run fails.
Measurement MeasureInOwnProcess(const Run &prepare);

}  // namespace quillbar::bench
