// SPDX-License-Identifier: MIT
#include "host/language/syntax/conditional_compilation.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>
#include <variant>

#include "host/language/syntax/expression_parser.h"
#include "host/language/syntax/names.h"
#include "host/language/syntax/parser_context.h"
#include "host/language/syntax/statement_parser.h"
#include "host/language/syntax/target_constants.h"

namespace quillbar::language {
namespace {

using Known = std::variant<bool, double, std::string>;

bool IsDirective(const Token &token, std::string_view word) {
  if (!token.Is(TokenKind::kDirective)) return false;
  return SameName(std::string_view(token.text).substr(0, token.text.find_first_of(" \t/\'")), word);
}

/// A constant that a file declares: the tokens of its value.
struct Declared {
  std::string container;  // the class or module around it
  const std::vector<Token> *tokens = nullptr;
  std::size_t first = 0;
};

/// Reads and evaluates conditions.
class Conditions {
 public:
  Conditions(const SourceText &source, Diagnostics &diagnostics) : source_(source), diagnostics_(diagnostics) {}

  void Declare(const std::string &name, Declared constant) { constants_[name].push_back(std::move(constant)); }

  /// Whether the expression whose tokens start at `first` holds; false after an error, which is reported.
  bool Holds(const std::vector<Token> &tokens, std::size_t first, const std::string &container) {
    try {
      container_ = container;
      const Known value = Evaluate(tokens, first, true);
      if (const bool *truth = std::get_if<bool>(&value)) return *truth;
      throw SyntaxError{tokens[first].span, "the condition of #If is a Boolean"};
    } catch (const SyntaxError &error) {
      diagnostics_.Report(source_, error.span, error.message);
      return false;
    }
  }

 private:
  Known Evaluate(const std::vector<Token> &tokens, std::size_t first, bool isCondition) {
    std::vector<Token> line;
    std::size_t end = first;
    while (!tokens[end].Is(TokenKind::kEndOfLine) && !tokens[end].Is(TokenKind::kEndOfFile))
      line.push_back(tokens[end++]);
    line.push_back(tokens[end]);
    line.back().kind = TokenKind::kEndOfFile;
    Parser parser(source_, diagnostics_, std::move(line));
    const syntax::ExpressionPointer expression = ParseExpression(parser);
    if (isCondition) parser.Accept(Keyword::kThen);
    if (!parser.AtLineEnd()) parser.FailHere("the end of the line");
    return Evaluate(*expression);
  }

  [[noreturn]] static void Fail(Span span, std::string message) { throw SyntaxError{span, std::move(message)}; }

  Known Evaluate(const syntax::Expression &expression) {
    using syntax::ExpressionKind;
    switch (expression.kind) {
      case ExpressionKind::kInteger:
        return static_cast<double>(static_cast<const syntax::IntegerLiteral &>(expression).value);
      case ExpressionKind::kReal:
        return static_cast<const syntax::RealLiteral &>(expression).value;
      case ExpressionKind::kText:
        return static_cast<const syntax::TextLiteral &>(expression).value;
      case ExpressionKind::kBoolean:
        return static_cast<const syntax::BooleanLiteral &>(expression).value;
      case ExpressionKind::kName:
        return Find(static_cast<const syntax::Name &>(expression).name, {}, expression.span);
      case ExpressionKind::kMember: {
        const auto &member = static_cast<const syntax::Member &>(expression);
        const std::string_view base = source_.Slice(member.base->span);
        return Find(member.name, base.substr(base.rfind('.') + 1), expression.span);
      }
      case ExpressionKind::kUnary:
        return EvaluateUnary(static_cast<const syntax::Unary &>(expression));
      case ExpressionKind::kBinary:
        return EvaluateBinary(static_cast<const syntax::Binary &>(expression));
      default:
        Fail(expression.span, "#If takes literals, constants and operators alone");
    }
  }

  Known EvaluateUnary(const syntax::Unary &unary) {
    const Known value = Evaluate(*unary.operand);
    const bool *truth = std::get_if<bool>(&value);
    const double *number = std::get_if<double>(&value);
    if (unary.operation == syntax::UnaryOperator::kNot && truth != nullptr) return !*truth;
    if (unary.operation == syntax::UnaryOperator::kNegate && number != nullptr) return -*number;
    if (unary.operation == syntax::UnaryOperator::kPlus && number != nullptr) return *number;
    Fail(unary.span, "this operator doesn't fit the constant");
  }

  Known EvaluateBinary(const syntax::Binary &binary) {
    using syntax::BinaryOperator;
    const Known left = Evaluate(*binary.left);
    const Known right = Evaluate(*binary.right);
    if (left.index() != right.index()) Fail(binary.operatorSpan, "these constants have different types");
    const auto compare = [&](const auto &a, const auto &b) -> std::optional<bool> {
      switch (binary.operation) {
        case BinaryOperator::kEqual:
          return a == b;
        case BinaryOperator::kNotEqual:
          return a != b;
        case BinaryOperator::kLess:
          return a < b;
        case BinaryOperator::kGreater:
          return a > b;
        case BinaryOperator::kLessEqual:
          return a <= b;
        case BinaryOperator::kGreaterEqual:
          return a >= b;
        default:
          return std::nullopt;
      }
    };
    std::optional<Known> result;
    if (const bool *a = std::get_if<bool>(&left)) {
      result = Combine(binary.operation, *a, std::get<bool>(right));
    } else if (const double *number = std::get_if<double>(&left)) {
      result = compare(*number, std::get<double>(right));
      if (!result) result = Calculate(binary.operation, *number, std::get<double>(right));
    } else {
      // Texts compare without regard to case, as they do when a script runs.
      result = compare(FoldName(std::get<std::string>(left)), FoldName(std::get<std::string>(right)));
    }
    if (!result)
      Fail(binary.operatorSpan, fmt::format("#If doesn't know \"{}\" for these constants", Spelling(binary.operation)));
    return *result;
  }

  static std::optional<Known> Combine(syntax::BinaryOperator operation, bool a, bool b) {
    switch (operation) {
      case syntax::BinaryOperator::kAnd:
        return a && b;
      case syntax::BinaryOperator::kOr:
        return a || b;
      case syntax::BinaryOperator::kXor:
      case syntax::BinaryOperator::kNotEqual:
        return a != b;
      case syntax::BinaryOperator::kEqual:
        return a == b;
      default:
        return std::nullopt;
    }
  }

  static std::optional<Known> Calculate(syntax::BinaryOperator operation, double a, double b) {
    switch (operation) {
      case syntax::BinaryOperator::kAdd:
        return a + b;
      case syntax::BinaryOperator::kSubtract:
        return a - b;
      case syntax::BinaryOperator::kMultiply:
        return a * b;
      case syntax::BinaryOperator::kDivide:
        return a / b;
      default:
        return std::nullopt;
    }
  }

  Known Find(const std::string &name, std::string_view container, Span span) {
    if (container.empty()) {
      for (const TargetConstant &constant : TargetConstants()) {
        if (!SameName(constant.name, name)) continue;
        return std::visit(
            [](auto value) -> Known {
              if constexpr (std::is_same_v<decltype(value), std::string_view>) {
                return std::string(value);
              } else {
                return value;
              }
            },
            constant.value);
      }
    }
    const Declared *found = FindDeclared(name, container, span);
    if (found == nullptr) {
      std::vector<std::string_view> candidates;
      for (const TargetConstant &constant : TargetConstants()) candidates.push_back(constant.name);
      for (const auto &[known, declared] : constants_) candidates.push_back(known);
      Fail(span, fmt::format("\"{}\" is no constant that #If knows{}", name, Suggestion(name, candidates)));
    }
    if (++depth_ > kMaxDepth) Fail(span, fmt::format("the constant \"{}\" depends on itself", name));
    const std::string outer = std::exchange(container_, found->container);
    Known value = Evaluate(*found->tokens, found->first, false);
    container_ = outer;
    --depth_;
    return value;
  }

  /// The constant that the name means in the current class or module, or else outside of all, or in the only one that has
  /// it.
  const Declared *FindDeclared(const std::string &name, std::string_view container, Span span) const {
    const auto found = constants_.find(name);
    if (found == constants_.end()) return nullptr;
    const auto in = [&](std::string_view where) -> const Declared * {
      for (const Declared &declared : found->second) {
        if (SameName(declared.container, where)) return &declared;
      }
      return nullptr;
    };
    const bool isSelf = SameName(container, "Self") || SameName(container, "Me");
    if (!container.empty() && !isSelf) return in(container);
    if (const Declared *own = in(container_)) return own;
    if (const Declared *outside = in({})) return outside;
    if (found->second.size() > 1) {
      Fail(span, fmt::format("there are several constants \"{}\"; write the class or module before it", name));
    }
    return &found->second.front();
  }

  static constexpr int kMaxDepth = 100;

  const SourceText &source_;
  Diagnostics &diagnostics_;
  std::map<std::string, std::vector<Declared>, NameLess> constants_;
  std::string container_;
  int depth_ = 0;
};

/// Follows the classes and modules of a file, whose names qualify constants.
class Containers {
 public:
  /// Looks at the line that starts at `at`.
  void Enter(const std::vector<Token> &tokens, std::size_t at) {
    const auto isContainer = [](const Token &token) {
      return token.Is(Keyword::kClass) || token.Is(Keyword::kModule) || token.Is(Keyword::kInterface);
    };
    if (tokens[at].Is(Keyword::kEnd) && isContainer(tokens[at + 1])) {
      if (!names_.empty()) names_.pop_back();
      return;
    }
    while (tokens[at].Is(TokenKind::kName)) ++at;
    if (isContainer(tokens[at]) && tokens[at + 1].Is(TokenKind::kName)) names_.push_back(tokens[at + 1].text);
  }
  std::string Innermost() const { return names_.empty() ? std::string() : names_.back(); }

 private:
  std::vector<std::string> names_;
};

/// The first token of a constant's value in the line that starts at `at`, and the constant's name; nothing for other
/// lines.
std::optional<std::pair<std::string, std::size_t>> FindConstant(const std::vector<Token> &tokens, std::size_t at) {
  while (tokens[at].Is(TokenKind::kName)) ++at;
  if (!tokens[at].Is(Keyword::kConst) || !tokens[at + 1].Is(TokenKind::kName)) return std::nullopt;
  const std::string name = tokens[at + 1].text;
  while (!tokens[at].Is(TokenKind::kEqual)) {
    if (tokens[at].Is(TokenKind::kEndOfLine) || tokens[at].Is(TokenKind::kEndOfFile)) return std::nullopt;
    ++at;
  }
  return std::pair(name, at + 1);
}

/// Calls `visit` with the index of the first token of each line.
template <class Visit>
void ForEachLine(const std::vector<Token> &tokens, Visit visit) {
  bool isStart = true;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (isStart && !tokens[i].Is(TokenKind::kEndOfLine)) visit(i);
    isStart = tokens[i].Is(TokenKind::kEndOfLine);
  }
}

/// Notes the constants of a file. Those inside branches are known only where no other is.
void Declare(const std::vector<Token> &tokens, Conditions &conditions) {
  Containers containers;
  ForEachLine(tokens, [&](std::size_t at) {
    containers.Enter(tokens, at);
    if (const auto constant = FindConstant(tokens, at)) {
      conditions.Declare(constant->first, {containers.Innermost(), &tokens, constant->second});
    }
  });
}

/// One #If and its branches.
struct Branches {
  const Token *opener;
  bool isAround;  // whether what is around it is compiled
  bool isTaken;   // whether a branch has been taken
  bool isOpen;    // whether the current branch is compiled
  bool hasElse = false;
};

class Filter {
 public:
  Filter(const SourceText &source, Conditions &conditions, Diagnostics &diagnostics)
      : source_(source), conditions_(conditions), diagnostics_(diagnostics) {}

  std::vector<Token> Run(const std::vector<Token> &tokens) {
    std::vector<Token> kept;
    Containers containers;
    std::size_t at = 0;
    while (at < tokens.size()) {
      const std::size_t start = at;
      if (IsOpen()) containers.Enter(tokens, start);
      const bool isBranch = EnterDirective(tokens, start, containers.Innermost());
      const bool isKept = IsOpen() && !isBranch;
      for (; at < tokens.size(); ++at) {
        const bool endsLine = tokens[at].Is(TokenKind::kEndOfLine);
        if (isKept || endsLine || tokens[at].Is(TokenKind::kEndOfFile)) kept.push_back(tokens[at]);
        if (endsLine) break;
      }
      ++at;
      if (!isKept && !isBranch && at < tokens.size())
        leftOut_.push_back({start == 0 ? 0 : tokens[start - 1].span.begin, tokens[at].span.begin});
    }
    for (const Branches &open : open_) {
      diagnostics_.Report(source_, open.opener->span, "this \"#If\" has no \"#EndIf\"");
    }
    return kept;
  }

  /// Whether the position is in a branch that was left out.
  bool IsLeftOut(Span span) const {
    return std::ranges::any_of(leftOut_, [&](Span out) { return span.begin >= out.begin && span.begin < out.end; });
  }

 private:
  bool IsOpen() const { return open_.empty() || open_.back().isOpen; }

  /// Whether a line is one of the directives that divide branches.
  bool EnterDirective(const std::vector<Token> &tokens, std::size_t at, const std::string &container) {
    const Token &token = tokens[at];
    if (IsDirective(token, "#If")) {
      const bool isAround = IsOpen();
      const bool holds = isAround && conditions_.Holds(tokens, at + 1, container);
      open_.push_back({&token, isAround, holds, holds});
      return true;
    }
    const bool isElseIf = IsDirective(token, "#ElseIf");
    const bool isElse = IsDirective(token, "#Else");
    const bool isEnd = IsDirective(token, "#EndIf") || IsDirective(token, "#End");
    if (!isElseIf && !isElse && !isEnd) return false;
    if (open_.empty()) {
      diagnostics_.Report(source_, token.span, "this has no \"#If\" before it");
      return true;
    }
    if (isEnd) {
      open_.pop_back();
      return true;
    }
    Branches &branches = open_.back();
    if (std::exchange(branches.hasElse, branches.hasElse || isElse)) {
      diagnostics_.Report(source_, token.span, "this follows the \"#Else\" of its \"#If\"");
    }
    const bool isPossible = branches.isAround && !branches.isTaken;
    branches.isOpen = isPossible && (isElse || conditions_.Holds(tokens, at + 1, container));
    branches.isTaken = branches.isTaken || branches.isOpen;
    return true;
  }

  const SourceText &source_;
  Conditions &conditions_;
  Diagnostics &diagnostics_;
  std::vector<Branches> open_;
  std::vector<Span> leftOut_;
};

}  // namespace

void LeaveOutBranches(const SourceText &source, std::vector<TokenizedFile> &files, Diagnostics &diagnostics) {
  const auto hasBranches = [](const TokenizedFile &file) {
    return std::ranges::any_of(file.tokens, [](const Token &token) {
      return IsDirective(token, "#If") || IsDirective(token, "#ElseIf") || IsDirective(token, "#Else") ||
             IsDirective(token, "#EndIf") || IsDirective(token, "#End");
    });
  };
  if (std::ranges::none_of(files, hasBranches)) return;
  Conditions conditions(source, diagnostics);
  for (const TokenizedFile &file : files) Declare(file.tokens, conditions);
  std::vector<std::vector<Token>> kept;
  for (TokenizedFile &file : files) {
    Filter filter(source, conditions, diagnostics);
    kept.push_back(filter.Run(file.tokens));
    std::erase_if(file.errors, [&](const Diagnostic &error) { return filter.IsLeftOut(error.span); });
  }
  for (std::size_t i = 0; i < files.size(); ++i) files[i].tokens = std::move(kept[i]);
}

}  // namespace quillbar::language
