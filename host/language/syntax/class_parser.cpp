// SPDX-License-Identifier: MIT
#include "host/language/syntax/class_parser.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/language/syntax/enumeration_parser.h"
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

/// `Attributes( Hidden )` is for the environment alone.
void SkipAttributes(Parser &parser) {
  parser.Take();
  for (int depth = 0; !parser.AtLineEnd();) {
    const Token &token = parser.Take();
    depth += token.Is(TokenKind::kLeftParenthesis) ? 1 : token.Is(TokenKind::kRightParenthesis) ? -1 : 0;
    if (depth == 0) return;
  }
}

/// `Event Name(…)` declares an event; before a method the word says that it handles one.
bool IsEventDeclaration(const Parser &parser) {
  constexpr std::string_view kModifiers[] = {"Private", "Protected", "Public", "Attributes"};
  const Token &next = parser.Ahead();
  if (!next.Is(TokenKind::kName)) return false;
  const auto isName = [&](std::string_view word) { return SameName(word, next.text); };
  return parser.Ahead(2).Is(TokenKind::kLeftParenthesis) || std::ranges::none_of(kModifiers, isName);
}

syntax::Modifiers ParseModifiers(Parser &parser) {
  syntax::Modifiers modifiers;
  for (;;) {
    // A property may have the name of a modifier: `Shared As Boolean`.
    if (parser.Ahead().Is(Keyword::kAs)) return modifiers;
    if (AtWord(parser, "Attributes") && parser.Ahead().Is(TokenKind::kLeftParenthesis)) {
      SkipAttributes(parser);
    } else if (AtWord(parser, "Event") &&
               (parser.Ahead().Is(Keyword::kSub) || parser.Ahead().Is(Keyword::kFunction) ||
                parser.Ahead().Is(TokenKind::kName)) &&
               !IsEventDeclaration(parser)) {
      parser.Take();
      modifiers.isHandler = true;
    } else if (AcceptWord(parser, "Private")) {
      modifiers.access = syntax::Access::kPrivate;
    } else if (AcceptWord(parser, "Protected")) {
      modifiers.access = syntax::Access::kProtected;
    } else if (AcceptWord(parser, "Shared")) {
      modifiers.isShared = true;
    } else if (!AcceptWord(parser, "Public") && !AcceptWord(parser, "Global")) {
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
    value.type.rank = property.variable.rank;
  } else {
    procedure->result = property.type;
    procedure->result->rank = property.variable.rank;
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
  property.variable.rank = ParseDimensions(parser, &property.variable.upperBounds);
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

std::string_view NameOfKind(syntax::ClassKind kind) {
  switch (kind) {
    case syntax::ClassKind::kInterface:
      return "interface";
    case syntax::ClassKind::kModule:
      return "module";
    default:
      return "class";
  }
}

void ParseMethod(Parser &parser, const syntax::Modifiers &modifiers, syntax::Class &declared) {
  const bool hasBody = declared.kind != syntax::ClassKind::kInterface;
  declared.methods.push_back({modifiers, hasBody ? ParseProcedure(parser) : ParseProcedureHead(parser)});
}

/// Whether `Delegate Sub` or `Delegate Function` starts here.
bool AtDelegate(const Parser &parser) {
  return AtWord(parser, "Delegate") && (parser.Ahead().Is(Keyword::kSub) || parser.Ahead().Is(Keyword::kFunction));
}

void ParseDelegate(Parser &parser, const syntax::Modifiers &modifiers, syntax::Script &script,
                   const syntax::Class *container) {
  parser.Take();
  auto delegate = std::make_unique<syntax::Delegate>();
  delegate->access = modifiers.access;
  delegate->container = container;
  delegate->head = ParseProcedureHead(parser);
  script.delegates.push_back(std::move(delegate));
}

void ParseField(Parser &parser, const syntax::Modifiers &modifiers, syntax::Class &declared) {
  const bool isNamed = parser.Ahead().Is(Keyword::kAs) || parser.Ahead().Is(TokenKind::kLeftParenthesis);
  if (!isNamed && !AtWord(parser, "Property") && parser.At(TokenKind::kName)) {
    parser.Fail(parser.Current().span, NotPartOfThisHost(parser.Current().text));
  }
  if (!isNamed) parser.Take();
  syntax::Class::Property property;
  property.modifiers = modifiers;
  ParseProperty(parser, property);
  declared.properties.push_back(std::move(property));
}

void ParseMember(Parser &parser, syntax::Class &declared, syntax::Script &script) {
  if (parser.Accept(TokenKind::kEndOfLine)) return;
  if (parser.At(TokenKind::kDirective)) return ParseDirective(parser);
  if (AtClass(parser)) {
    if (declared.kind != syntax::ClassKind::kModule) {
      parser.Fail(parser.Current().span,
                  fmt::format("a {} contains no other; declare it beside it", NameOfKind(declared.kind)));
    }
    return ParseClass(parser, script, &declared);
  }
  if (AcceptUsing(parser, script)) return;
  const syntax::Modifiers modifiers = ParseModifiers(parser);
  const bool isMethod = parser.At(Keyword::kSub) || parser.At(Keyword::kFunction);
  if (declared.kind == syntax::ClassKind::kInterface && !isMethod) {
    parser.FailHere("\"Sub\" or \"Function\": an interface has methods alone");
  }
  if (isMethod) {
    ParseMethod(parser, modifiers, declared);
  } else if (AtDelegate(parser)) {
    ParseDelegate(parser, modifiers, script, &declared);
  } else if (AtWord(parser, "Event") && parser.Ahead().Is(TokenKind::kName)) {
    if (declared.kind == syntax::ClassKind::kModule) parser.Fail(parser.Current().span, "a module raises no events");
    declared.events.push_back(ParseProcedureHead(parser));
  } else if (parser.At(Keyword::kConst)) {
    declared.constants.push_back({modifiers, ParseConstant(parser)});
    parser.ExpectLineEnd();
  } else if (parser.At(Keyword::kEnum)) {
    declared.enumerations.push_back(ParseEnumeration(parser));
    declared.enumerations.back()->access = modifiers.access;
  } else if (parser.At(Keyword::kDim) || parser.At(Keyword::kVar) || parser.At(TokenKind::kName)) {
    ParseField(parser, modifiers, declared);
  } else {
    parser.FailHere(fmt::format("a member of the {}: a property, a method, a constant or an enumeration",
                                NameOfKind(declared.kind)));
  }
}

/// Reads `Inherits Class` and `Implements Interface, Interface`, which may follow on the same line or start the next
/// ones.
void ParseParents(Parser &parser, syntax::Class &declared) {
  const bool isClass = declared.kind == syntax::ClassKind::kClass;
  for (;;) {
    const std::size_t mark = parser.Mark();
    if (parser.AtLineEnd()) SkipEmptyLines(parser);
    if (isClass && AcceptWord(parser, "Inherits")) {
      if (declared.superclass) parser.Fail(parser.Last().span, "a class inherits from one other");
      declared.superclass = ParseTypeName(parser);
    } else if (declared.kind != syntax::ClassKind::kModule &&
               (AcceptWord(parser, "Implements") || (!isClass && AcceptWord(parser, "Inherits")))) {
      do {
        declared.interfaces.push_back(ParseTypeName(parser));
      } while (parser.Accept(TokenKind::kComma));
    } else {
      parser.ReturnTo(mark);
      return parser.ExpectLineEnd();
    }
  }
}

}  // namespace

bool AtClass(const Parser &parser) {
  const auto isClass = [](const Token &token) {
    return token.Is(Keyword::kClass) || token.Is(Keyword::kInterface) || token.Is(Keyword::kModule);
  };
  if (isClass(parser.Current())) return true;
  const bool isModified =
      AtWord(parser, "Private") || AtWord(parser, "Protected") || AtWord(parser, "Public") || AtWord(parser, "Global");
  return isModified && isClass(parser.Ahead());
}

void ParseClass(Parser &parser, syntax::Script &script, const syntax::Class *container) {
  // Modules may be inside modules.
  const Parser::Nested nested(parser);
  const syntax::Modifiers modifiers = ParseModifiers(parser);
  const Token &first = parser.Take();
  syntax::Class &declared = *script.classes.emplace_back(std::make_unique<syntax::Class>());
  declared.kind = first.Is(Keyword::kInterface) ? syntax::ClassKind::kInterface
                  : first.Is(Keyword::kModule)  ? syntax::ClassKind::kModule
                                                : syntax::ClassKind::kClass;
  declared.modifiers = modifiers;
  declared.container = container;
  parser.Recover([&] {
    const Token &name = parser.ExpectNewName(
        fmt::format("{} {}", declared.kind == syntax::ClassKind::kInterface ? "an" : "a", NameOfKind(declared.kind)));
    declared.name = name.text;
    declared.nameSpan = name.span;
    declared.span = parser.SpanFrom(first);
    ParseParents(parser, declared);
  });
  while (!parser.At(Keyword::kEnd) && !parser.At(TokenKind::kEndOfFile)) {
    parser.Recover([&] { ParseMember(parser, declared, script); });
  }
  ExpectEnd(parser, first.keyword, first);
}

bool AcceptDelegate(Parser &parser, syntax::Script &script) {
  if (!AtDelegate(parser)) return false;
  ParseDelegate(parser, {}, script, nullptr);
  return true;
}

bool AcceptUsing(Parser &parser, syntax::Script &script) {
  if (!AtWord(parser, "Using") || !parser.Ahead().Is(TokenKind::kName)) return false;
  const Token &first = parser.Take();
  syntax::TypeName module = ParseTypeName(parser);
  script.usings.push_back(std::make_unique<syntax::Using>(parser.SpanFrom(first), std::move(module)));
  parser.ExpectLineEnd();
  return true;
}

}  // namespace quillbar::language
