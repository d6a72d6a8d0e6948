// SPDX-License-Identifier: MIT
#include "host/language/syntax/diagnostics.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/language/syntax/visible_text.h"

namespace quillbar::language {
namespace {

constexpr std::string_view kEllipsis = "…";
constexpr std::size_t kTabStop = 8;  // of terminals; an excerpt's line starts at one

/// Where the character before `at` starts.
std::size_t Before(std::string_view line, std::size_t at) {
  constexpr std::size_t kMostContinuationBytes = 3;
  for (std::size_t back = 1; back <= std::min(at, kMostContinuationBytes + 1); ++back) {
    const std::size_t start = at - back;
    if ((static_cast<unsigned char>(line[start]) & 0xC0) == 0x80) continue;
    if (FirstVisible(line.substr(start)).bytes == back) return start;
    break;
  }
  return at - 1;
}

/// A part of a line, in bytes.
struct Window {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t columns = 0;
};

/// Extends the window to the right, and to the left, by whole characters while it has at most so many columns.
void ExtendRight(std::string_view line, std::size_t columns, Window &window) {
  while (window.end < line.size()) {
    const VisibleCharacter next = FirstVisible(line.substr(window.end));
    if (window.columns + next.columns > columns) return;
    window.columns += next.columns;
    window.end += next.bytes;
  }
}
void ExtendLeft(std::string_view line, std::size_t columns, Window &window) {
  while (window.begin > 0) {
    const std::size_t start = Before(line, window.begin);
    const VisibleCharacter next = FirstVisible(line.substr(start));
    if (window.columns + next.columns > columns) return;
    window.columns += next.columns;
    window.begin = start;
  }
}

/// Whether the line can be shown as it is: a tab reaches to the next stop.
bool Fits(std::string_view line) {
  std::size_t columns = 0;
  while (!line.empty() && columns <= kExcerptColumns) {
    const VisibleCharacter next = FirstVisible(line);
    columns += line.front() == '\t' ? kTabStop - columns % kTabStop : next.columns;
    line.remove_prefix(next.bytes);
  }
  return columns <= kExcerptColumns;
}

}  // namespace

void Diagnostics::Report(const SourceText &source, Span span, std::string message) {
  const std::uint32_t line = source.LineStart(span.begin);
  const auto startsAfter = [&](const Diagnostic &other) { return other.span.begin > span.begin; };
  const bool known = std::any_of(list_.begin(), list_.end(),
                                 [&](const Diagnostic &other) { return source.LineStart(other.span.begin) == line; });
  if (known) return;
  if (list_.size() >= kMaxReported) {
    isCut_ = true;
    return;
  }
  list_.insert(std::find_if(list_.begin(), list_.end(), startsAfter), Diagnostic{span, std::move(message)});
}

std::string Excerpt(const SourceText &source, Span span, const MessageColors &colors) {
  const std::size_t number = source.Locate(span.begin).line;
  const std::string_view line = source.LineAt(span.begin);
  const auto lineStart = static_cast<std::size_t>(line.data() - source.Text().data());
  const std::size_t begin = std::min<std::size_t>(span.begin - lineStart, line.size());
  const std::size_t end = std::clamp<std::size_t>(span.end - lineStart, begin, line.size());

  const bool fits = Fits(line);
  Window window{begin, begin, 0};
  if (fits) {
    window = {0, line.size(), 0};
  } else {
    // A third of the room is for what stands before the place, unless what follows leaves more.
    constexpr std::size_t kRoom = kExcerptColumns - 2;  // for an ellipsis on either side
    ExtendLeft(line, kRoom / 3, window);
    ExtendRight(line, kRoom, window);
    ExtendLeft(line, kRoom, window);
  }

  std::string shown = window.begin > 0 ? std::string(kEllipsis) : std::string();
  std::string indent = window.begin > 0 ? " " : "";
  std::size_t carets = 0;
  for (std::size_t at = window.begin; at < window.end;) {
    const VisibleCharacter character = FirstVisible(line.substr(at));
    // The blank part repeats the line's tabs, so that the carets are aligned whatever a tab's width is.
    const bool isTab = line[at] == '\t';
    const std::string text = !isTab ? character.text : fits ? "\t" : " ";
    const std::size_t columns = isTab ? 1 : character.columns;
    shown += text;
    if (at < begin) indent += isTab ? text : std::string(columns, ' ');
    if (at >= begin && at < end) carets += columns;
    at += character.bytes;
  }
  if (window.end < line.size()) shown += kEllipsis;
  return fmt::format("{:5} | {}\n      | {}{}{}{}\n", number, shown, indent, colors.caret,
                     std::string(std::max<std::size_t>(1, carets), '^'), colors.normal);
}

std::string Format(const SourceText &source, Span span, std::string_view kind, std::string_view message,
                   const MessageColors &colors) {
  const Position start = source.Locate(span.begin);
  return fmt::format("{}{}:{}:{}:{} {}{}:{} {}\n{}", colors.place, VisibleText(source.FileAt(span.begin).name),
                     start.line, start.column, colors.normal, colors.kind, kind, colors.normal, VisibleText(message),
                     Excerpt(source, span, colors));
}

std::string Format(const SourceText &source, const Diagnostic &diagnostic, const MessageColors &colors) {
  constexpr std::size_t kLongest = 500;
  constexpr std::size_t kStart = 300;
  std::string_view message = diagnostic.message;
  if (message.size() <= kLongest) return Format(source, diagnostic.span, "error", message, colors);
  // The end says what to do.
  std::size_t head = kStart;
  std::size_t tail = message.size() - (kLongest - kStart);
  while ((static_cast<unsigned char>(message[head]) & 0xC0) == 0x80) --head;
  while ((static_cast<unsigned char>(message[tail]) & 0xC0) == 0x80) ++tail;
  const std::string cut = fmt::format("{}{}{}", message.substr(0, head), kEllipsis, message.substr(tail));
  return Format(source, diagnostic.span, "error", cut, colors);
}

}  // namespace quillbar::language
