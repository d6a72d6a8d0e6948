// SPDX-License-Identifier: MIT
#include "host/language/syntax/statement_parser.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/names.h"

namespace quillbar::language {
namespace {

using syntax::StatementKind;

void ParseVariables(Parser &parser, syntax::Declare &declare) {
  do {
    syntax::Declare::Variable &variable = declare.variables.emplace_back();
    const Token &name = parser.ExpectNewName("a variable");
    variable.name = name.text;
    variable.rank = ParseDimensions(parser, &variable.upperBounds);
    variable.span = parser.SpanFrom(name);
  } while (parser.Accept(TokenKind::kComma));

  if (!parser.At(Keyword::kAs)) parser.FailHere("\"As\" and a type (Dim name As Type)");
  parser.Take();
  const Token &made = parser.Current();
  if (parser.Accept(Keyword::kNew)) {
    declare.type = ParseTypeName(parser);
    std::vector<syntax::ExpressionPointer> arguments = ParseOptionalArguments(parser);
    declare.initial = std::make_unique<syntax::New>(parser.SpanFrom(made), declare.type, std::move(arguments));
    return;
  }
  declare.type = ParseTypeName(parser);
  if (parser.Accept(TokenKind::kEqual)) declare.initial = ParseExpression(parser);
}

syntax::StatementPointer ParseCall(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::CallStatement>(first.span);
  statement->dropsResult = true;
  statement->call = ParseOperand(parser);
  statement->span = parser.SpanFrom(first);
  return statement;
}

syntax::StatementPointer ParseAssignOrCall(Parser &parser) {
  const Token &first = parser.Current();
  const bool startsOperand = first.Is(TokenKind::kName) || first.Is(TokenKind::kLeftParenthesis) ||
                             first.Is(TokenKind::kString) || first.Is(Keyword::kNew);
  if (!startsOperand) parser.FailHere("a statement");
  syntax::ExpressionPointer target = ParseOperand(parser, true);

  const auto assign = [&](std::optional<syntax::BinaryOperator> operation) {
    auto statement = std::make_unique<syntax::Assign>(first.span);
    statement->operatorSpan = parser.Take().span;
    statement->target = std::move(target);
    statement->operation = operation;
    statement->value = ParseExpression(parser);
    statement->span = parser.SpanFrom(first);
    return statement;
  };
  switch (parser.Current().kind) {
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
  if (!parser.AtLineEnd() && !parser.At(Keyword::kElse)) {
    std::vector<syntax::ExpressionPointer> arguments = ParseArgumentsToLineEnd(parser);
    target = std::make_unique<syntax::Call>(parser.SpanFrom(first), std::move(target), std::move(arguments));
  }
  statement->call = std::move(target);
  statement->span = parser.SpanFrom(first);
  return statement;
}

syntax::StatementPointer ParseJump(Parser &parser) {
  const Token &first = parser.Take();
  const bool isExit = first.Is(Keyword::kExit);
  auto statement = std::make_unique<syntax::Jump>(isExit ? StatementKind::kExit : StatementKind::kContinue, first.span);
  if (parser.AtLineEnd() || parser.At(Keyword::kElse)) return statement;
  const Token &target = parser.Take();
  switch (target.keyword) {
    case Keyword::kFor:
      statement->target = syntax::JumpTarget::kFor;
      if (parser.At(TokenKind::kName)) statement->variable = parser.Take().text;
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
      parser.Fail(target.span, fmt::format("\"{}\" can't {} {}", Spelling(first.keyword),
                                           isExit ? "leave" : "go on with", Describe(target)));
  }
  if (!isExit && statement->target > syntax::JumpTarget::kDo) {
    parser.Fail(target.span, fmt::format("\"Continue\" needs a loop, not {}", Describe(target)));
  }
  statement->span = parser.SpanFrom(first);
  return statement;
}

syntax::StatementPointer ParseReturn(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::Return>(first.span);
  if (!parser.AtLineEnd() && !parser.At(Keyword::kElse)) statement->value = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  return statement;
}

syntax::StatementPointer ParseRedim(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::Redim>(first.span);
  syntax::ExpressionPointer target = ParseOperand(parser);
  statement->span = parser.SpanFrom(first);
  if (target->kind != syntax::ExpressionKind::kCall) {
    parser.Fail(target->span, "\"Redim\" takes an array and its new last index: Redim list(9)");
  }
  auto &call = static_cast<syntax::Call &>(*target);
  if (call.arguments.empty()) parser.Fail(target->span, "\"Redim\" takes the new last index: Redim list(9)");
  statement->list = std::move(call.callee);
  statement->upperBounds = std::move(call.arguments);
  return statement;
}

syntax::StatementPointer ParseHandler(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::Handler>(first.span);
  statement->adds = first.Is(Keyword::kAddHandler);
  statement->event = ParseOperand(parser);
  parser.Expect(TokenKind::kComma, "\",\" and \"AddressOf\" with a method");
  if (!parser.At(Keyword::kAddressOf)) parser.FailHere("\"AddressOf\" and a method");
  statement->procedure = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  return statement;
}

syntax::StatementPointer ParseTry(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::Try>(first.span);
  parser.ExpectLineEnd();
  statement->body = ParseBlock(parser);
  while (parser.At(Keyword::kCatch)) {
    const Token &catchToken = parser.Take();
    syntax::Try::Catch &handler = statement->catches.emplace_back();
    parser.Recover([&] {
      if (parser.At(TokenKind::kName)) {
        handler.variable = parser.Take().text;
        if (parser.Accept(Keyword::kAs)) handler.type = ParseTypeName(parser);
      }
      handler.span = parser.SpanFrom(catchToken);
      parser.ExpectLineEnd();
    });
    handler.body = ParseBlock(parser);
  }
  const bool hasFinally = parser.Accept(Keyword::kFinally);
  if (hasFinally) {
    parser.ExpectLineEnd();
    statement->finally = ParseBlock(parser);
  }
  ExpectEnd(parser, Keyword::kTry, first);
  if (statement->catches.empty() && !hasFinally) {
    parser.Report(first.span, "this \"Try\" has neither \"Catch\" nor \"Finally\"");
  }
  return statement;
}

bool AtUsing(const Parser &parser) {
  return parser.At(TokenKind::kName) && SameName(parser.Current().text, "Using") && parser.Ahead().Is(TokenKind::kName);
}

syntax::StatementPointer ParseUsing(Parser &parser) {
  const Token &first = parser.Take();
  syntax::TypeName module = ParseTypeName(parser);
  return std::make_unique<syntax::Using>(parser.SpanFrom(first), std::move(module));
}

syntax::StatementPointer ParseRaise(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::Raise>(first.span);
  statement->exception = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  return statement;
}

}  // namespace

syntax::Block ParseBlock(Parser &parser) {
  const Parser::Nested nested(parser);
  syntax::Block block;
  while (!parser.At(TokenKind::kEndOfFile) && !AtBlockEnd(parser)) {
    parser.Recover([&] {
      if (parser.Accept(TokenKind::kEndOfLine)) return;
      if (parser.At(TokenKind::kDirective)) return ParseDirective(parser);
      block.push_back(ParseStatement(parser));
    });
  }
  return block;
}

bool AtBlockEnd(const Parser &parser) {
  switch (parser.Current().keyword) {
    case Keyword::kEnd:
    case Keyword::kElse:
    case Keyword::kElseIf:
    case Keyword::kCase:
    case Keyword::kNext:
    case Keyword::kWend:
    case Keyword::kLoop:
    case Keyword::kCatch:
    case Keyword::kFinally:
      return parser.At(TokenKind::kKeyword);
    default:
      return false;
  }
}

bool AtLineOfTheEnvironment(const Parser &parser) {
  const Token &next = parser.Ahead();
  const bool isFollowed = next.Is(TokenKind::kName) || next.Is(TokenKind::kKeyword);
  return parser.At(TokenKind::kName) && isFollowed && StartsLineOfTheEnvironment(parser.Current().text);
}

void ParseDirective(Parser &parser) {
  const Token &directive = parser.Take();
  const std::string_view line = directive.text;
  constexpr std::string_view kPragma = "#Pragma";
  if (!SameName(line.substr(0, kPragma.size()), kPragma)) {
    parser.Fail(directive.span, "the directives are #If, #ElseIf, #Else, #EndIf and #Pragma (which is ignored)");
  }
  parser.ExpectLineEnd();
}

void FailUnclosed(Parser &parser, const Token &opener, std::string_view closer) {
  parser.Fail(opener.span, fmt::format("this {} has no \"{}\"", Describe(opener), closer));
}

void ExpectEnd(Parser &parser, Keyword word, const Token &opener) {
  if (!parser.At(Keyword::kEnd)) {
    const std::string closer = fmt::format("End {}", Spelling(word));
    if (parser.At(TokenKind::kEndOfFile)) FailUnclosed(parser, opener, closer);
    parser.FailHere(fmt::format("\"{}\" for the \"{}\" of line {}", closer, Spelling(word),
                                parser.source.Locate(opener.span.begin).line));
  }
  const Token &end = parser.Take();
  if (!parser.AtLineEnd() && !parser.Accept(word)) {
    parser.Fail(
        Span::Cover(end.span, parser.Current().span),
        fmt::format("expected \"End {}\" for the {} of line {}, found \"End\" and {}", Spelling(word), Describe(opener),
                    parser.source.Locate(opener.span.begin).line, Describe(parser.Current())));
  }
  parser.ExpectLineEnd();
}

syntax::StatementPointer ParseStatement(Parser &parser) {
  switch (parser.Current().keyword) {
    case Keyword::kIf:
      return ParseIf(parser);
    case Keyword::kSelect:
      return ParseSelect(parser);
    case Keyword::kFor:
      return ParseFor(parser);
    case Keyword::kWhile:
      return ParseWhile(parser);
    case Keyword::kDo:
      return ParseDo(parser);
    case Keyword::kTry:
      return ParseTry(parser);
    default:
      break;
  }
  syntax::StatementPointer statement = ParseSimpleStatement(parser);
  parser.ExpectLineEnd();
  return statement;
}

syntax::StatementPointer ParseSimpleStatement(Parser &parser) {
  switch (parser.Current().keyword) {
    case Keyword::kDim:
    case Keyword::kVar:
    case Keyword::kStatic:
      return ParseDeclare(parser);
    case Keyword::kConst:
      return ParseConstant(parser);
    case Keyword::kCall:
      return ParseCall(parser);
    case Keyword::kExit:
    case Keyword::kContinue:
      return ParseJump(parser);
    case Keyword::kReturn:
      return ParseReturn(parser);
    case Keyword::kRedim:
      return ParseRedim(parser);
    case Keyword::kAddHandler:
    case Keyword::kRemoveHandler:
      return ParseHandler(parser);
    case Keyword::kRaise:
      return ParseRaise(parser);
    case Keyword::kSub:
    case Keyword::kFunction:
    case Keyword::kEnum:
    case Keyword::kClass:
    case Keyword::kModule:
    case Keyword::kInterface:
      parser.Fail(parser.Current().span,
                  fmt::format("a {} is declared outside of every other block", Describe(parser.Current())));
    case Keyword::kStructure:
    case Keyword::kGoTo:
      parser.Fail(parser.Current().span, NotPartOfThisHost(Spelling(parser.Current().keyword)));
    default:
      if (AtUsing(parser)) return ParseUsing(parser);
      if (AtLineOfTheEnvironment(parser)) parser.Fail(parser.Current().span, NotPartOfThisHost(parser.Current().text));
      return ParseAssignOrCall(parser);
  }
}

syntax::StatementPointer ParseDeclare(Parser &parser) {
  const Token &first = parser.Take();
  auto declare = std::make_unique<syntax::Declare>(first.span);
  declare->isStatic = first.Is(Keyword::kStatic);
  ParseVariables(parser, *declare);
  declare->span = parser.SpanFrom(first);
  return declare;
}

syntax::StatementPointer ParseConstant(Parser &parser) {
  const Token &first = parser.Take();
  auto constant = std::make_unique<syntax::Constant>(first.span);
  const Token &name = parser.ExpectNewName("a constant");
  constant->name = name.text;
  constant->nameSpan = name.span;
  if (parser.Accept(Keyword::kAs)) constant->type = ParseTypeName(parser);
  parser.Expect(TokenKind::kEqual, "\"=\" and the value of the constant");
  constant->value = ParseExpression(parser);
  constant->span = parser.SpanFrom(first);
  return constant;
}

}  // namespace quillbar::language
