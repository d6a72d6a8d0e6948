// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillbar::differential {

/// An event ErrorLog, with what LastErrorNumber and LastErrorDetailNumber read inside its handler.
struct Event {
  std::uint32_t number = 0;
  std::uint32_t detail = 0;
  std::uint32_t numberBefore = 0;
  std::uint32_t detailBefore = 0;

  bool operator==(const Event &) const = default;
};

/// A number that a call returned or that a property reads.
struct Reading {
  double value = 0;
  double tolerance = 0;      // how far the other side's number may be away
  bool isComparable = true;  // false: one side doesn't define it
};

/// The properties that are read after every call.
enum class Getter : std::uint8_t {
  kWidth,
  kHeight,
  kTransformCoordinates,
  kGraphicsMode,
  kFillColor,
  kStrokeColor,
  kLineWidth,
  kLineCapType,
  kLineJoinType,
  kTextLeading,
  kTextRise,
  kWordSpace,
  kTextRenderingMode,
  kSuggestedTextLeading,
  kTextPositionX,
  kTextPositionY,
  kLastErrorNumber,
  kLastErrorDetailNumber,
  kCount
};
inline constexpr std::size_t kGetterCount = static_cast<std::size_t>(Getter::kCount);

/// The property's name as scripts write it.
const char *NameOf(Getter getter);

/// What a call did, apart from the operators that it wrote.
struct Observation {
  std::vector<Event> events;
  std::vector<Reading> results;  // what the call returned, then its ByRef arguments
  std::array<Reading, kGetterCount> getters{};

  /// The reading of a property.
  Reading &operator[](Getter getter) { return getters[static_cast<std::size_t>(getter)]; }
};

/// Whether both are the same number, or close enough by the reference's tolerance.
bool IsSame(const Reading &plugin, const Reading &reference);

/// How they differ; empty when they don't.
std::optional<std::string> Difference(const Observation &plugin, const Observation &reference);

}  // namespace quillbar::differential
