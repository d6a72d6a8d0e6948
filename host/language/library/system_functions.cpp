// SPDX-License-Identifier: MIT
// Output, time and the end of the script.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>

#include "host/language/library/library.h"
#include "host/language/values/variant.h"

namespace quillbar::language {
namespace {

using host::ObjectHandle;
using host::StringHandle;

void PrintLine(Runtime &runtime, const host::Value &value) {
  runtime.Output() << variant::AsText(value).Utf8() << '\n';
  if (!runtime.Output()) throw LibraryError{ExceptionKind::kIo, "the output can't be written"};
}

void PrintEmptyLine(Runtime &runtime) { runtime.Output() << '\n'; }

void DebugLog(Runtime &runtime, const StringHandle &message) { runtime.Errors() << message.Utf8() << '\n'; }

/// Systems keep the lowest eight bits of an exit status.
void Quit(std::int64_t status) { throw QuitRequest{static_cast<int>(status & 0xFF)}; }

double Microseconds(Runtime &runtime) { return runtime.Microseconds(); }

/// Sixtieths of a second, the dialect's ticks.
std::int64_t Ticks(Runtime &runtime) { return static_cast<std::int64_t>(runtime.Microseconds() * 60 / 1e6); }

StringHandle CommandLine(Runtime &runtime) {
  return StringHandle::FromUtf8(fmt::format("{}", fmt::join(runtime.Arguments(), " ")));
}

ObjectHandle Random(Runtime &runtime) { return runtime.Host().Create("Random"); }

using namespace library;

constexpr LibraryFunction kSystemFunctions[] = {
    kFunction<"Print(value As Any)", &PrintLine>,
    kFunction<"Print()", &PrintEmptyLine>,
    kFunction<"Quit(status As Integer = 0)", &Quit>,
    kFunction<"Microseconds() As Double", &Microseconds>,
    kFunction<"Ticks() As Integer", &Ticks>,

    kShared<"System", "DebugLog(message As String)", &DebugLog>,
    kShared<"System", "Microseconds() As Double", &Microseconds>,
    kShared<"System", "Ticks() As Integer", &Ticks>,
    kShared<"System", "CommandLine() As String", &CommandLine>,
    kShared<"System", "Random() As Random", &Random>,
};

}  // namespace

std::span<const LibraryFunction> SystemFunctions() { return kSystemFunctions; }

}  // namespace quillbar::language
