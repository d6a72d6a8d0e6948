// SPDX-License-Identifier: MIT
#include "host/language/syntax/token.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "host/language/syntax/names.h"

namespace quillbar::language {
namespace {

// In the order of the enumeration, which is alphabetical.
constexpr auto kSpellings = std::to_array<std::string_view>({
    "",       "AddHandler", "AddressOf", "And",      "As",        "ByRef",      "ByVal",  "Call",     "Case",
    "Catch",  "Class",      "Const",     "Continue", "Dim",       "Do",         "DownTo", "Each",     "Else",
    "ElseIf", "End",        "Enum",      "Exit",     "False",     "Finally",    "For",    "Function", "GoTo",
    "If",     "In",         "Interface", "Is",       "IsA",       "Loop",       "Mod",    "Module",   "New",
    "Next",   "Nil",        "Not",       "Optional", "Or",        "ParamArray", "Raise",  "Redim",    "RemoveHandler",
    "Return", "Select",     "Static",    "Step",     "Structure", "Sub",        "Then",   "To",       "True",
    "Try",    "Until",      "Var",       "Wend",     "While",     "Xor",
});
static_assert(kSpellings.size() == static_cast<std::size_t>(Keyword::kXor) + 1);

std::string_view OperatorText(TokenKind kind) {
  switch (kind) {
    case TokenKind::kPlus:
      return "+";
    case TokenKind::kMinus:
      return "-";
    case TokenKind::kStar:
      return "*";
    case TokenKind::kSlash:
      return "/";
    case TokenKind::kBackslash:
      return "\\";
    case TokenKind::kCaret:
      return "^";
    case TokenKind::kEqual:
      return "=";
    case TokenKind::kNotEqual:
      return "<>";
    case TokenKind::kLess:
      return "<";
    case TokenKind::kLessEqual:
      return "<=";
    case TokenKind::kGreater:
      return ">";
    case TokenKind::kGreaterEqual:
      return ">=";
    case TokenKind::kPlusAssign:
      return "+=";
    case TokenKind::kMinusAssign:
      return "-=";
    case TokenKind::kStarAssign:
      return "*=";
    case TokenKind::kSlashAssign:
      return "/=";
    case TokenKind::kLeftParenthesis:
      return "(";
    case TokenKind::kRightParenthesis:
      return ")";
    case TokenKind::kColon:
      return ":";
    case TokenKind::kComma:
      return ",";
    case TokenKind::kDot:
      return ".";
    default:
      return {};
  }
}

}  // namespace

Keyword FindKeyword(std::string_view name) {
  const auto found = std::lower_bound(kSpellings.begin() + 1, kSpellings.end(), name, NameLess());
  if (found == kSpellings.end() || !SameName(*found, name)) return Keyword::kNone;
  return static_cast<Keyword>(std::distance(kSpellings.begin(), found));
}

std::string_view Spelling(Keyword keyword) { return kSpellings[static_cast<std::size_t>(keyword)]; }

std::string Describe(const Token &token) {
  switch (token.kind) {
    case TokenKind::kEndOfFile:
      return "the end of the script";
    case TokenKind::kEndOfLine:
      return "the end of the line";
    case TokenKind::kName:
      return fmt::format("\"{}\"", token.text);
    case TokenKind::kKeyword:
      return fmt::format("\"{}\"", Spelling(token.keyword));
    case TokenKind::kInteger:
    case TokenKind::kReal:
      return "a number";
    case TokenKind::kString:
      return "a text";
    case TokenKind::kColor:
      return "a colour";
    case TokenKind::kDirective:
      return "a directive";
    default:
      return fmt::format("\"{}\"", OperatorText(token.kind));
  }
}

}  // namespace quillbar::language
