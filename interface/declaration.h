// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// Reads the declarations that plugins register, such as
/// "MeasureText(text as String, width as Single, ByRef outWidth as Single) as Integer".
///
/// One reader serves both sides: a plugin runs it in the compiler, to check each declaration against the C++ function
/// beside it, and a host runs it when the plugin registers. Keywords ignore case, and blanks may be anywhere between
/// words. All views point into the text that was given; keep it alive.
namespace quillbar {

/// One parameter of a method or event.
struct ParameterDeclaration {
  std::string_view name;
  std::string_view type;          // as written, for example "Page.PageSizeEnum"
  std::string_view defaultValue;  // the text after "=", empty when there is none
  bool byRef = false;
  bool isArray = false;   // written as `name() as Type`
  bool optional = false;  // "Optional" is written before it, or it has a default value
  bool isList = false;    // "ParamArray" is written before an array: any number of arguments
};

/// A method or event. `resultType` is empty when nothing is returned.
struct Declaration {
  static constexpr std::size_t kMaxParameters = 24;

  std::string_view name;
  std::array<ParameterDeclaration, kMaxParameters> parameters{};
  std::size_t parameterCount = 0;
  std::string_view resultType;
  bool resultIsArray = false;

  constexpr const ParameterDeclaration *begin() const { return parameters.data(); }
  constexpr const ParameterDeclaration *end() const { return parameters.data() + parameterCount; }
};

/// The reader's error and its position: `offset` counts bytes from the start of the text.
struct DeclarationError {
  const char *message = nullptr;
  std::size_t offset = 0;
};

/// A declaration, or the reason why the text isn't one.
struct DeclarationResult {
  Declaration declaration;
  DeclarationError error;

  constexpr bool ok() const { return error.message == nullptr; }
};

/// The lower-case form of A to Z; every other character unchanged.
constexpr char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Compares names as the host language does: letter case does not count.
constexpr bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
  }
  return true;
}

namespace detail {

class DeclarationReader {
 public:
  explicit constexpr DeclarationReader(std::string_view text) : text_(text) {}

  constexpr DeclarationResult Read() {
    DeclarationResult result;
    Declaration &declaration = result.declaration;
    declaration.name = Identifier("a name is expected");
    Expect('(', "\"(\" is expected after the name");
    if (!Accept(')')) {
      do {
        if (declaration.parameterCount == Declaration::kMaxParameters) {
          Fail("too many parameters");
          break;
        }
        declaration.parameters[declaration.parameterCount++] = Parameter();
      } while (!failed() && Accept(','));
      Expect(')', "\",\" or \")\" is expected");
    }
    if (!failed() && AcceptWord("as")) declaration.resultType = ResultType(declaration.resultIsArray);
    SkipBlanks();
    if (!failed() && position_ != text_.size()) Fail("nothing more is expected");
    result.error = error_;
    return result;
  }

 private:
  constexpr bool failed() const { return error_.message != nullptr; }

  constexpr void Fail(const char *message) {
    if (!failed()) error_ = {message, position_};
  }

  constexpr void SkipBlanks() {
    while (position_ < text_.size() && (text_[position_] == ' ' || text_[position_] == '\t')) ++position_;
  }

  constexpr bool Accept(char c) {
    SkipBlanks();
    if (position_ >= text_.size() || text_[position_] != c) return false;
    ++position_;
    return true;
  }

  constexpr void Expect(char c, const char *message) {
    if (!failed() && !Accept(c)) Fail(message);
  }

  static constexpr bool IsWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  }

  constexpr bool AcceptWord(std::string_view word) {
    SkipBlanks();
    std::size_t end = position_;
    while (end < text_.size() && IsWordCharacter(text_[end])) ++end;
    if (!SameName(text_.substr(position_, end - position_), word)) return false;
    position_ = end;
    return true;
  }

  /// A name, with dots when `qualified`.
  constexpr std::string_view Identifier(const char *message, bool qualified = false) {
    SkipBlanks();
    const std::size_t start = position_;
    while (position_ < text_.size() && (IsWordCharacter(text_[position_]) || (qualified && text_[position_] == '.'))) {
      ++position_;
    }
    const std::string_view name = text_.substr(start, position_ - start);
    const bool startsWithDigit = !name.empty() && name.front() >= '0' && name.front() <= '9';
    if (name.empty() || startsWithDigit || name.front() == '.' || name.back() == '.') {
      position_ = start;
      Fail(message);
    }
    return name;
  }

  constexpr ParameterDeclaration Parameter() {
    ParameterDeclaration parameter;
    parameter.optional = AcceptWord("optional");
    parameter.isList = AcceptWord("paramarray");
    parameter.byRef = AcceptWord("byref");
    if (!parameter.byRef) AcceptWord("byval");
    parameter.name = Identifier("the name of a parameter is expected");
    if (!failed() && Accept('(')) {
      parameter.isArray = true;
      Expect(')', "\")\" is expected: an array is written as name()");
    }
    if (!failed() && !AcceptWord("as")) Fail("\"as\" is expected after the name of a parameter");
    if (!failed()) parameter.type = Identifier("the type of the parameter is expected", true);
    if (!failed() && Accept('=')) {
      parameter.optional = true;
      parameter.defaultValue = DefaultValue();
    }
    return parameter;
  }

  constexpr std::string_view DefaultValue() {
    SkipBlanks();
    const std::size_t start = position_;
    bool quoted = false;
    while (position_ < text_.size()) {
      const char c = text_[position_];
      if (c == '"') quoted = !quoted;
      if (!quoted && (c == ',' || c == ')')) break;
      ++position_;
    }
    std::string_view value = text_.substr(start, position_ - start);
    while (!value.empty() && value.back() == ' ') value.remove_suffix(1);
    if (value.empty()) Fail("a default value is expected");
    return value;
  }

  constexpr std::string_view ResultType(bool &isArray) {
    const std::string_view type = Identifier("the type of the result is expected", true);
    if (!failed() && Accept('(')) {
      isArray = true;
      Expect(')', "\")\" is expected: an array is written as Type()");
    }
    return type;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  DeclarationError error_;
};

}  // namespace detail

/// Reads the declaration of a method or an event.
constexpr DeclarationResult ReadDeclaration(std::string_view text) { return detail::DeclarationReader(text).Read(); }

/// A member of a registered enumeration, written as "NAME = value".
struct EnumerationMember {
  std::string_view name;
  std::int64_t value = 0;
};

/// Reads "NAME = value"; the value is decimal, negative, or hexadecimal after "&h". Nothing when the text is something
/// else.
constexpr std::optional<EnumerationMember> ReadEnumerationMember(std::string_view text) {
  const auto trim = [](std::string_view part) {
    while (!part.empty() && part.front() == ' ') part.remove_prefix(1);
    while (!part.empty() && part.back() == ' ') part.remove_suffix(1);
    return part;
  };
  // Not text.find: with the sanitizers' checks of null pointers gcc 12 no longer takes it for a constant.
  std::size_t sign = 0;
  while (sign < text.size() && text[sign] != '=') ++sign;
  if (sign == text.size()) return std::nullopt;
  const std::string_view name = trim(text.substr(0, sign));
  std::string_view digits = trim(text.substr(sign + 1));
  if (name.empty()) return std::nullopt;

  const bool negative = digits.starts_with('-');
  if (negative) digits.remove_prefix(1);
  const bool hexadecimal = digits.size() > 2 && digits[0] == '&' && AsciiLower(digits[1]) == 'h';
  if (hexadecimal) digits.remove_prefix(2);
  const int base = hexadecimal ? 16 : 10;
  if (digits.empty() || digits.size() > 15) return std::nullopt;

  std::int64_t value = 0;
  for (const char c : digits) {
    const char lower = AsciiLower(c);
    int digit = base;
    if (lower >= '0' && lower <= '9') digit = lower - '0';
    if (lower >= 'a' && lower <= 'f') digit = lower - 'a' + 10;
    if (digit >= base) return std::nullopt;
    value = value * base + digit;
  }
  return EnumerationMember{name, negative ? -value : value};
}

}  // namespace quillbar
