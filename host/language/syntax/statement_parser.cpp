// SPDX-License-Identifier: MIT
#include "host/language/syntax/statement_parser.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/names.h"

namespace quillbar::language {

using syntax::StatementKind;
using syntax::StatementPointer;

syntax::Block StatementParser::ParseBlock() {
  const Nested nested(*this);
  syntax::Block block;
  while (!At(TokenKind::kEndOfFile) && !AtBlockEnd()) {
    Recover([&] {
      if (Accept(TokenKind::kEndOfLine)) return;
      if (At(TokenKind::kDirective)) return ParseDirective();
      block.push_back(ParseStatement());
    });
  }
  return block;
}

bool StatementParser::AtBlockEnd() const {
  switch (Current().keyword) {
    case Keyword::kEnd:
    case Keyword::kElse:
    case Keyword::kElseIf:
    case Keyword::kCase:
    case Keyword::kNext:
    case Keyword::kWend:
    case Keyword::kLoop:
    case Keyword::kCatch:
    case Keyword::kFinally:
      return At(TokenKind::kKeyword);
    default:
      return false;
  }
}

bool StatementParser::AtLineOfTheEnvironment() const {
  const bool isFollowed = Ahead().Is(TokenKind::kName) || Ahead().Is(TokenKind::kKeyword);
  return At(TokenKind::kName) && isFollowed && StartsLineOfTheEnvironment(Current().text);
}

void StatementParser::ParseDirective() {
  const Token &directive = Take();
  const std::string_view line = directive.text;
  constexpr std::string_view kPragma = "#Pragma";
  if (!SameName(line.substr(0, kPragma.size()), kPragma)) {
    Fail(directive.span, "only the directive #Pragma is known (and ignored)");
  }
  ExpectLineEnd();
}

void StatementParser::FailUnclosed(const Token &opener, std::string_view closer) const {
  Fail(opener.span, fmt::format("this {} has no \"{}\"", Describe(opener), closer));
}

void StatementParser::ExpectEnd(Keyword word, const Token &opener) {
  if (!At(Keyword::kEnd)) {
    const std::string closer = fmt::format("End {}", Spelling(word));
    if (At(TokenKind::kEndOfFile)) FailUnclosed(opener, closer);
    FailHere(fmt::format("\"{}\" for the \"{}\" of line {}", closer, Spelling(word),
                         source_.Locate(opener.span.begin).line));
  }
  const Token &end = Take();
  if (!AtLineEnd() && !Accept(word)) {
    Fail(Span::Cover(end.span, Current().span),
         fmt::format("expected \"End {}\" for the {} of line {}, found \"End\" and {}", Spelling(word),
                     Describe(opener), source_.Locate(opener.span.begin).line, Describe(Current())));
  }
  ExpectLineEnd();
}

StatementPointer StatementParser::ParseStatement() {
  switch (Current().keyword) {
    case Keyword::kIf:
      return ParseIf();
    case Keyword::kSelect:
      return ParseSelect();
    case Keyword::kFor:
      return ParseFor();
    case Keyword::kWhile:
      return ParseWhile();
    case Keyword::kDo:
      return ParseDo();
    case Keyword::kTry:
      return ParseTry();
    default:
      break;
  }
  StatementPointer statement = ParseSimpleStatement();
  ExpectLineEnd();
  return statement;
}

StatementPointer StatementParser::ParseSimpleStatement() {
  switch (Current().keyword) {
    case Keyword::kDim:
    case Keyword::kVar:
    case Keyword::kStatic:
      return ParseDeclare();
    case Keyword::kConst:
      return ParseConstant();
    case Keyword::kCall:
      return ParseCall();
    case Keyword::kExit:
    case Keyword::kContinue:
      return ParseJump();
    case Keyword::kReturn:
      return ParseReturn();
    case Keyword::kRedim:
      return ParseRedim();
    case Keyword::kAddHandler:
    case Keyword::kRemoveHandler:
      return ParseHandler();
    case Keyword::kRaise:
      return ParseRaise();
    case Keyword::kSub:
    case Keyword::kFunction:
    case Keyword::kEnum:
      Fail(Current().span, fmt::format("a {} is declared outside of every other block", Describe(Current())));
    case Keyword::kClass:
    case Keyword::kModule:
    case Keyword::kInterface:
    case Keyword::kStructure:
    case Keyword::kGoTo:
      Fail(Current().span, NotPartOfThisHost(Spelling(Current().keyword)));
    default:
      if (AtLineOfTheEnvironment()) Fail(Current().span, NotPartOfThisHost(Current().text));
      return ParseAssignOrCall();
  }
}

StatementPointer StatementParser::ParseDeclare() {
  const Token &first = Take();
  auto declare = std::make_unique<syntax::Declare>(first.span);
  declare->isStatic = first.Is(Keyword::kStatic);
  ParseVariables(*declare);
  declare->span = SpanFrom(first);
  return declare;
}

void StatementParser::ParseVariables(syntax::Declare &declare) {
  do {
    syntax::Declare::Variable &variable = declare.variables.emplace_back();
    const Token &name = ExpectNewName("a variable");
    variable.name = name.text;
    if (Accept(TokenKind::kLeftParenthesis)) {
      variable.isArray = true;
      if (!At(TokenKind::kRightParenthesis)) variable.upperBound = ParseExpression();
      if (At(TokenKind::kComma)) Fail(Current().span, "arrays have one dimension");
      Expect(TokenKind::kRightParenthesis, "\")\"");
    }
    variable.span = SpanFrom(name);
  } while (Accept(TokenKind::kComma));

  if (!At(Keyword::kAs)) FailHere("\"As\" and a type (Dim name As Type)");
  Take();
  const Token &made = Current();
  if (Accept(Keyword::kNew)) {
    declare.type = ParseTypeName();
    std::vector<syntax::ExpressionPointer> arguments = ParseOptionalArguments();
    declare.initial = std::make_unique<syntax::New>(SpanFrom(made), declare.type, std::move(arguments));
    return;
  }
  declare.type = ParseTypeName();
  if (Accept(TokenKind::kEqual)) declare.initial = ParseExpression();
}

StatementPointer StatementParser::ParseConstant() {
  const Token &first = Take();
  auto constant = std::make_unique<syntax::Constant>(first.span);
  const Token &name = ExpectNewName("a constant");
  constant->name = name.text;
  constant->nameSpan = name.span;
  if (Accept(Keyword::kAs)) constant->type = ParseTypeName();
  Expect(TokenKind::kEqual, "\"=\" and the value of the constant");
  constant->value = ParseExpression();
  constant->span = SpanFrom(first);
  return constant;
}

StatementPointer StatementParser::ParseCall() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::CallStatement>(first.span);
  statement->dropsResult = true;
  statement->call = ParseOperand();
  statement->span = SpanFrom(first);
  return statement;
}

StatementPointer StatementParser::ParseAssignOrCall() {
  const Token &first = Current();
  const bool startsOperand = first.Is(TokenKind::kName) || first.Is(TokenKind::kLeftParenthesis) ||
                             first.Is(TokenKind::kString) || first.Is(Keyword::kNew);
  if (!startsOperand) FailHere("a statement");
  syntax::ExpressionPointer target = ParseOperand(true);

  const auto assign = [&](std::optional<syntax::BinaryOperator> operation) {
    auto statement = std::make_unique<syntax::Assign>(first.span);
    statement->operatorSpan = Take().span;
    statement->target = std::move(target);
    statement->operation = operation;
    statement->value = ParseExpression();
    statement->span = SpanFrom(first);
    return statement;
  };
  switch (Current().kind) {
    case TokenKind::kEqual:
      return assign(std::nullopt);
    case TokenKind::kPlusAssign:
      return assign(syntax::BinaryOperator::kAdd);
    case TokenKind::kMinusAssign:
      return assign(syntax::BinaryOperator::kSubtract);
    case TokenKind::kStarAssign:
      return assign(syntax::BinaryOperator::kMultiply);
    case TokenKind::kSlashAssign:
      return assign(syntax::BinaryOperator::kDivide);
    default:
      break;
  }

  auto statement = std::make_unique<syntax::CallStatement>(first.span);
  if (!AtLineEnd() && !At(Keyword::kElse)) {
    std::vector<syntax::ExpressionPointer> arguments = ParseArgumentsToLineEnd();
    target = std::make_unique<syntax::Call>(SpanFrom(first), std::move(target), std::move(arguments));
  }
  statement->call = std::move(target);
  statement->span = SpanFrom(first);
  return statement;
}

StatementPointer StatementParser::ParseJump() {
  const Token &first = Take();
  const bool isExit = first.Is(Keyword::kExit);
  auto statement = std::make_unique<syntax::Jump>(isExit ? StatementKind::kExit : StatementKind::kContinue, first.span);
  if (AtLineEnd() || At(Keyword::kElse)) return statement;
  const Token &target = Take();
  switch (target.keyword) {
    case Keyword::kFor:
      statement->target = syntax::JumpTarget::kFor;
      if (At(TokenKind::kName)) statement->variable = Take().text;
      break;
    case Keyword::kWhile:
      statement->target = syntax::JumpTarget::kWhile;
      break;
    case Keyword::kDo:
      statement->target = syntax::JumpTarget::kDo;
      break;
    case Keyword::kSub:
      statement->target = syntax::JumpTarget::kSub;
      break;
    case Keyword::kFunction:
      statement->target = syntax::JumpTarget::kFunction;
      break;
    case Keyword::kSelect:
      statement->target = syntax::JumpTarget::kSelect;
      break;
    default:
      Fail(target.span, fmt::format("\"{}\" can't {} {}", Spelling(first.keyword), isExit ? "leave" : "go on with",
                                    Describe(target)));
  }
  if (!isExit && statement->target > syntax::JumpTarget::kDo) {
    Fail(target.span, fmt::format("\"Continue\" needs a loop, not {}", Describe(target)));
  }
  statement->span = SpanFrom(first);
  return statement;
}

StatementPointer StatementParser::ParseReturn() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::Return>(first.span);
  if (!AtLineEnd() && !At(Keyword::kElse)) statement->value = ParseExpression();
  statement->span = SpanFrom(first);
  return statement;
}

StatementPointer StatementParser::ParseRedim() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::Redim>(first.span);
  syntax::ExpressionPointer target = ParseOperand();
  statement->span = SpanFrom(first);
  if (target->kind != syntax::ExpressionKind::kCall) {
    Fail(target->span, "\"Redim\" takes an array and its new last index: Redim list(9)");
  }
  auto &call = static_cast<syntax::Call &>(*target);
  if (call.arguments.size() != 1) Fail(target->span, "arrays have one dimension: Redim list(9)");
  statement->list = std::move(call.callee);
  statement->upperBound = std::move(call.arguments.front());
  return statement;
}

StatementPointer StatementParser::ParseHandler() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::Handler>(first.span);
  statement->adds = first.Is(Keyword::kAddHandler);
  statement->event = ParseOperand();
  Expect(TokenKind::kComma, "\",\" and \"AddressOf\" with a method");
  if (!At(Keyword::kAddressOf)) FailHere("\"AddressOf\" and a method");
  statement->procedure = ParseExpression();
  statement->span = SpanFrom(first);
  return statement;
}

StatementPointer StatementParser::ParseTry() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::Try>(first.span);
  ExpectLineEnd();
  statement->body = ParseBlock();
  while (At(Keyword::kCatch)) {
    const Token &catchToken = Take();
    syntax::Try::Catch &handler = statement->catches.emplace_back();
    Recover([&] {
      if (At(TokenKind::kName)) {
        handler.variable = Take().text;
        if (Accept(Keyword::kAs)) handler.type = ParseTypeName();
      }
      handler.span = SpanFrom(catchToken);
      ExpectLineEnd();
    });
    handler.body = ParseBlock();
  }
  const bool hasFinally = Accept(Keyword::kFinally);
  if (hasFinally) {
    ExpectLineEnd();
    statement->finally = ParseBlock();
  }
  ExpectEnd(Keyword::kTry, first);
  if (statement->catches.empty() && !hasFinally) {
    Report(first.span, "this \"Try\" has neither \"Catch\" nor \"Finally\"");
  }
  return statement;
}

StatementPointer StatementParser::ParseRaise() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::Raise>(first.span);
  statement->exception = ParseExpression();
  statement->span = SpanFrom(first);
  return statement;
}

}  // namespace quillbar::language
