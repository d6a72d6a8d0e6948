// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace quillbar::differential {

/// Where the plugin differs from libharu 2.3.0 on purpose. docs/differences.md is this table.
enum class IntendedDifference : std::uint8_t {
  kRefusedCallsWriteNothing,
  kOneEventForACall,
  kNumbersThatAreNotFinite,
  kDecimals,
  kLargeNumbers,
  kSizeAfterTheLast,
  kDashPhase,
  kArcOfOneTurn,
  kArcOfNothing,
  kArcWithoutRadius,
  kArcOfManyTurns,
  kArcPrecision,
  kSingularTextMatrix,
  kSpacingWrittenOnce,
  kEmptyLine,
  kWhiteSpaceAtLineEnds,
  kJustifiedGaps,
  kPositionAfterABox,
  kSpacingAfterABox,
  kTurnedBox,
  kWidthsOfLetters,
  kSymbolFonts,
  kClippingPathWhenSaved,
  kCount
};
inline constexpr std::size_t kIntendedDifferenceCount = static_cast<std::size_t>(IntendedDifference::kCount);

/// One line of the table, in Markdown.
struct DifferenceDescription {
  IntendedDifference difference;
  const char *name;  // of its test
  const char *where;
  const char *library;
  const char *here;
  const char *why;
};

/// All entries, in the order of the documentation.
std::span<const DifferenceDescription> AllIntendedDifferences();

/// The table as the documentation has it.
std::string TableOfIntendedDifferences();

/// Which entries are allowed in a trial. The judge disallows an entry to see whether it is still needed.
class IntendedDifferences {
 public:
  IntendedDifferences() { holds_.fill(true); }

  /// Whether the entry is allowed.
  bool IsAllowed(IntendedDifference difference) const { return holds_[static_cast<std::size_t>(difference)]; }
  /// Disallows an entry.
  void Disallow(IntendedDifference difference) { holds_[static_cast<std::size_t>(difference)] = false; }

 private:
  std::array<bool, kIntendedDifferenceCount> holds_{};
};

}  // namespace quillbar::differential
