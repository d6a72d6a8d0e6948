// SPDX-License-Identifier: MIT
#include "host/language/syntax/lexer.h"

#include <fmt/format.h>
#include <utf8.h>

#include <charconv>
#include <string>
#include <utility>

#include "host/language/syntax/names.h"
#include "host/language/syntax/tag_format.h"

namespace quillbar::language {
namespace {

constexpr bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }
constexpr bool IsBlank(char byte) { return byte == ' ' || byte == '\t'; }
constexpr bool IsLineEnd(char byte) { return byte == '\n' || byte == '\r'; }

/// Whether a character beyond ASCII counts as a letter: all do but the few named here.
constexpr bool StartsName(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' ||
         static_cast<unsigned char>(byte) >= 0x80;
}
constexpr bool ContinuesName(char byte) { return StartsName(byte) || IsDigit(byte); }

struct Lookalike {
  std::string_view text;
  std::string_view complaint;
};

/// Characters that word processors put in place of plain ones and that look the same on a page.
constexpr Lookalike kLookalikes[] = {
    {"\u201C", "a typographic quotation mark; texts are enclosed in plain ones (\")"},
    {"\u201D", "a typographic quotation mark; texts are enclosed in plain ones (\")"},
    {"\u2018", "a typographic apostrophe; comments start with a plain one (') or //"},
    {"\u2019", "a typographic apostrophe; comments start with a plain one (') or //"},
    {"\u2013", "a dash; the minus sign is the plain hyphen (-)"},
    {"\u2212", "a typographic minus sign; use the plain hyphen (-)"},
    {"\u00A0", "a no-break space (U+00A0), which looks like a plain one; use a plain space"},
    {"\u202F", "a narrow no-break space (U+202F), which looks like a plain one; use a plain space"},
    {"\u200B", "a space without a width (U+200B), which can't be seen; delete it"},
    {"\uFEFF", "a byte order mark inside the text; delete it"},
};

class Lexer {
 public:
  /// Reads the part of `text` from `begin` on.
  Lexer(std::string_view text, std::size_t begin, std::vector<Diagnostic> &errors)
      : text_(text), errors_(errors), at_(begin) {}

  std::vector<Token> Run() {
    // Few scripts have shorter tokens, with the blanks between them; growing would copy them all several times.
    constexpr std::size_t kBytesPerToken = 4;
    tokens_.reserve(text_.size() / kBytesPerToken);
    while (Step()) {
    }
    Add(TokenKind::kEndOfLine, at_);
    Add(TokenKind::kEndOfFile, at_);
    return std::move(tokens_);
  }

 private:
  char Peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
  bool AtEnd() const { return at_ >= text_.size(); }

  Token &Add(TokenKind kind, std::size_t begin) {
    Token &token = tokens_.emplace_back();
    token.kind = kind;
    token.span = {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(at_)};
    token.spaceBefore = std::exchange(spaceBefore_, false);
    return token;
  }

  void Complain(std::size_t begin, std::size_t end, std::string message) {
    errors_.push_back({{static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)}, std::move(message)});
  }

  void SkipToLineEnd() {
    while (!AtEnd() && !IsLineEnd(Peek())) ++at_;
  }

  void SkipLineEnd() {
    if (Peek() == '\r' && Peek(1) == '\n') ++at_;
    if (!AtEnd()) ++at_;
  }

  bool AtComment() const { return Peek() == '\'' || (Peek() == '/' && Peek(1) == '/'); }

  /// Reads one token, comment or line end; false at the end of the text.
  bool Step() {
    while (IsBlank(Peek())) {
      ++at_;
      spaceBefore_ = true;
    }
    if (AtEnd()) return false;
    const char byte = Peek();
    if (IsLineEnd(byte)) {
      const std::size_t begin = at_;
      SkipLineEnd();
      Add(TokenKind::kEndOfLine, begin).span.end = static_cast<std::uint32_t>(begin);
    } else if (AtComment()) {
      SkipToLineEnd();
    } else if (byte == '_' && !ContinuesName(Peek(1))) {
      Continuation();
    } else if (byte == '"') {
      Text();
    } else if (IsDigit(byte) || (byte == '.' && IsDigit(Peek(1)) && !AfterValue())) {
      Number();
    } else if (byte == '&') {
      PrefixedLiteral();
    } else if (byte == '#') {
      Directive();
    } else if (StartsName(byte)) {
      Name();
    } else {
      Operator();
    }
    return true;
  }

  /// Whether a dot here selects a member: after a value, `list(1).5` is not a number.
  bool AfterValue() const {
    if (tokens_.empty() || spaceBefore_) return false;
    const TokenKind last = tokens_.back().kind;
    return last == TokenKind::kName || last == TokenKind::kKeyword || last == TokenKind::kString ||
           last == TokenKind::kRightParenthesis;
  }

  /// Skips `_` at the end of a line; a comment may follow it.
  void Continuation() {
    const std::size_t begin = at_++;
    while (IsBlank(Peek())) ++at_;
    if (AtComment()) SkipToLineEnd();
    if (AtEnd()) {
      Complain(begin, begin + 1, "the script ends after a line continuation");
    } else if (!IsLineEnd(Peek())) {
      Complain(begin, begin + 1, "a line continuation (_) must be the last thing on its line");
    } else {
      SkipLineEnd();
      spaceBefore_ = true;
    }
  }

  void Text() {
    const std::size_t begin = at_++;
    std::string value;
    for (;;) {
      if (AtEnd() || IsLineEnd(Peek())) {
        Complain(begin, at_, "this text has no closing quotation mark");
        break;
      }
      const char byte = text_[at_++];
      if (byte == '"' && Peek() != '"') break;
      if (byte == '"') ++at_;
      value += byte;
    }
    Add(TokenKind::kString, begin).text = std::move(value);
  }

  void Number() {
    const std::size_t begin = at_;
    while (IsDigit(Peek())) ++at_;
    bool isReal = false;
    if (Peek() == '.' && IsDigit(Peek(1))) {
      isReal = true;
      ++at_;
      while (IsDigit(Peek())) ++at_;
    }
    const std::size_t signLength = Peek(1) == '+' || Peek(1) == '-' ? 2 : 1;
    if ((Peek() == 'e' || Peek() == 'E') && IsDigit(Peek(signLength))) {
      isReal = true;
      at_ += signLength;
      while (IsDigit(Peek())) ++at_;
    }
    const char *const first = text_.data() + begin;
    const char *const last = text_.data() + at_;
    Token &token = Add(isReal ? TokenKind::kReal : TokenKind::kInteger, begin);
    const std::from_chars_result result =
        isReal ? std::from_chars(first, last, token.real) : std::from_chars(first, last, token.integer);
    if (result.ec == std::errc::result_out_of_range) {
      Complain(begin, at_,
               isReal ? "this number is beyond the range of Double" : "this number is beyond the range of UInt64");
    }
    RefuseNameAfterNumber(begin);
  }

  void RefuseNameAfterNumber(std::size_t begin) {
    if (!ContinuesName(Peek())) return;
    while (ContinuesName(Peek())) ++at_;
    Complain(begin, at_, fmt::format("\"{}\" is neither a number nor a name", text_.substr(begin, at_ - begin)));
  }

  /// `&hFF`, `&b101`, `&o17`, `&cRRGGBB`, `&cRRGGBBTT` and `&u20AC`.
  void PrefixedLiteral() {
    const std::size_t begin = at_;
    const char letter = static_cast<char>(Peek(1) | 0x20);
    const int base = letter == 'b' ? 2 : letter == 'o' ? 8 : letter == 'h' || letter == 'c' || letter == 'u' ? 16 : 0;
    if (base == 0) {
      ++at_;
      Complain(begin, at_,
               "\"&\" starts a number (&h, &b, &o), a colour (&c) or a character (&u); texts are joined with \"+\"");
      return;
    }
    at_ += 2;
    const std::size_t digits = at_;
    while (ContinuesName(Peek())) ++at_;
    std::uint64_t value = 0;
    const char *const last = text_.data() + at_;
    const auto [end, error] = std::from_chars(text_.data() + digits, last, value, base);
    const std::size_t count = at_ - digits;
    const std::string_view written = text_.substr(begin, at_ - begin);
    if (error == std::errc::result_out_of_range) {
      Complain(begin, at_, fmt::format("\"{}\" has more than 64 bits", written));
    } else if (error != std::errc() || end != last) {
      Complain(begin, at_, fmt::format("\"{}\" is not a number in base {}", written, base));
    }
    if (letter == 'c') {
      if (count != 6 && count != 8)
        Complain(begin, at_, "a colour has six digits (&cRRGGBB) or eight (&cRRGGBBTT, TT the transparency)");
      // The transparency is written last and stored first.
      const std::uint64_t color = count == 8 ? (value >> 8 | (value & 0xFF) << 24) : value;
      Add(TokenKind::kColor, begin).integer = color & 0xFFFFFFFF;
    } else if (letter == 'u') {
      Character(begin, value);
    } else {
      Add(TokenKind::kInteger, begin).integer = value;
    }
  }

  void Character(std::size_t begin, std::uint64_t codePoint) {
    std::string encoded;
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
      Complain(begin, at_, "this is not a Unicode character");
    } else {
      utf8::append(static_cast<char32_t>(codePoint), std::back_inserter(encoded));
    }
    Add(TokenKind::kString, begin).text = std::move(encoded);
  }

  /// A line that starts with "#"; of #If and #ElseIf the word alone, because an expression follows.
  void Directive() {
    const std::size_t begin = at_++;
    while (ContinuesName(Peek())) ++at_;
    const std::string_view word = text_.substr(begin, at_ - begin);
    if (SameName(word, "#If") || SameName(word, "#ElseIf")) {
      Add(TokenKind::kDirective, begin).text = std::string(word);
      return;
    }
    SkipToLineEnd();
    const std::string_view line = text_.substr(begin, at_ - begin);
    Add(TokenKind::kDirective, begin).text = std::string(line);
    const std::string_view tag = TagName(line);
    if (!IsTextTag(tag)) return;
    // What follows is for people; the tag that ends it is read as a token again.
    const std::size_t end = at_;
    while (!AtEnd()) {
      SkipLineEnd();
      const std::size_t lineStart = at_;
      SkipToLineEnd();
      const std::size_t first = text_.find_first_not_of(" \t", lineStart);
      if (first >= at_) continue;
      if (SameName(TagName(text_.substr(first, at_ - first)), fmt::format("End{}", tag))) {
        at_ = lineStart;
        Add(TokenKind::kEndOfLine, at_);
        return;
      }
    }
    at_ = end;
  }

  /// What stands here in place of a plain character; null when nothing does.
  const Lookalike *FindLookalike() const {
    if (static_cast<unsigned char>(Peek()) < 0x80) return nullptr;
    for (const Lookalike &lookalike : kLookalikes) {
      if (text_.substr(at_).starts_with(lookalike.text)) return &lookalike;
    }
    return nullptr;
  }

  void Name() {
    const std::size_t begin = at_;
    if (const Lookalike *lookalike = FindLookalike()) {
      at_ += lookalike->text.size();
      Complain(begin, at_, fmt::format("this is {}", lookalike->complaint));
      return;
    }
    while (ContinuesName(Peek()) && FindLookalike() == nullptr) ++at_;
    const std::string_view name = text_.substr(begin, at_ - begin);
    if (SameName(name, "Rem") && !AfterDot()) {
      SkipToLineEnd();
      return;
    }
    Token &token = Add(TokenKind::kName, begin);
    token.text = std::string(name);
    token.keyword = FindKeyword(name);
    const auto before = tokens_.size() < 2 ? TokenKind::kEndOfLine : tokens_[tokens_.size() - 2].kind;
    if (token.keyword != Keyword::kNone && before != TokenKind::kDot) token.kind = TokenKind::kKeyword;
  }

  bool AfterDot() const { return !tokens_.empty() && tokens_.back().Is(TokenKind::kDot); }

  void Operator() {
    struct Entry {
      std::string_view text;
      TokenKind kind;
    };
    // Longer operators come first.
    static constexpr Entry kOperators[] = {
        {"<>", TokenKind::kNotEqual},
        {"<=", TokenKind::kLessEqual},
        {">=", TokenKind::kGreaterEqual},
        {"+=", TokenKind::kPlusAssign},
        {"-=", TokenKind::kMinusAssign},
        {"*=", TokenKind::kStarAssign},
        {"/=", TokenKind::kSlashAssign},
        {"+", TokenKind::kPlus},
        {"-", TokenKind::kMinus},
        {"*", TokenKind::kStar},
        {"/", TokenKind::kSlash},
        {"\\", TokenKind::kBackslash},
        {"^", TokenKind::kCaret},
        {"=", TokenKind::kEqual},
        {"<", TokenKind::kLess},
        {">", TokenKind::kGreater},
        {"(", TokenKind::kLeftParenthesis},
        {")", TokenKind::kRightParenthesis},
        {",", TokenKind::kComma},
        {":", TokenKind::kColon},
        {".", TokenKind::kDot},
    };
    const std::size_t begin = at_;
    for (const Entry &entry : kOperators) {
      if (!text_.substr(at_).starts_with(entry.text)) continue;
      at_ += entry.text.size();
      Add(entry.kind, begin);
      return;
    }
    ++at_;
    const unsigned char byte = static_cast<unsigned char>(text_[begin]);
    if (byte < 0x20 || byte == 0x7F) {
      Complain(begin, at_, fmt::format("a control character (code {}) isn't allowed here", byte));
    } else {
      Complain(begin, at_, fmt::format("\"{}\" means nothing here", text_[begin]));
    }
  }

  std::string_view text_;
  std::vector<Diagnostic> &errors_;
  std::size_t at_;
  bool spaceBefore_ = false;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> Tokenize(const SourceText &source, const SourceText::File &file, std::vector<Diagnostic> &errors) {
  const auto [begin, end] = file.span;
  const std::string_view text = source.Slice(file.span);
  if (text.size() > SourceText::kMaxBytes) {
    errors.push_back(
        {{begin, begin + 1},
         fmt::format("the script has {} bytes; at most {} are allowed", text.size(), SourceText::kMaxBytes)});
    return {};
  }
  const auto invalid = utf8::find_invalid(text.begin(), text.end());
  if (invalid != text.end()) {
    const auto at = begin + static_cast<std::uint32_t>(invalid - text.begin());
    errors.push_back({{at, at + 1},
                      fmt::format("the byte &h{:02X} is not UTF-8; save the script in that encoding",
                                  static_cast<unsigned char>(*invalid))});
    return {};
  }
  return Lexer(source.Text().substr(0, end), begin, errors).Run();
}

std::vector<Token> Tokenize(const SourceText &source, Diagnostics &diagnostics) {
  std::vector<Diagnostic> errors;
  std::vector<Token> tokens = Tokenize(source, source.Files().front(), errors);
  for (Diagnostic &error : errors) diagnostics.Report(source, error.span, std::move(error.message));
  return tokens;
}

}  // namespace quillbar::language
