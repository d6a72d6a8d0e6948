// SPDX-License-Identifier: MIT
// How numbers are printed, which ones an object of type real may hold, and the library's small records of numbers.
//
// Reals are printed as plain decimals with 5 places at most, or with 5 significant digits for magnitudes below 0.1,
// which takes up to 10 places. Where fewer digits are read back as the same single, those are printed (130.656 and not
// 130.65601); otherwise the number is rounded correctly. No trailing zeros, no "-0", no exponent; nothing depends on
// the locale. Magnitudes end at 2147483520, the largest single below 2^31: a larger number without a point would not
// be an integer to readers that have 32 bits for it.
#include "plugin/engine/objects/number_text.h"

#include <hpdf_utils.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

namespace quillbar::engine {

namespace {

constexpr HPDF_REAL kLargest = 2147483520.0F;
constexpr int kDigits = 5;
constexpr int kMostZeros = 5;
constexpr std::uint32_t kUnit = 100'000;

// "00" to "99", one after the other.
constexpr std::array<char, 200> kPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

// A number below 100. An index checked at every pair of digits is 4 % of the instructions of a page of paths.
char *WritePair(char *s, std::size_t number) {
  std::memcpy(s, kPairs.data() + 2 * number, 2);
  return s + 2;
}

// The whole numbers below 1000, which most of a page's are, with their length after them.
struct ShortWhole {
  char digits[3];
  std::uint8_t length;
};
constexpr std::array<ShortWhole, 1000> kShortWholes = [] {
  std::array<ShortWhole, 1000> wholes{};
  for (unsigned i = 0; i < wholes.size(); ++i) {
    ShortWhole &whole = wholes[i];
    if (i >= 100) whole.digits[whole.length++] = static_cast<char>('0' + i / 100);
    if (i >= 10) whole.digits[whole.length++] = static_cast<char>('0' + i / 10 % 10);
    whole.digits[whole.length++] = static_cast<char>('0' + i % 10);
  }
  return wholes;
}();

[[gnu::noinline]] char *WriteLongWhole(char *s, std::uint32_t whole) {
  return std::to_chars(s, s + std::numeric_limits<std::uint32_t>::digits10 + 1, whole).ptr;
}

// Writes a whole number. Returns the end.
[[gnu::always_inline]] inline char *WriteWhole(char *s, std::uint32_t whole) {
  if (whole >= kShortWholes.size()) [[unlikely]]
    return WriteLongWhole(s, whole);
  const ShortWhole &digits = kShortWholes.data()[whole];
  std::memcpy(s, digits.digits, sizeof digits.digits);
  return s + digits.length;
}

// Writes the first `digits` of the five digits of `number`. Returns the end; the others are behind it.
[[gnu::always_inline]] inline char *WriteDigits(char *s, std::uint32_t number, int digits) {
  *s = static_cast<char>('0' + number / 10'000);
  WritePair(s + 1, number / 100 % 100);
  WritePair(s + 3, number % 100);
  return s + digits;
}

// Writes the five digits of a fraction without the zeros at its end. Returns the end.
char *WriteWithoutZeros(char *s, std::uint32_t number) {
  int digits = kDigits;
  for (std::uint32_t rest = number; rest % 10 == 0 && digits > 1; rest /= 10) --digits;
  return WriteDigits(s, number, digits);
}

// A magnitude from 0.1 on that has a fraction, as the single has it: `mantissa` times 2 to the power of minus `places`.
//
// The mantissa has 24 bits and the unit of the fifth place 17, so all of this is exact in whole numbers. A decimal that is
// nearer to the number than half the distance to its neighbours is read back as it: that distance is one unit of the
// mantissa, and for the numbers below 1, where five digits are what is wanted, none counts as near.
struct Fraction {
  std::uint32_t mantissa;
  int places;

  std::uint32_t Whole() const { return mantissa >> places; }
  // What is after the point, in units of the fifth place, times 2 to the power of `places`.
  std::uint64_t Scaled() const { return std::uint64_t{mantissa & ((1U << places) - 1)} * kUnit; }
};

// Writes the number. Returns the end.
char *WriteFraction(char *s, const Fraction &number) {
  std::uint32_t whole = number.Whole();
  const std::uint64_t scaled = number.Scaled();
  const auto rounded =
      static_cast<std::uint32_t>((scaled + (std::uint64_t{1} << (number.places - 1))) >> number.places);
  if (rounded == kUnit) return WriteWhole(s, ++whole);
  const std::uint64_t halfGap = whole != 0 ? kUnit / 2 : 0;
  s = WriteWhole(s, whole);
  if (rounded == 0) return s;
  const auto cut = static_cast<std::uint32_t>(scaled >> number.places);
  const auto isNear = [&](std::uint32_t decimal) {
    if (decimal == rounded) return true;
    const std::uint64_t place = std::uint64_t{decimal} << number.places;
    return (place > scaled ? place - scaled : scaled - place) < halfGap;
  };
  // A decimal of one place is also one of two, so if one is near enough, one of each further number of places is. Most
  // coordinates are asked for with two at most: the search begins there.
  const auto nearest = [cut](std::uint32_t step) { return (cut + step / 2) / step * step; };
  *s++ = '.';
  if (const std::uint32_t second = nearest(1000); isNear(second)) {
    const std::uint32_t first = nearest(10'000);
    if (!isNear(first)) return WritePair(s, second / 1000);
    *s = static_cast<char>('0' + first / 10'000);
    return s + 1;
  }
  if (const std::uint32_t third = nearest(100); isNear(third)) return WriteDigits(s, third, 3);
  if (const std::uint32_t fourth = nearest(10); isNear(fourth)) return WriteDigits(s, fourth, 4);
  return WriteDigits(s, rounded, kDigits);
}

// Writes a number below 0.1 with five significant digits, as far as ten places have them. Returns the end.
char *WriteSmall(char *s, HPDF_REAL magnitude, bool isNegative) {
  // The powers of ten have at most 24 bits beside their factors of two, so these products are exact in double precision,
  // and so are their fractions.
  double unit = kUnit;
  double scaled = magnitude * unit;
  int zeros = 0;
  for (; scaled < kUnit / 10.0 && zeros < kMostZeros; ++zeros) {
    unit *= 10;
    scaled = magnitude * unit;
  }
  auto rounded = static_cast<std::uint32_t>(scaled);
  if (scaled - rounded >= 0.5) ++rounded;
  if (rounded == kUnit) {
    rounded = kUnit / 10;
    --zeros;
  }
  if (isNegative && rounded != 0) *s++ = '-';
  *s++ = '0';
  if (rounded == 0) return s;
  *s++ = '.';
  for (; zeros > 0; --zeros) *s++ = '0';
  return WriteWithoutZeros(s, rounded);
}

}  // namespace

char *WriteReal(char *s, HPDF_REAL value) {
  constexpr int kMantissaBits = 23, kBias = 127;
  if (value == 0) return WriteWhole(s, 0);
  const auto bits = std::bit_cast<std::uint32_t>(value);
  const bool isNegative = bits >> 31 != 0;
  const int exponent = static_cast<int>(bits >> kMantissaBits & 0xFF) - kBias;
  if (exponent >= -4 && exponent < kMantissaBits) [[likely]] {
    const std::uint32_t mantissa = (bits & ((1U << kMantissaBits) - 1)) | 1U << kMantissaBits;
    const Fraction number{mantissa, kMantissaBits - exponent};
    if (exponent >= 0 || std::fabs(value) >= 0.1F) {
      if (isNegative) *s++ = '-';
      return WriteFraction(s, number);
    }
  }
  if (exponent < 0) return WriteSmall(s, std::fabs(value), isNegative);
  if (std::isnan(value)) return WriteWhole(s, 0);
  if (isNegative) *s++ = '-';
  return WriteWhole(s, static_cast<std::uint32_t>(std::min(std::fabs(value), kLargest)));
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

/// Writes `value` to `s`, never beyond `last`, and a nul after it if there is room. NaN, which callers refuse, is
/// written as 0. Returns the end of the text.
char *HPDF_FToA(char *s, HPDF_REAL value, char *last) {
  char text[kRoomForReal];
  const std::size_t room = s <= last ? static_cast<std::size_t>(last - s) + 1 : 0;
  char *const begin = room >= sizeof text ? s : text;
  char *const end = WriteReal(begin, value);
  const std::size_t length = std::min(static_cast<std::size_t>(end - begin), room);
  if (begin == text) std::memcpy(s, text, length);
  if (length < room) s[length] = '\0';
  return s + length;
}

/// Writes `value`, or the nearest number with a negative counterpart, to `s` and a nul after it, which comes no later
/// than at `last`. Returns where the nul is.
char *HPDF_IToA(char *s, HPDF_INT32 value, char *last) {
  char text[HPDF_INT_LEN];
  const char *const end = std::to_chars(text, std::end(text), std::max(value, HPDF_LIMIT_MIN_INT)).ptr;
  s = std::copy_n(text, std::min(end - text, last - s), s);
  *s = '\0';
  return s;
}

HPDF_Box HPDF_ToBox(HPDF_INT16 left, HPDF_INT16 bottom, HPDF_INT16 right, HPDF_INT16 top) {
  return {static_cast<HPDF_REAL>(left), static_cast<HPDF_REAL>(bottom), static_cast<HPDF_REAL>(right),
          static_cast<HPDF_REAL>(top)};
}

/// HPDF_REAL_OUT_OF_RANGE, with the object unchanged, for NaN and beyond the largest magnitude.
HPDF_STATUS HPDF_Real_SetValue(HPDF_Real real, HPDF_REAL value) {
  if (!(std::fabs(value) <= kLargest)) return HPDF_SetError(real->error, HPDF_REAL_OUT_OF_RANGE, 0);
  real->value = value;
  return HPDF_OK;
}

/// Null, with the error record set, for a number that HPDF_Real_SetValue refuses and when memory is short.
HPDF_Real HPDF_Real_New(HPDF_MMgr memory, HPDF_REAL value) {
  auto *real = static_cast<HPDF_Real>(HPDF_GetMem(memory, sizeof(HPDF_Real_Rec)));
  if (real == nullptr) return nullptr;
  *real = HPDF_Real_Rec{};
  real->header.obj_class = HPDF_OCLASS_REAL;
  real->error = memory->error;
  if (HPDF_Real_SetValue(real, value) != HPDF_OK) {
    HPDF_FreeMem(memory, real);
    return nullptr;
  }
  return real;
}

HPDF_STATUS HPDF_Real_Write(HPDF_Real real, HPDF_Stream stream) { return HPDF_Stream_WriteReal(stream, real->value); }

}  // extern "C"
