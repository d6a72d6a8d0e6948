// SPDX-License-Identifier: MIT
#include "host/language/syntax/expression_parser.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "host/language/syntax/names.h"

namespace quillbar::language {
namespace {

using syntax::BinaryOperator;
using syntax::ExpressionKind;
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

std::uint32_t TallestOf(const std::vector<syntax::ExpressionPointer> &list) {
  std::uint32_t tallest = 0;
  for (const syntax::ExpressionPointer &item : list) tallest = std::max(tallest, item->height);
  return tallest;
}

syntax::ExpressionPointer ParseBinary(Parser &parser, int rank);

syntax::ExpressionPointer ParsePrefixed(Parser &parser) {
  const Token &first = parser.Current();
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
    return ParseOperand(parser);
  }
  static_assert(kProductRank < kNotRank && kNotRank < kSignRank && kSignRank < kPowerRank);
  parser.Take();
  syntax::ExpressionPointer operand = ParseBinary(parser, operandRank);
  const std::uint32_t height = operand->height + 1;
  auto unary = std::make_unique<syntax::Unary>(Span::Cover(first.span, operand->span), operation, std::move(operand));
  unary->height = height;
  return unary;
}

syntax::ExpressionPointer ParseBinary(Parser &parser, int rank) {
  const Parser::Nested nested(parser);
  syntax::ExpressionPointer left = ParsePrefixed(parser);
  for (;;) {
    const OperatorRule rule = FindOperator(parser.Current());
    if (rule.rank < std::max(rank, kLowestRank)) return left;
    const Span operatorSpan = parser.Take().span;
    syntax::ExpressionPointer right = ParseBinary(parser, rule.rank + 1);
    const Span span = Span::Cover(left->span, right->span);
    const std::uint32_t height = std::max(left->height, right->height) + 1;
    if (height > kMaxExpressionHeight) {
      parser.Fail(operatorSpan, fmt::format("this expression has too many operators; at most {} in a row are read",
                                            kMaxExpressionHeight - 1));
    }
    left = std::make_unique<syntax::Binary>(span, rule.operation, operatorSpan, std::move(left), std::move(right));
    left->height = height;
  }
}

syntax::ExpressionPointer ParseNew(Parser &parser) {
  const Token &first = parser.Take();
  syntax::TypeName type = ParseTypeName(parser);
  std::vector<syntax::ExpressionPointer> arguments = ParseOptionalArguments(parser);
  const std::uint32_t height = TallestOf(arguments) + 1;
  auto made = std::make_unique<syntax::New>(parser.SpanFrom(first), std::move(type), std::move(arguments));
  made->height = height;
  return made;
}

std::vector<syntax::ExpressionPointer> ParseParenthesizedArguments(Parser &parser) {
  std::vector<syntax::ExpressionPointer> arguments;
  parser.Take();
  if (parser.Accept(TokenKind::kRightParenthesis)) return arguments;
  do {
    arguments.push_back(ParseExpression(parser));
  } while (parser.Accept(TokenKind::kComma));
  parser.Expect(TokenKind::kRightParenthesis, "\",\" or \")\"");
  return arguments;
}

syntax::ExpressionPointer ParseConditional(Parser &parser) {
  const Token &first = parser.Take();
  if (!parser.At(TokenKind::kLeftParenthesis)) parser.FailHere("\"(\" after \"If\" inside an expression");
  std::vector<syntax::ExpressionPointer> parts = ParseParenthesizedArguments(parser);
  if (parts.size() != 3) {
    parser.Fail(parser.SpanFrom(first),
                "\"If\" inside an expression takes a condition and two values: If(condition, a, b)");
  }
  const std::uint32_t height = TallestOf(parts) + 1;
  auto conditional = std::make_unique<syntax::Conditional>(parser.SpanFrom(first), std::move(parts[0]),
                                                           std::move(parts[1]), std::move(parts[2]));
  conditional->height = height;
  return conditional;
}

syntax::ExpressionPointer ParseAddressOf(Parser &parser) {
  const Token &first = parser.Take();
  if (!parser.At(TokenKind::kName)) parser.FailHere("the name of a Sub or Function after \"AddressOf\"");
  syntax::ExpressionPointer method = ParseOperand(parser);
  const std::uint32_t height = method->height + 1;
  auto address = std::make_unique<syntax::AddressOf>(parser.SpanFrom(first), std::move(method));
  address->height = height;
  return address;
}

syntax::ExpressionPointer ParsePrimary(Parser &parser) {
  const Token &token = parser.Current();
  switch (token.kind) {
    case TokenKind::kInteger:
      parser.Take();
      return std::make_unique<syntax::IntegerLiteral>(ExpressionKind::kInteger, token.span, token.integer);
    case TokenKind::kColor:
      parser.Take();
      return std::make_unique<syntax::IntegerLiteral>(ExpressionKind::kColor, token.span, token.integer);
    case TokenKind::kReal:
      parser.Take();
      return std::make_unique<syntax::RealLiteral>(token.span, token.real);
    case TokenKind::kString:
      parser.Take();
      return std::make_unique<syntax::TextLiteral>(token.span, token.text);
    case TokenKind::kName:
      parser.Take();
      if (SameName(token.text, "RaiseEvent") && parser.At(TokenKind::kName)) {
        const Token &event = parser.Take();
        return std::make_unique<syntax::RaiseEvent>(event.span, event.text);
      }
      return std::make_unique<syntax::Name>(token.span, token.text);
    case TokenKind::kLeftParenthesis: {
      parser.Take();
      syntax::ExpressionPointer inner = ParseExpression(parser);
      parser.Expect(TokenKind::kRightParenthesis, "\")\"");
      inner->span = parser.SpanFrom(token);
      return inner;
    }
    default:
      break;
  }
  switch (token.keyword) {
    case Keyword::kTrue:
    case Keyword::kFalse:
      parser.Take();
      return std::make_unique<syntax::BooleanLiteral>(token.span, token.keyword == Keyword::kTrue);
    case Keyword::kNil:
      parser.Take();
      return std::make_unique<syntax::NilLiteral>(token.span);
    case Keyword::kNew:
      return ParseNew(parser);
    case Keyword::kIf:
      return ParseConditional(parser);
    case Keyword::kAddressOf:
      return ParseAddressOf(parser);
    default:
      parser.FailHere("a value");
  }
}

/// Whether this is the Sub that is called without parentheses nearly always, so that after a blank `(x)` begins its
/// argument: Print (x).Uppercase.
bool IsPrint(const syntax::Expression &operand) {
  return operand.kind == syntax::ExpressionKind::kName &&
         SameName(static_cast<const syntax::Name &>(operand).name, "Print");
}

}  // namespace

syntax::ExpressionPointer ParseExpression(Parser &parser) {
  syntax::ExpressionPointer left = ParseBinary(parser, kLowestRank);
  if (!parser.Accept(TokenKind::kColon)) return left;
  const Parser::Nested nested(parser);
  syntax::ExpressionPointer right = ParseExpression(parser);
  const std::uint32_t height = std::max(left->height, right->height) + 1;
  const Span span = Span::Cover(left->span, right->span);
  auto pair = std::make_unique<syntax::PairOf>(span, std::move(left), std::move(right));
  pair->height = height;
  return pair;
}

syntax::ExpressionPointer ParseOperand(Parser &parser, bool isStatement) {
  const std::size_t start = parser.Mark();
  syntax::ExpressionPointer operand = ParsePrimary(parser);
  for (;;) {
    // A long expression may be inside calls, so these have a depth of their own.
    if (operand->height > kMaxExpressionHeight + kMaxNesting)
      parser.Fail(operand->span, "this chain of members is too long");
    const std::uint32_t height = operand->height + 1;
    if (parser.At(TokenKind::kDot)) {
      parser.Take();
      const Token &name = parser.Expect(TokenKind::kName, "the name of a member after \".\"");
      const Span span = Span::Cover(operand->span, name.span);
      operand = std::make_unique<syntax::Member>(span, std::move(operand), name.text, name.span);
      operand->height = height;
    } else if (parser.At(TokenKind::kLeftParenthesis)) {
      const std::size_t parenthesis = parser.Mark();
      const bool isPrinted = isStatement && parser.Current().spaceBefore && IsPrint(*operand);
      std::vector<syntax::ExpressionPointer> arguments = ParseParenthesizedArguments(parser);
      const bool endsHere =
          parser.AtLineEnd() || (parser.At(TokenKind::kDot) && !isPrinted) || parser.At(TokenKind::kEqual) ||
          parser.At(TokenKind::kColon) || parser.At(TokenKind::kLeftParenthesis) || parser.At(Keyword::kElse) ||
          (parser.Current().kind >= TokenKind::kPlusAssign && parser.Current().kind <= TokenKind::kSlashAssign);
      if (isStatement && !endsHere && parenthesis > start) {
        parser.ReturnTo(parenthesis);
        return operand;
      }
      const std::uint32_t tallest = std::max(operand->height, TallestOf(arguments));
      const Span span = Span::Cover(operand->span, parser.Last().span);
      operand = std::make_unique<syntax::Call>(span, std::move(operand), std::move(arguments));
      operand->height = tallest + 1;
    } else if (parser.At(Keyword::kIsA) && !isStatement) {
      parser.Take();
      syntax::TypeName type = ParseTypeName(parser);
      const Span span = Span::Cover(operand->span, type.span);
      operand = std::make_unique<syntax::IsA>(span, std::move(operand), std::move(type));
      operand->height = height;
    } else {
      return operand;
    }
  }
}

std::vector<syntax::ExpressionPointer> ParseOptionalArguments(Parser &parser) {
  if (!parser.At(TokenKind::kLeftParenthesis)) return {};
  return ParseParenthesizedArguments(parser);
}

std::vector<syntax::ExpressionPointer> ParseArgumentsToLineEnd(Parser &parser) {
  std::vector<syntax::ExpressionPointer> arguments;
  do {
    arguments.push_back(ParseExpression(parser));
  } while (parser.Accept(TokenKind::kComma));
  return arguments;
}

syntax::TypeName ParseTypeName(Parser &parser) {
  syntax::TypeName type;
  const Token &first = parser.Expect(TokenKind::kName, "the name of a type");
  type.parts.push_back(first.text);
  while (parser.Accept(TokenKind::kDot)) {
    type.parts.push_back(parser.Expect(TokenKind::kName, "the name of a type after \".\"").text);
  }
  type.span = parser.SpanFrom(first);
  return type;
}

int ParseDimensions(Parser &parser, std::vector<syntax::ExpressionPointer> *upperBounds) {
  constexpr int kMost = 3;
  if (!parser.Accept(TokenKind::kLeftParenthesis)) return 0;
  int rank = 1;
  const bool hasBounds =
      upperBounds != nullptr && !parser.At(TokenKind::kRightParenthesis) && !parser.At(TokenKind::kComma);
  if (hasBounds) upperBounds->push_back(ParseExpression(parser));
  while (parser.Accept(TokenKind::kComma)) {
    if (++rank > kMost) parser.Fail(parser.Last().span, "arrays have at most three dimensions");
    if (hasBounds) upperBounds->push_back(ParseExpression(parser));
  }
  if (!parser.Accept(TokenKind::kRightParenthesis)) {
    parser.FailHere(upperBounds != nullptr ? "\")\"" : "\")\"; an array is written name() As Type");
  }
  return rank;
}

}  // namespace quillbar::language
