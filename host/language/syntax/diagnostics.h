// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

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

  /// The diagnostics in the order of the text.
  const std::vector<Diagnostic> &List() const { return list_; }

 private:
  std::vector<Diagnostic> list_;
};

/// The line that `span` starts on with a number before it, and a row of carets under the span:
///
///      12 | Print pge.Width
///         |       ^^^
std::string Excerpt(const SourceText &source, Span span);

/// "file:line:column: error: message" and the excerpt, each line ended by LF.
std::string Format(const SourceText &source, const Diagnostic &diagnostic);

}  // namespace quillbar::language
