// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/language/syntax/message_colors.h"
#include "host/language/syntax/source_text.h"

namespace quillbar::language {

/// One error found in a script before it runs: where it is, what is wrong and, where that is known, what to do about
/// it (as part of the message).
struct Diagnostic {
  Span span;
  std::string message;
};

/// Collects the diagnostics of one script.
class Diagnostics {
 public:
  /// After this many the rest are dropped: they mostly follow from earlier ones.
  static constexpr std::size_t kMaxReported = 20;

  /// Adds a diagnostic. Of several on one line only the first is kept.
  void Report(const SourceText &source, Span span, std::string message);

  bool Empty() const { return list_.empty(); }

  /// Whether some were dropped.
  bool IsCut() const { return isCut_; }

  /// The diagnostics in the order of the text.
  const std::vector<Diagnostic> &List() const { return list_; }

 private:
  std::vector<Diagnostic> list_;
  bool isCut_ = false;
};

/// The columns that an excerpt shows of a line at most.
inline constexpr std::size_t kExcerptColumns = 120;

/// The line that `span` starts on with a number before it, and a row of carets under the span:
///
///      12 | Print pge.Width
///         |       ^^^
///
/// Of a long line the surroundings of the span are shown, with "…" for what is left out. What can't be seen is shown as
/// an escape.
std::string Excerpt(const SourceText &source, Span span, const MessageColors &colors = kNoColors);

/// "file:line:column: kind: message" and the excerpt, each line ended by LF. What can't be seen in the message is shown
/// as an escape.
std::string Format(const SourceText &source, Span span, std::string_view kind, std::string_view message,
                   const MessageColors &colors = kNoColors);

/// The same for a diagnostic, whose kind is "error". A long message, which has words of the script in it, is cut.
std::string Format(const SourceText &source, const Diagnostic &diagnostic, const MessageColors &colors = kNoColors);

}  // namespace quillbar::language
