// SPDX-License-Identifier: MIT
// Numbers, Booleans, colours and enumerations to and from text.

#include <fmt/format.h>

#include <limits>
#include <string>

#include "host/language/library/library.h"
#include "host/language/library/number_format.h"
#include "host/language/library/value_text.h"
#include "host/language/values/variant.h"
#include "host/runtime/currency.h"
#include "host/runtime/numbers.h"

namespace quillbar::language {
namespace {

using host::StringHandle;

StringHandle Text(const std::string &utf8) { return StringHandle::FromUtf8(utf8); }

StringHandle Str(const host::Value &value) { return variant::AsText(value); }

/// One overload for each form of number that `.ToString` may have as its receiver.
StringHandle IntegerToString(std::int64_t number) { return Text(fmt::format("{}", number)); }
StringHandle UnsignedToString(std::int64_t number) {
  return Text(fmt::format("{}", static_cast<std::uint64_t>(number)));
}
StringHandle DoubleToString(double number) { return Text(FormatShort(number, false)); }
StringHandle SingleToString(double number) { return Text(FormatShort(number, true)); }
StringHandle BooleanToString(bool value) { return Text(value ? "True" : "False"); }
StringHandle ColorToString(std::int64_t color) { return TextOf(host::Value::OfInteger(host::TypeKind::kColor, color)); }

StringHandle Format(double number, const StringHandle &format) { return Text(FormatNumber(number, format.Utf8())); }
StringHandle FormatInteger(std::int64_t number, const StringHandle &format) {
  const auto bits = static_cast<std::uint64_t>(number);
  return Text(FormatDecimal(number < 0, host::DecimalOf(number < 0 ? 0 - bits : bits), format.Utf8()));
}
StringHandle FormatCurrency(std::int64_t amount, const StringHandle &format) {
  return Text(FormatDecimal(amount < 0, host::currency::ToDecimal(amount), format.Utf8()));
}
StringHandle CurrencyToString(std::int64_t amount) { return Text(host::currency::ToText(amount)); }
std::int64_t ToCurrency(const StringHandle &text) { return host::currency::FromText(text.Utf8()); }

double Val(const StringHandle &text) { return ParseNumber(text.Utf8()); }

std::int64_t ToInteger(const StringHandle &text) { return ParseInteger(text.Utf8()); }

StringHandle TextInBase(std::uint64_t number, int base) {
  return Text(base == 16  ? fmt::format("{:X}", number)
              : base == 8 ? fmt::format("{:o}", number)
                          : fmt::format("{:b}", number));
}

/// A negative number has the digits of an Integer as wide as the host's, unless it needs more.
template <int kBase>
StringHandle InBase(std::int64_t number) {
  const bool isNegativeInteger = number < 0 && number >= std::numeric_limits<std::intptr_t>::min();
  return TextInBase(isNegativeInteger ? static_cast<std::uintptr_t>(number) : static_cast<std::uint64_t>(number),
                    kBase);
}

StringHandle UnsignedToHex(std::int64_t number) { return TextInBase(static_cast<std::uint64_t>(number), 16); }

std::int64_t Component(std::int64_t color, int shift) { return color >> shift & 0xFF; }
std::int64_t Red(std::int64_t color) { return Component(color, 16); }
std::int64_t Green(std::int64_t color) { return Component(color, 8); }
std::int64_t Blue(std::int64_t color) { return Component(color, 0); }
std::int64_t Alpha(std::int64_t color) { return Component(color, 24); }

std::int64_t MakeColor(std::int64_t red, std::int64_t green, std::int64_t blue, std::int64_t alpha) {
  const auto byte = [](std::int64_t component) -> std::int64_t {
    return component < 0 ? 0 : component > 255 ? 255 : component;
  };
  return byte(alpha) << 24 | byte(red) << 16 | byte(green) << 8 | byte(blue);
}

using namespace library;

constexpr LibraryFunction kConversionFunctions[] = {
    kFunction<"Str(value As Any) As String", &Str>,
    kFunction<"Str(number As Int64, format As String) As String", &FormatInteger>,
    kFunction<"Str(number As Double, format As String) As String", &Format>,
    kFunction<"Str(number As Currency, format As String) As String", &FormatCurrency>,
    kFunction<"CStr(value As Any) As String", &Str>,
    kFunction<"Format(number As Int64, format As String) As String", &FormatInteger>,
    kFunction<"Format(number As Double, format As String) As String", &Format>,
    kFunction<"Format(number As Currency, format As String) As String", &FormatCurrency>,
    kFunction<"Val(text As String) As Double", &Val>,
    kFunction<"CDbl(text As String) As Double", &Val>,
    kFunction<"CLong(text As String) As Integer", &ToInteger>,
    kFunction<"Hex(number As Integer) As String", &InBase<16>>,
    kFunction<"Oct(number As Integer) As String", &InBase<8>>,
    kFunction<"Bin(number As Integer) As String", &InBase<2>>,
    kFunction<"RGB(red As Integer, green As Integer, blue As Integer, alpha As Integer = 0) As Color", &MakeColor>,

    kMethod<"Integer", "ToString() As String", &IntegerToString>,
    kMethod<"Integer", "ToString(format As String) As String", &FormatInteger>,
    kMethod<"Integer", "ToHex() As String", &InBase<16>>,
    kMethod<"Integer", "ToOctal() As String", &InBase<8>>,
    kMethod<"Integer", "ToBinary() As String", &InBase<2>>,
    kMethod<"UInt64", "ToString() As String", &UnsignedToString>,
    kMethod<"UInt64", "ToHex() As String", &UnsignedToHex>,
    kMethod<"Double", "ToString() As String", &DoubleToString>,
    kMethod<"Double", "ToString(format As String) As String", &Format>,
    kMethod<"Single", "ToString() As String", &SingleToString>,
    kMethod<"Single", "ToString(format As String) As String", &Format>,
    kMethod<"Currency", "ToString() As String", &CurrencyToString>,
    kMethod<"Currency", "ToString(format As String) As String", &FormatCurrency>,
    kMethod<"Boolean", "ToString() As String", &BooleanToString>,
    kMethod<"Color", "ToString() As String", &ColorToString>,
    kMethod<"Color", "Red() As Integer", &Red>,
    kMethod<"Color", "Green() As Integer", &Green>,
    kMethod<"Color", "Blue() As Integer", &Blue>,
    kMethod<"Color", "Alpha() As Integer", &Alpha>,
    kMethod<"String", "ToDouble() As Double", &Val>,
    kMethod<"String", "ToInteger() As Integer", &ToInteger>,
    kMethod<"String", "Val() As Double", &Val>,

    kShared<"Integer", "FromString(text As String) As Integer", &ToInteger>,
    kShared<"Currency", "FromString(text As String) As Currency", &ToCurrency>,
    kShared<"Double", "FromString(text As String) As Double", &Val>,
    kShared<"Color", "RGB(red As Integer, green As Integer, blue As Integer, alpha As Integer = 0) As Color",
            &MakeColor>,
};

}  // namespace

std::span<const LibraryFunction> ConversionFunctions() { return kConversionFunctions; }

}  // namespace quillbar::language
