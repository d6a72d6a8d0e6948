// SPDX-License-Identifier: MIT
// How numbers are printed, which ones an object of type real may hold, and the library's small records of numbers.
//
// Reals are printed as plain decimals with 5 places at most, or with 5 significant digits for magnitudes below 0.1,
// which takes up to 10 places. Where fewer digits are read back as the same single, those are printed (130.656 and not
// 130.65601); otherwise the number is rounded correctly. No trailing zeros, no "-0", no exponent; nothing depends on
// the locale. Magnitudes end at 2147483520, the largest single below 2^31: a larger number without a point would not
// be an integer to readers that have 32 bits for it.
#include <hpdf.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

namespace {

constexpr HPDF_REAL kLargest = 2147483520.0F;
constexpr int kDigits = 5;
constexpr int kMostZeros = 5;
constexpr std::uint32_t kUnit = 100'000;
// Bytes in which any number can be put together.
constexpr std::size_t kLongestNumber = 24;

// Half the distance from `value`, at least 1 and not whole, to its neighbours: every decimal nearer than this is read
// back as `value`.
double HalfGap(HPDF_REAL value) {
  constexpr std::uint32_t kExponent = 0x7F800000;
  constexpr std::uint32_t kHalfOfTheLastBit = 24U << 23;
  return std::bit_cast<HPDF_REAL>((std::bit_cast<std::uint32_t>(value) & kExponent) - kHalfOfTheLastBit);
}

// Writes the five digits of a fraction without the zeros at its end. It is `scaled` units of the fifth place;
// `rounded` is the whole number next to that, below 10^5. A shorter one that differs from the fraction by less than
// `halfGap` units is written instead. Returns the end.
char *WriteDigits(char *s, double scaled, std::uint32_t rounded, double halfGap) {
  // The nearest multiples of ten, a hundred and so on. Each of them is a multiple of the ones before too, so the first
  // that is too far away ends the search.
  std::uint32_t shortest = rounded;
  int digits = kDigits;
  auto cut = static_cast<std::uint32_t>(scaled);
  for (std::uint32_t step = 10; step < kUnit; step *= 10) {
    const std::uint32_t shorter = (cut + 5) / 10;
    const std::uint32_t nearest = shorter * step;
    if (nearest != rounded && std::fabs(nearest - scaled) >= halfGap) break;
    shortest = shorter;
    --digits;
    cut /= 10;
  }
  char *const end = s + digits;
  for (char *digit = end; digit != s; shortest /= 10) *--digit = static_cast<char>('0' + shortest % 10);
  return end;
}

// Writes a number of at most `kLargest`, with or without a sign. Returns the end of the text; up to five characters
// after it are overwritten.
char *WriteNumber(char *s, HPDF_REAL magnitude, bool isNegative) {
  auto whole = static_cast<std::uint32_t>(magnitude);
  // A single has 24 bits and the powers of ten at most 24 beside their factors of two, so these products are exact in
  // double precision and adding a half rounds correctly.
  const double fraction = static_cast<double>(magnitude) - whole;
  double scaled = fraction * kUnit;
  double halfGap = 0;
  int zeros = 0;
  if (whole != 0) {
    halfGap = HalfGap(magnitude) * kUnit;
  } else if (fraction != 0) {
    for (double unit = kUnit; scaled < kUnit / 10.0 && zeros < kMostZeros; ++zeros) {
      unit *= 10;
      scaled = fraction * unit;
    }
  }
  const double raised = scaled + 0.5;
  auto rounded = static_cast<std::uint32_t>(raised);
  if (rounded == kUnit && zeros == 0) {
    rounded = 0;
    ++whole;
  } else if (rounded == kUnit) {
    rounded = kUnit / 10;
    scaled = rounded;
    --zeros;
  }

  if (isNegative && (whole | rounded) != 0) *s++ = '-';
  s = std::to_chars(s, s + std::numeric_limits<std::uint32_t>::digits10 + 1, whole).ptr;
  if (rounded == 0) return s;
  *s++ = '.';
  for (; zeros != 0; --zeros) *s++ = '0';
  return WriteDigits(s, scaled, rounded, halfGap);
}

}  // namespace

extern "C" {

/// Writes `value` to `s`, never beyond `last`, and a nul after it if there is room. NaN, which callers refuse, is
/// written as 0. Returns the end of the text.
char *HPDF_FToA(char *s, HPDF_REAL value, char *last) {
  HPDF_REAL magnitude = std::fabs(value);
  if (std::isnan(magnitude)) magnitude = 0;
  if (magnitude > kLargest) magnitude = kLargest;

  char text[kLongestNumber];
  const std::size_t room = s <= last ? static_cast<std::size_t>(last - s) + 1 : 0;
  char *const begin = room >= sizeof text ? s : text;
  char *const end = WriteNumber(begin, magnitude, std::signbit(value));
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
