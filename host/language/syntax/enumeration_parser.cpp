// SPDX-License-Identifier: MIT
#include "host/language/syntax/enumeration_parser.h"

namespace quillbar::language {

std::unique_ptr<syntax::Enumeration> ParseEnumeration(Parser &parser) {
  const Token &first = parser.Take();
  auto enumeration = std::make_unique<syntax::Enumeration>();
  parser.Recover([&] {
    const Token &name = parser.ExpectNewName("an enumeration");
    enumeration->name = name.text;
    enumeration->nameSpan = name.span;
    if (parser.Accept(Keyword::kAs)) enumeration->type = ParseTypeName(parser);
    enumeration->span = parser.SpanFrom(first);
    parser.ExpectLineEnd();
  });
  while (!parser.At(Keyword::kEnd) && !parser.At(TokenKind::kEndOfFile)) {
    parser.Recover([&] {
      if (parser.Accept(TokenKind::kEndOfLine)) return;
      const Token &name = parser.ExpectNewName("an enumeration's member");
      syntax::Enumeration::Value &value = enumeration->values.emplace_back();
      value.name = name.text;
      value.span = name.span;
      if (parser.Accept(TokenKind::kEqual)) value.value = ParseExpression(parser);
      parser.ExpectLineEnd();
    });
  }
  ExpectEnd(parser, Keyword::kEnum, first);
  return enumeration;
}

}  // namespace quillbar::language
