// SPDX-License-Identifier: MIT
#include "host/language/syntax/diagnostics.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace quillbar::language {

void Diagnostics::Report(const SourceText &source, Span span, std::string message) {
  if (list_.size() >= kMaxReported) return;
  const std::size_t line = source.Locate(span.begin).line;
  const auto startsAfter = [&](const Diagnostic &other) { return other.span.begin > span.begin; };
  const bool known = std::any_of(list_.begin(), list_.end(),
                                 [&](const Diagnostic &other) { return source.Locate(other.span.begin).line == line; });
  if (known) return;
  list_.insert(std::find_if(list_.begin(), list_.end(), startsAfter), Diagnostic{span, std::move(message)});
}

std::string Excerpt(const SourceText &source, Span span) {
  const Position start = source.Locate(span.begin);
  const std::string_view line = source.Line(start.line);

  // The blank part repeats the line's tabs, so that the carets are aligned whatever a tab's width is.
  std::string indent;
  std::size_t at = 0;
  for (std::size_t column = 1; column < start.column && at < line.size(); ++column) {
    indent += line[at] == '\t' ? '\t' : ' ';
    do ++at;
    while (at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0) == 0x80);
  }
  const std::size_t length = std::min<std::size_t>(span.end - span.begin, line.size() - at);
  const std::size_t carets = std::max<std::size_t>(1, CountCodePoints(line.substr(at, length)));
  return fmt::format("{:5} | {}\n      | {}{}\n", start.line, line, indent, std::string(carets, '^'));
}

std::string Format(const SourceText &source, const Diagnostic &diagnostic) {
  const Position start = source.Locate(diagnostic.span.begin);
  return fmt::format("{}:{}:{}: error: {}\n{}", source.Name(), start.line, start.column, diagnostic.message,
                     Excerpt(source, diagnostic.span));
}

}  // namespace quillbar::language
