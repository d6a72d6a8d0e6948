// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "host/runtime/host.h"
#include "tests/differential/call.h"
#include "tests/differential/intended_differences.h"
#include "tests/differential/library_page.h"

namespace quillbar::differential {

/// A difference that is not intended.
struct Finding {
  std::size_t call = 0;  // the number of calls, when it shows in what saving adds
  std::string text;
};

/// Makes the same calls through the plugin and through the reference, and compares what they do.
class Judge {
 public:
  explicit Judge(host::Host &host, const IntendedDifferences &differences = {})
      : host_(host), differences_(differences) {}

  /// Makes up a sequence of calls and judges it while it grows. `sequence` receives it.
  std::optional<Finding> JudgeRandomCalls(std::uint64_t seed, Sequence &sequence);
  /// Judges these calls. Calls that can't be judged are left out on both sides.
  std::optional<Finding> JudgeCalls(const Sequence &sequence);

  /// The fewest calls of the sequence that still show a difference.
  Sequence Shrunk(Sequence sequence);
  /// What one needs to fix a bug: the seed, the last calls, both sides, and the shrunk sequence.
  std::string Report(std::uint64_t seed, const Sequence &sequence, const Finding &finding);

  const Widths &WidthsOf(const FontChoice &font);

 private:
  class Trial;

  host::Host &host_;
  IntendedDifferences differences_;
  std::map<std::pair<std::string, std::int32_t>, Widths> widths_;
};

}  // namespace quillbar::differential
