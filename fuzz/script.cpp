// SPDX-License-Identifier: MIT
// The input is a script. It is checked, and run when it can't reach a file.
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>

#include "fuzz/demand.h"
#include "fuzz/loaded_host.h"
#include "host/language/run/limits.h"
#include "host/language/run/run_script.h"
#include "host/language/syntax/lexer.h"
#include "host/language/syntax/source_text.h"
#include "host/language/tree/code.h"
#include "interface/declaration.h"

namespace {

using namespace quillbar;

constexpr std::size_t kMaxSteps = 2000;
constexpr std::size_t kMaxStringBytes = std::size_t{1} << 14;
constexpr std::int64_t kMaxArrayElements = 1000;

/// Files are reached through a `FolderItem`, and a script can't get one without one of these names. The others
/// read the standard input, write errors, or end the script with a status of its own.
constexpr std::string_view kOutward[] = {
    "FolderItem", "GetFolderItem", "SpecialFolder", "SQLiteDatabase", "DebugLog", "StdErr", "StdIn", "Input", "Quit"};

bool ReachesOut(const std::string &text) {
  language::Diagnostics diagnostics;
  const language::SourceText source("fuzzed", text);
  for (const language::Token &token : language::Tokenize(source, diagnostics)) {
    for (const std::string_view name : kOutward) {
      if (SameName(token.text, name)) return true;
    }
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  // Before the first input, so that the plugins' branches are counted from the start.
  fuzz::HostWithPlugins();
  language::Limits::Current().stringBytes = kMaxStringBytes;
  language::Limits::Current().arrayElements = kMaxArrayElements;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string text(reinterpret_cast<const char *>(data), size);
  host::Host &host = fuzz::HostWithPlugins();
  const int stringsBefore = fuzz::CountLiveStrings();
  std::ostringstream output, errors;
  language::stepsLeft = ReachesOut(text) ? 0 : kMaxSteps;
  try {
    const int status = language::RunText(host, "fuzzed", text, {}, output, errors);
    fuzz::Demand((status == 0) == errors.str().empty(), "a script that fails says why");
  } catch (const language::OutOfSteps &) {
    // Endless loops are not a bug of the interpreter.
  }
  fuzz::DemandBalance(stringsBefore);
  return 0;
}
