// SPDX-License-Identifier: MIT
#include "host/language/syntax/tag_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/lexer.h"
#include "host/language/syntax/names.h"

namespace quillbar::language {
namespace {

constexpr std::string_view kBlanks = " \t";

/// Tags that are closed by `#tag EndX`.
constexpr std::string_view kPaired[] = {
    "Class",          "ComputedProperty", "Constant", "DelegateDeclaration", "Enum",   "Event",
    "ExternalMethod", "Getter",           "Hook",     "Interface",           "Method", "Module",
    "Note",           "Property",         "Setter",   "Structure",           "Using",  "ViewBehavior",
    "ViewProperty",
};

/// Tags of what this host has no use for: windows, menus and the like.
constexpr std::string_view kForeign[] = {
    "DesktopContainer", "DesktopToolbar", "DesktopWindow", "IOSContainerControl", "IOSLayout",
    "IOSScreen",        "IOSView",        "Menu",          "MobileContainer",     "MobileScreen",
    "Report",           "Toolbar",        "WebContainer",  "WebDialog",           "WebPage",
    "WebStyle",         "WebToolbar",     "Window",
};

template <class Names>
bool Has(const Names &names, std::string_view name) {
  return std::any_of(std::begin(names), std::end(names), [&](std::string_view one) { return SameName(one, name); });
}

std::string_view Trim(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

/// The value of `key = value` in a tag. A value in quotes, which start with a backslash, ends before the next key.
std::string_view Attribute(std::string_view line, std::string_view key) {
  for (std::size_t comma = line.find(','); comma != std::string_view::npos; comma = line.find(',', comma + 1)) {
    const std::string_view rest = Trim(line.substr(comma + 1));
    const std::size_t equal = rest.find('=');
    if (equal == std::string_view::npos || !SameName(Trim(rest.substr(0, equal)), key)) continue;
    std::string_view value = Trim(rest.substr(equal + 1));
    if (!value.starts_with("\\\"")) return Trim(value.substr(0, value.find(',')));
    value.remove_prefix(2);
    std::size_t end = value.rfind("\", Scope");
    if (end == std::string_view::npos) end = value.rfind('"');
    return value.substr(0, end);
  }
  return {};
}

/// A text whose commas, quotes and line ends are written with backslashes.
std::string Unescape(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char letter = text[++i];
    if (letter == 'n') {
      plain += '\n';
    } else if (letter == 'r') {
      plain += '\r';
    } else if (letter == 't') {
      plain += '\t';
    } else if (letter == 'x' && i + 2 < text.size()) {
      unsigned int byte = 0;
      std::from_chars(text.data() + i + 1, text.data() + i + 3, byte, 16);
      plain += static_cast<char>(byte);
      i += 2;
    } else {
      plain += letter;
    }
  }
  return plain;
}

/// Makes the tokens of a file anew.
class TagReader {
 public:
  explicit TagReader(TokenizedFile &file) : errors_(file.errors), tokens_(std::move(file.tokens)) {}

  std::vector<Token> Run() {
    while (at_ < tokens_.size()) {
      const Token &token = tokens_[at_];
      const std::string_view name = token.Is(TokenKind::kDirective) ? TagName(token.text) : std::string_view();
      if (name.empty()) {
        made_.push_back(token);
        ++at_;
      } else {
        Enter(token, name);
      }
    }
    for (const Open &open : open_) {
      if (Has(kPaired, open.name)) ComplainUnclosed(open);
    }
    return std::move(made_);
  }

 private:
  struct Open {
    std::string_view name;
    const Token *tag;
  };

  void Complain(Span span, std::string message) { errors_.push_back({span, std::move(message)}); }
  void ComplainUnclosed(const Open &open) {
    Complain(open.tag->span, fmt::format("this \"#tag {0}\" has no \"#tag End{0}\"", open.name));
  }

  /// The line of a tag is replaced by what it means.
  void Enter(const Token &tag, std::string_view name) {
    ++at_;
    const std::size_t made = made_.size();
    if (name.size() > 3 && SameName(name.substr(0, 3), "End")) {
      Close(tag, name.substr(3));
    } else {
      open_.push_back({name, &tag});
      OpenTag(tag, name);
    }
    // Without a declaration the line is empty.
    if (made_.size() == made && at_ < tokens_.size() && tokens_[at_].Is(TokenKind::kEndOfLine)) ++at_;
  }

  void Close(const Token &tag, std::string_view name) {
    const auto found =
        std::find_if(open_.rbegin(), open_.rend(), [&](const Open &open) { return SameName(open.name, name); });
    if (found == open_.rend()) {
      Complain(tag.span, fmt::format("\"#tag End{}\" closes nothing here", name));
      return;
    }
    for (auto inner = open_.rbegin(); inner != found; ++inner) {
      if (Has(kPaired, inner->name)) ComplainUnclosed(*inner);
    }
    open_.erase(std::prev(found.base()), open_.end());
    if (SameName(name, "Enum")) {
      AddKeyword(tag, Keyword::kEnd);
      AddKeyword(tag, Keyword::kEnum);
    }
  }

  void OpenTag(const Token &tag, std::string_view name) {
    if (Has(kForeign, name)) {
      Complain(tag.span, NotPartOfThisHost(fmt::format("#tag {}", name)));
      open_.clear();
      at_ = tokens_.size() - 1;
    } else if (SameName(name, "Constant")) {
      AddConstant(tag);
    } else if (SameName(name, "Enum")) {
      AddEnumeration(tag);
    } else if (SameName(name, "Event")) {
      MarkHandler(tag);
    } else if (SameName(name, "ComputedProperty")) {
      AddComputedProperty(tag);
    } else if (SameName(name, "Structure") || SameName(name, "ExternalMethod")) {
      Complain(tag.span, NotPartOfThisHost(fmt::format("#tag {}", name)));
      SkipTo(name);
    }
  }

  Token &Add(const Token &tag, TokenKind kind) {
    Token &token = made_.emplace_back();
    token.kind = kind;
    token.span = tag.span;
    return token;
  }
  void AddName(const Token &tag, std::string_view name) { Add(tag, TokenKind::kName).text = std::string(name); }
  void AddKeyword(const Token &tag, Keyword keyword) {
    Token &token = Add(tag, TokenKind::kKeyword);
    token.keyword = keyword;
    token.text = std::string(Spelling(keyword));
  }
  void AddAccess(const Token &tag, std::string_view access) {
    if (SameName(access, "Private") || SameName(access, "Protected")) AddName(tag, access);
  }

  /// The name that a tag gives, or an error.
  std::string_view NameIn(const Token &tag) {
    const std::string_view name = Attribute(tag.text, "Name");
    if (name.empty()) Complain(tag.span, "this tag has no \"Name = …\"");
    return name;
  }

  void AddConstant(const Token &tag) {
    const std::string_view name = NameIn(tag);
    if (name.empty()) return;
    const std::string_view type = Attribute(tag.text, "Type");
    const std::string value = Unescape(Attribute(tag.text, "Default"));
    AddAccess(tag, Attribute(tag.text, "Scope"));
    AddKeyword(tag, Keyword::kConst);
    AddName(tag, name);
    AddKeyword(tag, Keyword::kAs);
    const bool isText = type.empty() || SameName(type, "String") || SameName(type, "Text");
    AddName(tag, isText ? "String" : SameName(type, "Number") ? "Double" : type);
    Add(tag, TokenKind::kEqual);
    if (isText) {
      Add(tag, TokenKind::kString).text = value;
      return;
    }
    // A number is written as in a script.
    std::vector<Diagnostic> errors;
    const SourceText text({}, value.empty() ? std::string(SameName(type, "Boolean") ? "False" : "0") : value);
    std::vector<Token> tokens = Tokenize(text, text.Files().front(), errors);
    if (!errors.empty()) Complain(tag.span, errors.front().message);
    for (Token &token : tokens) {
      if (token.Is(TokenKind::kEndOfLine) || token.Is(TokenKind::kEndOfFile)) continue;
      token.span = tag.span;
      made_.push_back(std::move(token));
    }
  }

  void AddEnumeration(const Token &tag) {
    const std::string_view name = NameIn(tag);
    const std::string_view flags = Attribute(tag.text, "Flags");
    AddAccess(tag, SameName(flags, "&h21") ? "Private" : SameName(flags, "&h1") ? "Protected" : "");
    AddKeyword(tag, Keyword::kEnum);
    AddName(tag, name);
    const std::string_view type = Attribute(tag.text, "Type");
    if (type.empty()) return;
    AddKeyword(tag, Keyword::kAs);
    AddName(tag, type);
  }

  bool SkipEmptyLines() {
    while (at_ < tokens_.size() && tokens_[at_].Is(TokenKind::kEndOfLine)) ++at_;
    return at_ < tokens_.size();
  }

  /// The method inside the tag handles an event.
  void MarkHandler(const Token &tag) {
    if (SkipEmptyLines() && !tokens_[at_].Is(TokenKind::kDirective)) AddName(tag, "Event");
  }

  void SkipTo(std::string_view name) {
    while (at_ + 1 < tokens_.size()) {
      const Token &token = tokens_[at_];
      if (token.Is(TokenKind::kDirective) && SameName(TagName(token.text), fmt::format("End{}", name))) return;
      ++at_;
    }
  }

  /// The accessors come before the declaration; a script has them in the other order.
  void AddComputedProperty(const Token &tag) {
    std::vector<Token> accessors;
    std::vector<Token> declaration;
    int depth = 0;
    std::size_t at = at_;
    for (; at + 1 < tokens_.size(); ++at) {
      const Token &token = tokens_[at];
      const std::string_view name = token.Is(TokenKind::kDirective) ? TagName(token.text) : std::string_view();
      if (SameName(name, "EndComputedProperty")) break;
      const bool isAccessor = SameName(name, "Getter") || SameName(name, "Setter");
      const bool endsAccessor = SameName(name, "EndGetter") || SameName(name, "EndSetter");
      depth += isAccessor ? 1 : endsAccessor ? -1 : 0;
      if (!name.empty()) continue;
      (depth > 0 ? accessors : declaration).push_back(token);
    }
    const auto isWord = [](const Token &token) { return !token.Is(TokenKind::kEndOfLine); };
    declaration.erase(declaration.begin(), std::ranges::find_if(declaration, isWord));
    if (declaration.empty()) {
      Complain(tag.span, "this tag has no declaration: Name As Type");
      return;
    }
    std::ranges::move(declaration, std::back_inserter(made_));
    std::ranges::move(accessors, std::back_inserter(made_));
    AddKeyword(tag, Keyword::kEnd);
    AddName(tag, "Property");
    Add(tag, TokenKind::kEndOfLine);
    at_ = at;
  }

  std::vector<Diagnostic> &errors_;
  std::vector<Token> tokens_;
  std::vector<Token> made_;
  std::vector<Open> open_;
  std::size_t at_ = 0;
};

}  // namespace

std::string_view TagName(std::string_view line) {
  constexpr std::string_view kTag = "#tag";
  if (line.size() <= kTag.size() || !SameName(line.substr(0, kTag.size()), kTag)) return {};
  const std::string_view name = Trim(line.substr(kTag.size()));
  return name.substr(0, name.find_first_of(", \t"));
}

bool IsTextTag(std::string_view name) { return SameName(name, "Note") || SameName(name, "ViewBehavior"); }

void ReadTags(TokenizedFile &file) {
  const auto isTag = [](const Token &token) { return token.Is(TokenKind::kDirective) && !TagName(token.text).empty(); };
  if (std::ranges::none_of(file.tokens, isTag)) return;
  file.tokens = TagReader(file).Run();
}

}  // namespace quillbar::language
