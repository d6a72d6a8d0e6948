// SPDX-License-Identifier: MIT
#include "host/language/syntax/lexer.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/language/syntax_dump.h"

namespace quillbar::language {
namespace {

/// The tokens of a text without errors, described, without the final two.
std::string Tokens(const std::string &text) {
  const SourceText source("test", text);
  Diagnostics diagnostics;
  const std::vector<Token> tokens = Tokenize(source, diagnostics);
  for (const Diagnostic &diagnostic : diagnostics.List()) ADD_FAILURE() << Format(source, diagnostic);
  std::string described;
  for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
    const Token &token = tokens[i];
    if (i > 0) described += ' ';
    switch (token.kind) {
      case TokenKind::kEndOfLine:
        described += "|";
        break;
      case TokenKind::kName:
        described += token.text;
        break;
      case TokenKind::kKeyword:
        described += fmt::format("<{}>", Spelling(token.keyword));
        break;
      case TokenKind::kInteger:
        described += fmt::format("{}", token.integer);
        break;
      case TokenKind::kReal:
        described += fmt::format("{}r", token.real);
        break;
      case TokenKind::kString:
        described += fmt::format("'{}'", token.text);
        break;
      case TokenKind::kColor:
        described += fmt::format("&c{:08X}", token.integer);
        break;
      default:
        described += Describe(token);
        break;
    }
  }
  return described;
}

TEST(Lexer, CutsNamesNumbersAndOperators) {
  EXPECT_EQ(Tokens("x=a1+3*4.5"), "x \"=\" a1 \"+\" 3 \"*\" 4.5r");
  EXPECT_EQ(Tokens("a<>b<=c>=d<e>f"), "a \"<>\" b \"<=\" c \">=\" d \"<\" e \">\" f");
  EXPECT_EQ(Tokens("a += 1"), "a \"+=\" 1");
  EXPECT_EQ(Tokens("1e3 1.5E-2 .5 0.25"), "1000r 0.015r 0.5r 0.25r");
}

TEST(Lexer, ReservedWordsIgnoreCaseAndAreNamesAfterADot) {
  EXPECT_EQ(Tokens("if IF If end"), "<If> <If> <If> <End>");
  EXPECT_EQ(Tokens("list.To.end"), "list \".\" To \".\" end");
}

TEST(Lexer, ReadsLiteralsInOtherBases) {
  EXPECT_EQ(Tokens("&hFF &HfF &b1011 &o17"), "255 255 11 15");
  EXPECT_EQ(Tokens("&hFFFFFFFFFFFFFFFF"), "18446744073709551615");
}

TEST(Lexer, ReadsColoursWithTheTransparencyMovedToTheFront) {
  EXPECT_EQ(Tokens("&cFF8000"), "&c00FF8000");
  EXPECT_EQ(Tokens("&cFF800040"), "&c40FF8000");
}

TEST(Lexer, ReadsCharactersByCodePoint) { EXPECT_EQ(Tokens("&u20AC &u41 &u1F600"), "'€' 'A' '😀'"); }

TEST(Lexer, ReadsTextsWithDoubledQuotationMarks) {
  EXPECT_EQ(Tokens(R"("say ""hi""" "" """")"), R"('say "hi"' '' '"')");
  EXPECT_EQ(Tokens("\"' // Rem\""), "'' // Rem'");
}

TEST(Lexer, SkipsThreeKindsOfComments) { EXPECT_EQ(Tokens("a ' b\nc // d\ne Rem f\nremains"), "a | c | e | remains"); }

TEST(Lexer, JoinsContinuedLines) {
  EXPECT_EQ(Tokens("a + _\n  b _ ' with a comment\n c"), "a \"+\" b c");
  EXPECT_EQ(Tokens("_name my_name"), "_name my_name");
}

TEST(Lexer, AcceptsEveryKindOfLineEnd) { EXPECT_EQ(Tokens("a\nb\r\nc\rd"), "a | b | c | d"); }

TEST(Lexer, DropsAByteOrderMark) {
  EXPECT_EQ(Tokens("\xEF\xBB\xBF"
                   "a"),
            "a");
}

TEST(Lexer, NamesMayHoldLettersOfAnyScript) { EXPECT_EQ(Tokens("größe 名前"), "größe 名前"); }

TEST(Lexer, SpansCoverTheTokens) {
  const SourceText source("test", "ä = \"b\" + cd");
  Diagnostics diagnostics;
  const std::vector<Token> tokens = Tokenize(source, diagnostics);
  EXPECT_EQ(source.Slice(tokens[0].span), "ä");
  EXPECT_EQ(source.Slice(tokens[2].span), "\"b\"");
  EXPECT_EQ(source.Slice(tokens[4].span), "cd");
  EXPECT_EQ(source.Locate(tokens[2].span.begin).column, 5u);
}

struct DiagnosticCase {
  const char *text;
  const char *expected;
};

class LexerDiagnostic : public ::testing::TestWithParam<DiagnosticCase> {};

TEST_P(LexerDiagnostic, IsReportedWithItsPlace) {
  const SourceText source("test", GetParam().text);
  Diagnostics diagnostics;
  Tokenize(source, diagnostics);
  ASSERT_EQ(diagnostics.List().size(), 1u);
  const Diagnostic &diagnostic = diagnostics.List().front();
  const Position at = source.Locate(diagnostic.span.begin);
  EXPECT_EQ(fmt::format("{}:{}: {}", at.line, at.column, diagnostic.message), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, LexerDiagnostic,
    ::testing::Values(
        DiagnosticCase{"a = \"bc", "1:5: this text has no closing quotation mark"},
        DiagnosticCase{"a = 1x", "1:5: \"1x\" is neither a number nor a name"},
        DiagnosticCase{"a = &hG1", "1:5: \"&hG1\" is not a number in base 16"},
        DiagnosticCase{"a = &b12", "1:5: \"&b12\" is not a number in base 2"},
        DiagnosticCase{"a = &h", "1:5: \"&h\" is not a number in base 16"},
        DiagnosticCase{"a = &cFFF",
                       "1:5: a colour has six digits (&cRRGGBB) or eight (&cRRGGBBTT, TT the transparency)"},
        DiagnosticCase{"a = &h10000000000000000", "1:5: \"&h10000000000000000\" has more than 64 bits"},
        DiagnosticCase{"a = 18446744073709551616", "1:5: this number is beyond the range of UInt64"},
        DiagnosticCase{"a = 1e999", "1:5: this number is beyond the range of Double"},
        DiagnosticCase{"a = &uD800", "1:5: this is not a Unicode character"},
        DiagnosticCase{"a = b & c",
                       "1:7: \"&\" starts a number (&h, &b, &o), a colour (&c) or a character (&u); texts are joined "
                       "with \"+\""},
        DiagnosticCase{"a = b _ c", "1:7: a line continuation (_) must be the last thing on its line"},
        DiagnosticCase{"a = _", "1:5: the script ends after a line continuation"},
        DiagnosticCase{"a = ?", "1:5: \"?\" means nothing here"},
        DiagnosticCase{"a = \x01", "1:5: a control character (code 1) isn't allowed here"},
        DiagnosticCase{"a = “b”", "1:5: this is a typographic quotation mark; texts are enclosed in plain ones (\")"},
        DiagnosticCase{"a = 1 – 2", "1:7: this is a dash; the minus sign is the plain hyphen (-)"},
        DiagnosticCase{"a = \"\xFF\"", "1:6: the byte &hFF is not UTF-8; save the script in that encoding"}));

TEST(Lexer, ANulInTheTextIsAnError) {
  const SourceText source("test", std::string("a\0b", 3));
  Diagnostics diagnostics;
  Tokenize(source, diagnostics);
  ASSERT_EQ(diagnostics.List().size(), 1u);
  EXPECT_EQ(diagnostics.List()[0].message, "a control character (code 0) isn't allowed here");
}

}  // namespace
}  // namespace quillbar::language
