// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/syntax/source_text.h"
#include "host/runtime/handles.h"
#include "host/runtime/host_error.h"

namespace quillbar::language {

/// The exceptions that the language itself raises, each a class that scripts can catch.
enum class ExceptionKind : std::uint8_t {
  kRuntime,
  kNilObject,
  kOutOfBounds,
  kTypeMismatch,
  kIllegalCast,
  kInvalidArgument,
  kDivideByZero,
  kIo,
  kOutOfMemory,
  kStackOverflow,
  kUnsupportedOperation,
  kDatabase,
  kKeyNotFound,
  kJson,
};

/// The name of the class, for example "NilObjectException".
std::string_view ExceptionClass(ExceptionKind kind);

/// The script's exception for an error of the host.
ExceptionKind ExceptionFor(host::ErrorKind kind);

/// Thrown by the language's library, which doesn't know where in the script it was called; the call adds that.
struct LibraryError {
  ExceptionKind kind;
  std::string message;
  std::int64_t number = 0;  // the system's error number, where there is one
};

struct Procedure;

/// One step of a stack trace: a procedure and a position in it.
struct TraceStep {
  const Procedure *procedure;
  Span span;
};

/// An exception on its way through a script: thrown where it is raised, caught by Try or, when nothing else catches
/// it, by the run as a whole.
struct Raised {
  ExceptionKind kind = ExceptionKind::kRuntime;
  std::string className;
  std::string message;
  std::int64_t number = 0;
  host::ObjectHandle object;     // what scripts see; made when someone catches it
  std::vector<TraceStep> trace;  // innermost first
};

/// The wish of a script to end with this exit status. Scripts can't catch it; `Finally` is run on its way.
struct QuitRequest {
  int status;
};

}  // namespace quillbar::language
