// SPDX-License-Identifier: MIT
// The input is a script and, after each nul, a file as projects store classes, modules and interfaces. They are read and
// checked together, as `quillbar check SCRIPT FILE…` does.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/demand.h"
#include "host/language/check/checker.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/parser.h"
#include "host/language/syntax/source_text.h"
#include "host/language/tree/program.h"
#include "host/runtime/host.h"

namespace {

using namespace quillbar;

/// Messages point into the text, and can be shown.
void ExamineDiagnostics(const language::SourceText &source, const language::Diagnostics &diagnostics) {
  for (const language::Diagnostic &diagnostic : diagnostics.List()) {
    fuzz::Demand(diagnostic.span.begin <= diagnostic.span.end, "a message's place begins before it ends");
    fuzz::Demand(diagnostic.span.begin <= source.Text().size(), "a message's place is in the text");
    fuzz::Demand(!diagnostic.message.empty(), "a message says something");
    fuzz::Demand(!language::Format(source, diagnostic).empty(), "a message can be shown");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char *>(data), size);
  const auto next = [&] {
    const std::string_view part = input.substr(0, input.find('\0'));
    input.remove_prefix(std::min(input.size(), part.size() + 1));
    return std::string(part);
  };
  language::SourceText source("fuzzed.xojo_script", next());
  constexpr int kMostFiles = 8;
  for (int file = 1; !input.empty() && file <= kMostFiles; ++file) {
    source.Add("file" + std::to_string(file) + ".xojo_code", next());
  }
  static host::Host &host = *new host::Host;
  language::RegisterLanguageClasses(host);
  language::Diagnostics diagnostics;
  const language::syntax::Script script = language::Parse(source, diagnostics);
  ExamineDiagnostics(source, diagnostics);
  if (!diagnostics.Empty()) return 0;
  const auto program = language::Check(source, script, host, diagnostics);
  ExamineDiagnostics(source, diagnostics);
  fuzz::Demand(!diagnostics.Empty() || program != nullptr, "what has no error is a program");
  return 0;
}
