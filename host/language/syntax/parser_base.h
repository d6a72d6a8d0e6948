// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/parser.h"
#include "host/language/syntax/source_text.h"
#include "host/language/syntax/token.h"

namespace quillbar::language {

/// Thrown where a statement can't be read any further; caught where the next line starts.
struct SyntaxError {
  Span span;
  std::string message;
};

/// What all parts of the parser share: the position in the token list and the ways to move on.
class ParserBase {
 public:
  ParserBase(const SourceText &source, Diagnostics &diagnostics, std::vector<Token> tokens)
      : source_(source), diagnostics_(diagnostics), tokens_(std::move(tokens)) {}

 protected:
  const Token &Current() const { return tokens_[at_]; }
  /// The token `count` tokens after the current one, or the last token of the script.
  const Token &Ahead(std::size_t count = 1) const {
    return tokens_[at_ + count < tokens_.size() ? at_ + count : tokens_.size() - 1];
  }
  /// Whether the current token is of this kind, or is this keyword.
  bool At(TokenKind kind) const { return Current().Is(kind); }
  bool At(Keyword keyword) const { return Current().Is(keyword); }
  bool AtLineEnd() const { return At(TokenKind::kEndOfLine) || At(TokenKind::kEndOfFile); }

  /// Returns the current token and moves to the next. The end of the script is never passed.
  const Token &Take();

  /// Takes the current token if it is what is asked for; returns whether it was.
  template <class What>
  bool Accept(What what) {
    if (!At(what)) return false;
    Take();
    return true;
  }

  /// Takes the current token, which must be of this kind or this keyword; otherwise fails, saying what was wanted.
  const Token &Expect(TokenKind kind, std::string_view wanted);
  const Token &Expect(Keyword keyword, std::string_view after);

  /// Reads a name that is being declared; `what` names it in the message.
  const Token &ExpectNewName(std::string_view what);

  /// Requires a line end.
  void ExpectLineEnd();
  /// Skips the rest of the line.
  void SkipLine();

  /// Gives up on the statement that is being read.
  [[noreturn]] void Fail(Span span, std::string message) const;
  /// Gives up at the current token, saying what was wanted instead.
  [[noreturn]] void FailHere(std::string_view wanted) const;
  /// Reports an error and continues.
  void Report(Span span, std::string message) { diagnostics_.Report(source_, span, std::move(message)); }

  /// From the start of `first` to the end of the last token taken.
  Span SpanFrom(const Token &first) const { return Span::Cover(first.span, Last().span); }
  const Token &Last() const { return tokens_[at_ == 0 ? 0 : at_ - 1]; }

  /// Counts how deeply the parser is nested; too deep is a syntax error, not a crash.
  class Nested {
   public:
    explicit Nested(ParserBase &parser) : parser_(parser) {
      if (++parser_.depth_ > kMaxNesting) {
        --parser_.depth_;
        parser_.FailTooDeep();
      }
    }
    ~Nested() { --parser_.depth_; }
    Nested(const Nested &) = delete;
    Nested &operator=(const Nested &) = delete;

   private:
    ParserBase &parser_;
  };

  const SourceText &source_;
  Diagnostics &diagnostics_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;

 private:
  [[noreturn]] void FailTooDeep() const;

  std::uint32_t depth_ = 0;
};

}  // namespace quillbar::language
