// SPDX-License-Identifier: MIT
#include "host/language/syntax/expression_parser.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace quillbar::language {
namespace {

using syntax::BinaryOperator;
using syntax::ExpressionKind;
using syntax::ExpressionPointer;
using syntax::UnaryOperator;

// Ranks of the operators; a greater rank binds tighter.
constexpr int kLowestRank = 1;
constexpr int kOrRank = 1;
constexpr int kAndRank = 2;
constexpr int kComparisonRank = 3;
constexpr int kSumRank = 4;
constexpr int kProductRank = 5;
constexpr int kNotRank = 6;
constexpr int kSignRank = 7;
constexpr int kPowerRank = 8;

struct OperatorRule {
  BinaryOperator operation;
  int rank = 0;  // 0: the token is not an operator
};

OperatorRule FindOperator(const Token &token) {
  switch (token.kind) {
    case TokenKind::kCaret:
      return {BinaryOperator::kPower, kPowerRank};
    case TokenKind::kStar:
      return {BinaryOperator::kMultiply, kProductRank};
    case TokenKind::kSlash:
      return {BinaryOperator::kDivide, kProductRank};
    case TokenKind::kBackslash:
      return {BinaryOperator::kIntegerDivide, kProductRank};
    case TokenKind::kPlus:
      return {BinaryOperator::kAdd, kSumRank};
    case TokenKind::kMinus:
      return {BinaryOperator::kSubtract, kSumRank};
    case TokenKind::kEqual:
      return {BinaryOperator::kEqual, kComparisonRank};
    case TokenKind::kNotEqual:
      return {BinaryOperator::kNotEqual, kComparisonRank};
    case TokenKind::kLess:
      return {BinaryOperator::kLess, kComparisonRank};
    case TokenKind::kGreater:
      return {BinaryOperator::kGreater, kComparisonRank};
    case TokenKind::kLessEqual:
      return {BinaryOperator::kLessEqual, kComparisonRank};
    case TokenKind::kGreaterEqual:
      return {BinaryOperator::kGreaterEqual, kComparisonRank};
    default:
      break;
  }
  switch (token.keyword) {
    case Keyword::kMod:
      return {BinaryOperator::kModulo, kProductRank};
    case Keyword::kIs:
      return {BinaryOperator::kIs, kComparisonRank};
    case Keyword::kAnd:
      return {BinaryOperator::kAnd, kAndRank};
    case Keyword::kOr:
      return {BinaryOperator::kOr, kOrRank};
    case Keyword::kXor:
      return {BinaryOperator::kXor, kOrRank};
    default:
      return {};
  }
}

std::uint32_t TallestOf(const std::vector<ExpressionPointer> &list) {
  std::uint32_t tallest = 0;
  for (const ExpressionPointer &item : list) tallest = std::max(tallest, item->height);
  return tallest;
}

}  // namespace

ExpressionPointer ExpressionParser::ParseExpression() { return ParseBinary(kLowestRank); }

ExpressionPointer ExpressionParser::ParseBinary(int rank) {
  const Nested nested(*this);
  ExpressionPointer left = ParsePrefixed();
  for (;;) {
    const OperatorRule rule = FindOperator(Current());
    if (rule.rank < std::max(rank, kLowestRank)) return left;
    const Span operatorSpan = Take().span;
    ExpressionPointer right = ParseBinary(rule.rank + 1);
    const Span span = Span::Cover(left->span, right->span);
    const std::uint32_t height = std::max(left->height, right->height) + 1;
    if (height > kMaxExpressionHeight) {
      Fail(operatorSpan, fmt::format("this expression has too many operators; at most {} in a row are read",
                                     kMaxExpressionHeight - 1));
    }
    left = std::make_unique<syntax::Binary>(span, rule.operation, operatorSpan, std::move(left), std::move(right));
    left->height = height;
  }
}

ExpressionPointer ExpressionParser::ParsePrefixed() {
  const Token &first = Current();
  UnaryOperator operation;
  int operandRank = kPowerRank;
  if (first.Is(TokenKind::kMinus)) {
    operation = UnaryOperator::kNegate;
  } else if (first.Is(TokenKind::kPlus)) {
    operation = UnaryOperator::kPlus;
  } else if (first.Is(Keyword::kNot)) {
    operation = UnaryOperator::kNot;
    operandRank = kSignRank;
  } else {
    return ParseOperand();
  }
  static_assert(kProductRank < kNotRank && kNotRank < kSignRank && kSignRank < kPowerRank);
  Take();
  ExpressionPointer operand = ParseBinary(operandRank);
  const std::uint32_t height = operand->height + 1;
  auto unary = std::make_unique<syntax::Unary>(Span::Cover(first.span, operand->span), operation, std::move(operand));
  unary->height = height;
  return unary;
}

ExpressionPointer ExpressionParser::ParseOperand(bool isStatement) {
  const std::size_t start = at_;
  ExpressionPointer operand = ParsePrimary();
  for (;;) {
    // A long expression may be inside calls, so these have a depth of their own.
    if (operand->height > kMaxExpressionHeight + kMaxNesting) Fail(operand->span, "this chain of members is too long");
    const std::uint32_t height = operand->height + 1;
    if (At(TokenKind::kDot)) {
      Take();
      const Token &name = Expect(TokenKind::kName, "the name of a member after \".\"");
      const Span span = Span::Cover(operand->span, name.span);
      operand = std::make_unique<syntax::Member>(span, std::move(operand), name.text, name.span);
      operand->height = height;
    } else if (At(TokenKind::kLeftParenthesis)) {
      const std::size_t parenthesis = at_;
      std::vector<ExpressionPointer> arguments = ParseParenthesizedArguments();
      const bool endsHere = AtLineEnd() || At(TokenKind::kDot) || At(TokenKind::kEqual) ||
                            At(TokenKind::kLeftParenthesis) || At(Keyword::kElse) ||
                            (Current().kind >= TokenKind::kPlusAssign && Current().kind <= TokenKind::kSlashAssign);
      if (isStatement && !endsHere && parenthesis > start) {
        at_ = parenthesis;
        return operand;
      }
      const std::uint32_t tallest = std::max(operand->height, TallestOf(arguments));
      const Span span = Span::Cover(operand->span, Last().span);
      operand = std::make_unique<syntax::Call>(span, std::move(operand), std::move(arguments));
      operand->height = tallest + 1;
    } else if (At(Keyword::kIsA) && !isStatement) {
      Take();
      syntax::TypeName type = ParseTypeName();
      const Span span = Span::Cover(operand->span, type.span);
      operand = std::make_unique<syntax::IsA>(span, std::move(operand), std::move(type));
      operand->height = height;
    } else {
      return operand;
    }
  }
}

ExpressionPointer ExpressionParser::ParsePrimary() {
  const Token &token = Current();
  switch (token.kind) {
    case TokenKind::kInteger:
      Take();
      return std::make_unique<syntax::IntegerLiteral>(ExpressionKind::kInteger, token.span, token.integer);
    case TokenKind::kColor:
      Take();
      return std::make_unique<syntax::IntegerLiteral>(ExpressionKind::kColor, token.span, token.integer);
    case TokenKind::kReal:
      Take();
      return std::make_unique<syntax::RealLiteral>(token.span, token.real);
    case TokenKind::kString:
      Take();
      return std::make_unique<syntax::TextLiteral>(token.span, token.text);
    case TokenKind::kName:
      Take();
      return std::make_unique<syntax::Name>(token.span, token.text);
    case TokenKind::kLeftParenthesis: {
      Take();
      ExpressionPointer inner = ParseExpression();
      Expect(TokenKind::kRightParenthesis, "\")\"");
      inner->span = SpanFrom(token);
      return inner;
    }
    default:
      break;
  }
  switch (token.keyword) {
    case Keyword::kTrue:
    case Keyword::kFalse:
      Take();
      return std::make_unique<syntax::BooleanLiteral>(token.span, token.keyword == Keyword::kTrue);
    case Keyword::kNil:
      Take();
      return std::make_unique<syntax::NilLiteral>(token.span);
    case Keyword::kNew:
      return ParseNew();
    case Keyword::kIf:
      return ParseConditional();
    case Keyword::kAddressOf:
      return ParseAddressOf();
    default:
      FailHere("a value");
  }
}

ExpressionPointer ExpressionParser::ParseNew() {
  const Token &first = Take();
  syntax::TypeName type = ParseTypeName();
  std::vector<ExpressionPointer> arguments = ParseOptionalArguments();
  const std::uint32_t height = TallestOf(arguments) + 1;
  auto made = std::make_unique<syntax::New>(SpanFrom(first), std::move(type), std::move(arguments));
  made->height = height;
  return made;
}

ExpressionPointer ExpressionParser::ParseConditional() {
  const Token &first = Take();
  if (!At(TokenKind::kLeftParenthesis)) FailHere("\"(\" after \"If\" inside an expression");
  std::vector<ExpressionPointer> parts = ParseParenthesizedArguments();
  if (parts.size() != 3) {
    Fail(SpanFrom(first), "\"If\" inside an expression takes a condition and two values: If(condition, a, b)");
  }
  const std::uint32_t height = TallestOf(parts) + 1;
  auto conditional = std::make_unique<syntax::Conditional>(SpanFrom(first), std::move(parts[0]), std::move(parts[1]),
                                                           std::move(parts[2]));
  conditional->height = height;
  return conditional;
}

ExpressionPointer ExpressionParser::ParseAddressOf() {
  const Token &first = Take();
  const Token &name = Expect(TokenKind::kName, "the name of a Sub or Function after \"AddressOf\"");
  return std::make_unique<syntax::AddressOf>(SpanFrom(first), name.text, name.span);
}

std::vector<ExpressionPointer> ExpressionParser::ParseParenthesizedArguments() {
  std::vector<ExpressionPointer> arguments;
  Take();
  if (Accept(TokenKind::kRightParenthesis)) return arguments;
  do {
    arguments.push_back(ParseExpression());
  } while (Accept(TokenKind::kComma));
  Expect(TokenKind::kRightParenthesis, "\",\" or \")\"");
  return arguments;
}

std::vector<ExpressionPointer> ExpressionParser::ParseOptionalArguments() {
  if (!At(TokenKind::kLeftParenthesis)) return {};
  return ParseParenthesizedArguments();
}

std::vector<ExpressionPointer> ExpressionParser::ParseArgumentsToLineEnd() {
  std::vector<ExpressionPointer> arguments;
  do {
    arguments.push_back(ParseExpression());
  } while (Accept(TokenKind::kComma));
  return arguments;
}

syntax::TypeName ExpressionParser::ParseTypeName() {
  syntax::TypeName type;
  const Token &first = Expect(TokenKind::kName, "the name of a type");
  type.parts.push_back(first.text);
  while (Accept(TokenKind::kDot)) {
    type.parts.push_back(Expect(TokenKind::kName, "the name of a type after \".\"").text);
  }
  type.span = SpanFrom(first);
  return type;
}

}  // namespace quillbar::language
