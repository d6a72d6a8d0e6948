// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/language/syntax/source_text.h"

namespace quillbar::language {

enum class TokenKind : std::uint8_t {
  kEndOfFile,
  kEndOfLine,
  kName,
  kKeyword,
  kInteger,
  kReal,
  kString,
  kColor,
  kDirective,  // the rest of a line that starts with "#"
  // Operators and punctuation.
  kPlus,
  kMinus,
  kStar,
  kSlash,
  kBackslash,
  kCaret,
  kEqual,
  kNotEqual,
  kLess,
  kLessEqual,
  kGreater,
  kGreaterEqual,
  kPlusAssign,
  kMinusAssign,
  kStarAssign,
  kSlashAssign,
  kLeftParenthesis,
  kRightParenthesis,
  kComma,
  kColon,
  kDot,
};

/// The reserved words. After a dot they are names again, because the dialect allows any word there.
enum class Keyword : std::uint8_t {
  kNone,
  kAddHandler,
  kAddressOf,
  kAnd,
  kAs,
  kByRef,
  kByVal,
  kCall,
  kCase,
  kCatch,
  kClass,
  kConst,
  kContinue,
  kDim,
  kDo,
  kDownTo,
  kEach,
  kElse,
  kElseIf,
  kEnd,
  kEnum,
  kExit,
  kFalse,
  kFinally,
  kFor,
  kFunction,
  kGoTo,
  kIf,
  kIn,
  kInterface,
  kIs,
  kIsA,
  kLoop,
  kMod,
  kModule,
  kNew,
  kNext,
  kNil,
  kNot,
  kOptional,
  kOr,
  kParamArray,
  kRaise,
  kRedim,
  kRemoveHandler,
  kReturn,
  kSelect,
  kStatic,
  kStep,
  kStructure,
  kSub,
  kThen,
  kTo,
  kTrue,
  kTry,
  kUntil,
  kVar,
  kWend,
  kWhile,
  kXor,
};

/// One token. `text` is the name as written, a string's value, or a directive's line.
struct Token {
  TokenKind kind = TokenKind::kEndOfFile;
  Keyword keyword = Keyword::kNone;
  bool spaceBefore = false;
  Span span;
  std::string text;
  std::uint64_t integer = 0;  // kInteger: the value; kColor: &hAARRGGBB
  double real = 0;

  /// Whether the token is of this kind, or is this keyword.
  bool Is(TokenKind wanted) const { return kind == wanted; }
  bool Is(Keyword wanted) const { return kind == TokenKind::kKeyword && keyword == wanted; }
};

/// The reserved word that `name` is, in any case of letters, or `kNone`.
Keyword FindKeyword(std::string_view name);

/// A reserved word as the documentation spells it.
std::string_view Spelling(Keyword keyword);

/// How a message names a token: `"If"`, `a number`, `the end of the line`.
std::string Describe(const Token &token);

}  // namespace quillbar::language
