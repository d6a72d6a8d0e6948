// SPDX-License-Identifier: MIT
// Mathematics. Angles are radians.

#include <algorithm>
#include <cmath>
#include <random>

#include "host/language/library/library.h"
#include "host/runtime/currency.h"

namespace quillbar::language {
namespace {

std::int64_t AbsInteger(std::int64_t number) {
  return number < 0 ? static_cast<std::int64_t>(-static_cast<std::uint64_t>(number)) : number;
}
double Abs(double number) { return std::fabs(number); }
double Sin(double angle) { return std::sin(angle); }
double Cos(double angle) { return std::cos(angle); }
double Tan(double angle) { return std::tan(angle); }
double Asin(double number) { return std::asin(number); }
double Acos(double number) { return std::acos(number); }
double Atan(double number) { return std::atan(number); }
double Atan2(double y, double x) { return std::atan2(y, x); }
double Sqrt(double number) { return std::sqrt(number); }
double Exp(double number) { return std::exp(number); }
double Log(double number) { return std::log(number); }
double Pow(double base, double exponent) { return std::pow(base, exponent); }
double Floor(double number) { return std::floor(number); }
double Ceil(double number) { return std::ceil(number); }

/// Rounds halves away from zero.
double Round(double number) { return std::round(number); }

std::int64_t AbsCurrency(std::int64_t amount) { return amount < 0 ? host::currency::Subtract(0, amount) : amount; }

std::int64_t SignOf(double number) { return number > 0 ? 1 : number < 0 ? -1 : 0; }
bool IsNotANumber(double number) { return std::isnan(number); }
bool IsInfinite(double number) { return std::isinf(number); }

std::int64_t MinInteger(std::int64_t one, std::int64_t other) { return std::min(one, other); }
std::int64_t MaxInteger(std::int64_t one, std::int64_t other) { return std::max(one, other); }
double Min(double one, double other) { return std::fmin(one, other); }
double Max(double one, double other) { return std::fmax(one, other); }

std::int64_t BitwiseShiftLeft(std::int64_t value, std::int64_t places) {
  if (places < 0 || places > 63) return 0;
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(value) << places);
}
std::int64_t BitwiseShiftRight(std::int64_t value, std::int64_t places) {
  if (places < 0 || places > 63) return 0;
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(value) >> places);
}

double Rnd(Runtime &runtime) { return std::uniform_real_distribution<double>(0, 1)(runtime.Random()); }

using namespace library;

constexpr LibraryFunction kMathematicsFunctions[] = {
    kFunction<"Abs(number As Integer) As Integer", &AbsInteger>,
    kFunction<"Abs(number As Double) As Double", &Abs>,
    kFunction<"Abs(number As Currency) As Currency", &AbsCurrency>,
    kFunction<"Sin(angle As Double) As Double", &Sin>,
    kFunction<"Cos(angle As Double) As Double", &Cos>,
    kFunction<"Tan(angle As Double) As Double", &Tan>,
    kFunction<"Asin(number As Double) As Double", &Asin>,
    kFunction<"Acos(number As Double) As Double", &Acos>,
    kFunction<"Atan(number As Double) As Double", &Atan>,
    kFunction<"Atan2(y As Double, x As Double) As Double", &Atan2>,
    kFunction<"Sqrt(number As Double) As Double", &Sqrt>,
    kFunction<"Exp(number As Double) As Double", &Exp>,
    kFunction<"Log(number As Double) As Double", &Log>,
    kFunction<"Pow(base As Double, exponent As Double) As Double", &Pow>,
    kFunction<"Floor(number As Double) As Double", &Floor>,
    kFunction<"Ceil(number As Double) As Double", &Ceil>,
    kFunction<"Ceiling(number As Double) As Double", &Ceil>,
    kFunction<"Round(number As Double) As Double", &Round>,
    kFunction<"Round(number As Currency) As Currency", &host::currency::Round>,
    kFunction<"Sign(number As Double) As Integer", &SignOf>,
    kFunction<"Min(one As Integer, other As Integer) As Integer", &MinInteger>,
    kFunction<"Min(one As Double, other As Double) As Double", &Min>,
    kFunction<"Min(one As Currency, other As Currency) As Currency", &MinInteger>,
    kFunction<"Max(one As Currency, other As Currency) As Currency", &MaxInteger>,
    kFunction<"Max(one As Integer, other As Integer) As Integer", &MaxInteger>,
    kFunction<"Max(one As Double, other As Double) As Double", &Max>,
    kFunction<"Rnd() As Double", &Rnd>,

    kMethod<"Double", "IsNotANumber() As Boolean", &IsNotANumber>,
    kMethod<"Double", "IsInfinite() As Boolean", &IsInfinite>,
    kMethod<"Single", "IsNotANumber() As Boolean", &IsNotANumber>,
    kMethod<"Single", "IsInfinite() As Boolean", &IsInfinite>,

    kShared<"Bitwise", "ShiftLeft(value As Integer, places As Integer) As Integer", &BitwiseShiftLeft>,
    kShared<"Bitwise", "ShiftRight(value As Integer, places As Integer) As Integer", &BitwiseShiftRight>,
};

}  // namespace

std::span<const LibraryFunction> MathematicsFunctions() { return kMathematicsFunctions; }

}  // namespace quillbar::language
