// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "host/runtime/type.h"

/// The dialect's rules for numbers, in one place for values, the checker's constants and running code.
namespace quillbar::host {

/// `number` as an integer of this kind holds it: the low bits, sign- or zero-extended. Integer arithmetic wraps around
/// without an error.
constexpr std::int64_t NarrowInteger(TypeKind kind, std::int64_t number) {
  switch (kind) {
    case TypeKind::kBoolean:
      return number != 0 ? 1 : 0;
    case TypeKind::kInt8:
      return static_cast<std::int8_t>(number);
    case TypeKind::kInt16:
      return static_cast<std::int16_t>(number);
    case TypeKind::kInt32:
      return static_cast<std::int32_t>(number);
    case TypeKind::kUInt8:
      return static_cast<std::uint8_t>(number);
    case TypeKind::kUInt16:
      return static_cast<std::uint16_t>(number);
    case TypeKind::kUInt32:
    case TypeKind::kColor:
      return static_cast<std::uint32_t>(number);
    default:
      return number;
  }
}

/// A real number as an integer of this kind: the fraction is dropped, numbers out of range are clamped to the bounds
/// of the kind, and not-a-number is 0. A UInt64 is returned by its bits.
inline std::int64_t TruncateRealTo(TypeKind kind, double number) {
  const auto within = [number]<class Kind>(Kind) {
    using Limits = std::numeric_limits<Kind>;
    if (std::isnan(number)) return Kind{0};
    // As a real number, the upper bound of the 64-bit kinds rounds up to a power of two, which is out of range.
    if (number >= static_cast<double>(Limits::max())) return Limits::max();
    if (number <= static_cast<double>(Limits::min())) return Limits::min();
    return static_cast<Kind>(number);
  };
  switch (kind) {
    case TypeKind::kInt8:
      return within(std::int8_t{});
    case TypeKind::kInt16:
      return within(std::int16_t{});
    case TypeKind::kInt32:
      return within(std::int32_t{});
    case TypeKind::kUInt8:
      return within(std::uint8_t{});
    case TypeKind::kUInt16:
      return within(std::uint16_t{});
    case TypeKind::kUInt32:
      return within(std::uint32_t{});
    case TypeKind::kUInt64:
      return static_cast<std::int64_t>(within(std::uint64_t{}));
    default:
      return NarrowInteger(kind, within(std::int64_t{}));
  }
}

/// An integer of this kind as a Double, rounded to the nearest.
inline double RealFromInteger(TypeKind kind, std::int64_t number) {
  return kind == TypeKind::kUInt64 ? static_cast<double>(static_cast<std::uint64_t>(number))
                                   : static_cast<double>(number);
}

/// A real number rounded to Single. Overflow gives infinity, as C conversions do on every machine with IEEE numbers.
inline double RoundToSingle(double number) { return static_cast<double>(static_cast<float>(number)); }

}  // namespace quillbar::host
