// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace quillbar::test {

/// One operand of a content-stream operator.
struct Operand {
  enum class Kind { kNumber, kName, kString, kArray, kOther };

  Kind kind = Kind::kOther;
  double number = 0;              // of a number, as printed
  std::string text;               // the name with its slash, the bytes of a string, else as printed
  std::vector<Operand> elements;  // of an array
};

/// An operator of a page's content stream with the operands before it.
struct ContentOperator {
  std::string name;
  std::vector<Operand> operands;
  std::size_t offset = 0;  // where the operator's name begins in the content
};

std::ostream &operator<<(std::ostream &stream, const Operand &operand);
std::ostream &operator<<(std::ostream &stream, const ContentOperator &operation);

/// Whether `printed` is `value`, in single precision, printed to five decimals (or five significant digits, if that is
/// more): it reads back as `value`, or is no further away than half a unit of the last decimal.
bool IsPrintedForm(double printed, float value);

namespace content_operator {

// An operand that a test expects: a number, "/Name", "text" or an array of numbers.
class Expected {
 public:
  template <class Number>
  requires std::is_arithmetic_v<Number> Expected(Number number)  // NOLINT: literals are operands
      : operand_{Operand::Kind::kNumber, static_cast<double>(number), {}, {}} {}
  Expected(const char *text) : Expected(std::string_view(text)) {}  // NOLINT
  Expected(std::string_view text)                                   // NOLINT
      : operand_{text.starts_with('/') ? Operand::Kind::kName : Operand::Kind::kString, 0, std::string(text), {}} {}
  Expected(const std::string &text) : Expected(std::string_view(text)) {}                      // NOLINT
  Expected(const std::vector<double> &numbers) : operand_{Operand::Kind::kArray, 0, {}, {}} {  // NOLINT
    for (const double number : numbers) operand_.elements.push_back(Expected(number).operand_);
  }

  const Operand &operand() const { return operand_; }

 private:
  Operand operand_;
};

/// The matcher without its deduced arguments: see `Op`.
testing::Matcher<const ContentOperator &> Match(std::string_view name, std::vector<Expected> operands);

}  // namespace content_operator

/// Matches an operator with exactly these operands: Op("m", 10, 821.89F), Op("d", std::vector<double>{3, 1}, 0),
/// Op("Tf", "/F1", 12). Numbers are taken in single precision, as the library holds them, and must be printed as
/// exactly as their decimals allow.
template <class... Operands>
testing::Matcher<const ContentOperator &> Op(std::string_view name, const Operands &...operands) {
  return content_operator::Match(name, {content_operator::Expected(operands)...});
}

}  // namespace quillbar::test
