// SPDX-License-Identifier: MIT
#include "host/language/syntax/parser_context.h"

#include <fmt/format.h>

#include <utility>

namespace quillbar::language {

const Token &Parser::Take() {
  const Token &token = tokens_[at_];
  if (at_ + 1 < tokens_.size()) ++at_;
  return token;
}

const Token &Parser::Expect(TokenKind kind, std::string_view wanted) {
  if (!At(kind)) FailHere(wanted);
  return Take();
}

const Token &Parser::Expect(Keyword keyword, std::string_view after) {
  if (!At(keyword)) FailHere(fmt::format("\"{}\" after {}", Spelling(keyword), after));
  return Take();
}

const Token &Parser::ExpectNewName(std::string_view what) {
  if (At(TokenKind::kKeyword)) {
    Fail(Current().span,
         fmt::format("\"{}\" is a reserved word and can't be the name of {}", Spelling(Current().keyword), what));
  }
  return Expect(TokenKind::kName, fmt::format("the name of {}", what));
}

void Parser::ExpectLineEnd() {
  if (!AtLineEnd()) FailHere("the end of the line");
  Accept(TokenKind::kEndOfLine);
}

void Parser::SkipLine() {
  while (!AtLineEnd()) Take();
  Accept(TokenKind::kEndOfLine);
}

void Parser::Fail(Span span, std::string message) const { throw SyntaxError{span, std::move(message)}; }

void Parser::FailHere(std::string_view wanted) const {
  if (At(TokenKind::kColon)) {
    Fail(Current().span, "\":\" doesn't separate statements; put each on a line of its own");
  }
  Fail(Current().span, fmt::format("expected {}, found {}", wanted, Describe(Current())));
}

void Parser::FailTooDeep() const {
  Fail(Current().span, fmt::format("this is nested too deeply; at most {} levels are read", kMaxNesting));
}

}  // namespace quillbar::language
