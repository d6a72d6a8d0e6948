#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "host/runtime/type.h"
#include "host/runtime/value.h"

/// The dialect's rules for numbers, in one place for the checker's constants and for what runs.
namespace quillbar::language {

/// `number` as an integer of this kind holds it: the low bits, sign- or zero-extended. Integer
/// arithmetic wraps around in silence.
constexpr std::int64_t NarrowInteger(host::TypeKind kind, std::int64_t number) {
  switch (kind) {
    case host::TypeKind::kBoolean:
      return number != 0 ? 1 : 0;
    case host::TypeKind::kInt8:
      return static_cast<std::int8_t>(number);
    case host::TypeKind::kInt16:
      return static_cast<std::int16_t>(number);
    case host::TypeKind::kInt32:
      return static_cast<std::int32_t>(number);
    case host::TypeKind::kUInt8:
      return static_cast<std::uint8_t>(number);
    case host::TypeKind::kUInt16:
      return static_cast<std::uint16_t>(number);
    case host::TypeKind::kUInt32:
    case host::TypeKind::kColor:
      return static_cast<std::uint32_t>(number);
    default:
      return number;
  }
}

/// A real number as an integer: the fraction is dropped, what lies beyond Int64 ends at its borders, and
/// not-a-number is 0.
inline std::int64_t TruncateReal(double number) {
  if (std::isnan(number)) return 0;
  if (number >= 9223372036854775808.0) return std::numeric_limits<std::int64_t>::max();
  if (number < -9223372036854775808.0) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(number);
}

/// The same for UInt64, whose upper half lies beyond Int64; gives its bits.
inline std::int64_t TruncateRealTo(host::TypeKind kind, double number) {
  if (kind != host::TypeKind::kUInt64 || number < 9223372036854775808.0) {
    return NarrowInteger(kind, TruncateReal(number));
  }
  if (number >= 18446744073709551616.0) return -1;
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(number));
}

inline double RealFromInteger(host::TypeKind kind, std::int64_t number) {
  return kind == host::TypeKind::kUInt64 ? static_cast<double>(static_cast<std::uint64_t>(number))
                                         : static_cast<double>(number);
}

/// What overflows Single becomes infinite, as a conversion in C does on every machine with IEEE numbers.
inline double RoundToSingle(double number) { return static_cast<double>(static_cast<float>(number)); }

/// The interpreter's form of an integer or real number as a value of the host, and back.
host::Value BoxInteger(host::Type type, std::int64_t number);
host::Value BoxReal(host::Type type, double number);
std::int64_t UnboxInteger(const host::Value &value);
double UnboxReal(const host::Value &value);

}  // namespace quillbar::language
