// SPDX-License-Identifier: MIT
#include "host/language/syntax/class_parser.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/names.h"
#include "host/language/syntax/procedure_parser.h"

namespace quillbar::language {
namespace {

/// Words that have a meaning only here are names elsewhere.
bool AtWord(const Parser &parser, std::string_view word) {
  return parser.At(TokenKind::kName) && SameName(parser.Current().text, word);
}

bool AcceptWord(Parser &parser, std::string_view word) {
  if (!AtWord(parser, word)) return false;
  parser.Take();
  return true;
}

syntax::Modifiers ParseModifiers(Parser &parser) {
  syntax::Modifiers modifiers;
  for (;;) {
    // A property may have the name of a modifier: `Shared As Boolean`.
    if (parser.Ahead().Is(Keyword::kAs)) return modifiers;
    if (AcceptWord(parser, "Private")) {
      modifiers.access = syntax::Access::kPrivate;
    } else if (AcceptWord(parser, "Protected")) {
      modifiers.access = syntax::Access::kProtected;
    } else if (AcceptWord(parser, "Shared")) {
      modifiers.isShared = true;
    } else if (!AcceptWord(parser, "Public")) {
      return modifiers;
    }
  }
}

/// Reads `Get … End Get` or `Set … End Set`.
std::unique_ptr<syntax::Procedure> ParseAccessor(Parser &parser, const syntax::Class::Property &property) {
  auto procedure = std::make_unique<syntax::Procedure>();
  const Token &first = parser.Take();
  procedure->name = property.variable.name;
  procedure->span = procedure->nameSpan = first.span;
  if (SameName(first.text, "Set")) {
    syntax::Parameter &value = procedure->parameters.emplace_back();
    value.name = "value";
    value.span = first.span;
    value.type = property.type;
    value.type.isArray = property.variable.isArray;
  } else {
    procedure->result = property.type;
    procedure->result->isArray = property.variable.isArray;
  }
  parser.ExpectLineEnd();
  procedure->body = ParseBlock(parser);
  procedure->endSpan = parser.Current().span;
  if (!parser.At(Keyword::kEnd)) FailUnclosed(parser, first, fmt::format("End {}", first.text));
  parser.Take();
  if (!parser.AtLineEnd() && !AcceptWord(parser, first.text)) parser.FailHere(fmt::format("\"End {}\"", first.text));
  parser.ExpectLineEnd();
  return procedure;
}

void SkipEmptyLines(Parser &parser) {
  while (parser.Accept(TokenKind::kEndOfLine)) {
  }
}

bool AtAccessor(const Parser &parser) {
  return (AtWord(parser, "Get") || AtWord(parser, "Set")) && parser.Ahead().Is(TokenKind::kEndOfLine);
}

void ParseProperty(Parser &parser, syntax::Class::Property &property) {
  const Token &first = parser.Current();
  const Token &name = parser.ExpectNewName("a property");
  property.variable.name = name.text;
  property.variable.span = name.span;
  if (parser.Accept(TokenKind::kLeftParenthesis)) {
    property.variable.isArray = true;
    if (!parser.At(TokenKind::kRightParenthesis)) property.variable.upperBound = ParseExpression(parser);
    parser.Expect(TokenKind::kRightParenthesis, "\")\"");
  }
  if (!parser.At(Keyword::kAs)) parser.FailHere("\"As\" and a type (Property name As Type)");
  parser.Take();
  const Token &made = parser.Current();
  const bool isNew = parser.Accept(Keyword::kNew);
  property.type = ParseTypeName(parser);
  if (isNew) {
    std::vector<syntax::ExpressionPointer> arguments = ParseOptionalArguments(parser);
    property.initial = std::make_unique<syntax::New>(parser.SpanFrom(made), property.type, std::move(arguments));
  } else if (parser.Accept(TokenKind::kEqual)) {
    property.initial = ParseExpression(parser);
  }
  parser.ExpectLineEnd();

  const std::size_t mark = parser.Mark();
  SkipEmptyLines(parser);
  if (!AtAccessor(parser)) {
    parser.ReturnTo(mark);
    return;
  }
  while (AtAccessor(parser)) {
    const bool isGetter = AtWord(parser, "Get");
    std::unique_ptr<syntax::Procedure> &accessor = isGetter ? property.getter : property.setter;
    const Span span = parser.Current().span;
    if (accessor) parser.Report(span, "the property has this already");
    accessor = ParseAccessor(parser, property);
    SkipEmptyLines(parser);
  }
  if (!parser.Accept(Keyword::kEnd)) FailUnclosed(parser, first, "End Property");
  if (!parser.AtLineEnd() && !AcceptWord(parser, "Property")) parser.FailHere("\"End Property\"");
  parser.ExpectLineEnd();
}

void ParseMember(Parser &parser, syntax::Class &declared) {
  if (parser.Accept(TokenKind::kEndOfLine)) return;
  if (parser.At(TokenKind::kDirective)) return ParseDirective(parser);
  const syntax::Modifiers modifiers = ParseModifiers(parser);
  if (parser.At(Keyword::kSub) || parser.At(Keyword::kFunction)) {
    declared.methods.push_back({modifiers, ParseProcedure(parser)});
  } else if (parser.At(Keyword::kConst)) {
    declared.constants.push_back({modifiers, ParseConstant(parser)});
    parser.ExpectLineEnd();
  } else if (parser.At(Keyword::kDim) || parser.At(Keyword::kVar) || parser.At(TokenKind::kName)) {
    const bool isNamed = parser.Ahead().Is(Keyword::kAs) || parser.Ahead().Is(TokenKind::kLeftParenthesis);
    if (!isNamed && !AtWord(parser, "Property") && parser.At(TokenKind::kName)) {
      parser.Fail(parser.Current().span, NotPartOfThisHost(parser.Current().text));
    }
    if (!isNamed) parser.Take();
    syntax::Class::Property property;
    property.modifiers = modifiers;
    ParseProperty(parser, property);
    declared.properties.push_back(std::move(property));
  } else {
    parser.FailHere("a member of the class: a property, a method or a constant");
  }
}

}  // namespace

std::unique_ptr<syntax::Class> ParseClass(Parser &parser) {
  const Token &first = parser.Take();
  auto declared = std::make_unique<syntax::Class>();
  parser.Recover([&] {
    const Token &name = parser.ExpectNewName("a class");
    declared->name = name.text;
    declared->nameSpan = name.span;
    declared->span = parser.SpanFrom(first);
    // `Inherits` may follow on the same line or start the next one.
    if (parser.AtLineEnd()) SkipEmptyLines(parser);
    if (AcceptWord(parser, "Inherits")) {
      declared->superclass = ParseTypeName(parser);
      parser.ExpectLineEnd();
    }
  });
  while (!parser.At(Keyword::kEnd) && !parser.At(TokenKind::kEndOfFile)) {
    parser.Recover([&] { ParseMember(parser, *declared); });
  }
  ExpectEnd(parser, Keyword::kClass, first);
  return declared;
}

}  // namespace quillbar::language
