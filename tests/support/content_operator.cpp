// SPDX-License-Identifier: MIT
#include "tests/support/content_operator.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <sstream>
#include <utility>

namespace quillbar::test {

bool IsPrintedForm(double printed, float value) {
  const double exact = static_cast<double>(value);
  // 0.1 has five significant digits in five decimals; smaller numbers need more, up to ten.
  double unit = 1e-5;
  double magnitude = std::fabs(exact);
  for (int places = 5; places < 10 && magnitude != 0 && magnitude < 0.1; ++places) {
    unit /= 10;
    magnitude *= 10;
  }
  return static_cast<float>(printed) == value || std::fabs(printed - exact) <= unit * 0.5000001;
}

namespace {

bool Equals(const Operand &actual, const Operand &expected) {
  if (actual.kind != expected.kind) return false;
  switch (expected.kind) {
    case Operand::Kind::kNumber:
      return IsPrintedForm(actual.number, static_cast<float>(expected.number));
    case Operand::Kind::kArray:
      return std::equal(actual.elements.begin(), actual.elements.end(), expected.elements.begin(),
                        expected.elements.end(), Equals);
    default:
      return actual.text == expected.text;
  }
}

class OperatorMatcher {
 public:
  using is_gtest_matcher = void;

  explicit OperatorMatcher(ContentOperator expected) : expected_(std::move(expected)) {}

  bool MatchAndExplain(const ContentOperator &actual, std::ostream *) const {
    return actual.name == expected_.name && std::equal(actual.operands.begin(), actual.operands.end(),
                                                       expected_.operands.begin(), expected_.operands.end(), Equals);
  }
  void DescribeTo(std::ostream *stream) const { *stream << "is \"" << expected_ << '"'; }
  void DescribeNegationTo(std::ostream *stream) const { *stream << "is not \"" << expected_ << '"'; }

 private:
  ContentOperator expected_;
};

}  // namespace

std::ostream &operator<<(std::ostream &stream, const Operand &operand) {
  switch (operand.kind) {
    case Operand::Kind::kNumber: {
      std::ostringstream digits;
      digits.precision(12);
      digits << operand.number;
      return stream << digits.str();
    }
    case Operand::Kind::kString:
      return stream << '(' << testing::PrintToString(operand.text) << ')';
    case Operand::Kind::kArray:
      stream << '[';
      for (const Operand &element : operand.elements) stream << element << ' ';
      return stream << ']';
    default:
      return stream << operand.text;
  }
}

std::ostream &operator<<(std::ostream &stream, const ContentOperator &operation) {
  for (const Operand &operand : operation.operands) stream << operand << ' ';
  return stream << operation.name;
}

namespace content_operator {

testing::Matcher<const ContentOperator &> Match(std::string_view name, std::vector<Expected> operands) {
  ContentOperator expected{std::string(name), {}};
  for (const Expected &operand : operands) expected.operands.push_back(operand.operand());
  return OperatorMatcher(std::move(expected));
}

}  // namespace content_operator
}  // namespace quillbar::test
