// How numbers are printed (HPDF_FToA), and which ones an object of type real may hold.
//
// libharu's HPDF_FToA prints a stray "(" for a NaN, "-0" for what rounds to zero, cuts everything beyond
// 32767 down to that, rounds twice in single precision, and keeps nothing of a number below 0.000005, such as
// a small scale. Its real objects keep an undefined value when the number is beyond 32767.
//
// Printed here: plain decimals, correctly rounded to 5 places, or to 5 significant digits for magnitudes
// below 0.1, with 10 places at most; no trailing zeros, no exponent; nothing depends on the locale.
// Magnitudes end at 2147483520, the largest single below 2^31: beyond, a number without a point would be no
// integer to readers that have 32 bits for it.
#include <hpdf.h>
#include <hpdf_utils.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

constexpr double kLargest = 2147483520.0;
constexpr int kPlaces = 5;
constexpr int kMostPlaces = 10;
constexpr std::uint64_t kUnit = 100'000;

}  // namespace

extern "C" {

// Writes `value` to `s`, never beyond `last`, and a nul after it if there is room. Returns the end of the
// text.
char *HPDF_FToA(char *s, HPDF_REAL value, char *last) {
  double magnitude = std::fabs(static_cast<double>(value));
  // NaN has no number to print; callers refuse it.
  if (std::isnan(magnitude)) magnitude = 0;
  if (magnitude > kLargest) magnitude = kLargest;

  // A single has 24 bits and the powers of ten at most 24 beside their factors of two, so these products are
  // exact in double precision and adding a half rounds correctly.
  int places = kPlaces;
  std::uint64_t unit = kUnit;
  double scaled = magnitude * static_cast<double>(unit);
  for (; scaled < 10'000 && places < kMostPlaces && scaled != 0; ++places) {
    unit *= 10;
    scaled = magnitude * static_cast<double>(unit);
  }
  const auto rounded = static_cast<std::uint64_t>(scaled + 0.5);

  char text[24];
  char *end = text;
  if (rounded != 0 && std::signbit(value)) *end++ = '-';
  end = std::to_chars(end, text + sizeof text, rounded / unit).ptr;
  std::uint64_t fraction = rounded % unit;
  if (fraction != 0) {
    while (fraction % 10 == 0) {
      fraction /= 10;
      --places;
    }
    *end = '.';
    for (char *digit = end + places; digit != end; --digit) {
      *digit = static_cast<char>('0' + fraction % 10);
      fraction /= 10;
    }
    end += places + 1;
  }

  std::size_t length = static_cast<std::size_t>(end - text);
  const std::size_t room = s <= last ? static_cast<std::size_t>(last - s) + 1 : 0;
  if (length > room) length = room;
  std::memcpy(s, text, length);
  if (length < room) s[length] = '\0';
  return s + length;
}

HPDF_STATUS HPDF_Real_SetValue(HPDF_Real real, HPDF_REAL value) {
  if (!(std::fabs(static_cast<double>(value)) <= kLargest))
    return HPDF_SetError(real->error, HPDF_REAL_OUT_OF_RANGE, 0);
  real->value = value;
  return HPDF_OK;
}

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

}  // extern "C"
