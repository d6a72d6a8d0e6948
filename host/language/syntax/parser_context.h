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

/// What all parsing functions share: the position in the token list and the ways to move on.
class Parser {
 public:
  Parser(const SourceText &text, Diagnostics &diagnosticList, std::vector<Token> tokenList)
      : source(text), diagnostics_(diagnosticList), tokens_(std::move(tokenList)) {}

  const SourceText &source;

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
  void Report(Span span, std::string message) { diagnostics_.Report(source, span, std::move(message)); }

  bool HasReported() const { return !diagnostics_.Empty(); }

  /// Runs `read`; an error in it is reported and the rest of its line skipped.
  template <class Read>
  void Recover(Read read) {
    try {
      read();
    } catch (const SyntaxError &error) {
      Report(error.span, error.message);
      SkipLine();
    }
  }

  /// The place in the token list, to return to when what follows turns out to be something else.
  std::size_t Mark() const { return at_; }
  void ReturnTo(std::size_t mark) { at_ = mark; }

  /// From the start of `first` to the end of the last token taken.
  Span SpanFrom(const Token &first) const { return Span::Cover(first.span, Last().span); }
  const Token &Last() const { return tokens_[at_ == 0 ? 0 : at_ - 1]; }

  /// Counts how deeply the parser is nested; too deep is a syntax error, not a crash.
  class Nested {
   public:
    explicit Nested(Parser &parser) : parser_(parser) {
      if (++parser_.depth_ > kMaxNesting) {
        --parser_.depth_;
        parser_.FailTooDeep();
      }
    }
    ~Nested() { --parser_.depth_; }
    Nested(const Nested &) = delete;
    Nested &operator=(const Nested &) = delete;

   private:
    Parser &parser_;
  };

 private:
  [[noreturn]] void FailTooDeep() const;

  Diagnostics &diagnostics_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  std::uint32_t depth_ = 0;
};

}  // namespace quillbar::language
