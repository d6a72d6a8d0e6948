// SPDX-License-Identifier: MIT
#include "host/language/run/runtime.h"

#include <fmt/format.h>

#include <new>
#include <utility>

#include "host/language/platform/monotonic_clock.h"
#include "host/runtime/host_error.h"
#include "host/runtime/interruption.h"

namespace quillbar::language {

Runtime::Runtime(host::Host &host, const Streams &streams, std::filesystem::path folder,
                 std::vector<std::string> arguments, std::vector<Representation> globals)
    : host_(host),
      streams_(streams),
      folder_(std::move(folder)),
      arguments_(std::move(arguments)),
      globalKinds_(std::move(globals)),
      globals_(globalKinds_.size()),
      stack_(static_cast<Cell *>(std::calloc(Limits::kVariables, sizeof(Cell)))),
      stackBase_(StackPointer()),
      random_(std::random_device()()),
      started_(platform::MonotonicMicroseconds()) {
  if (!stack_) throw std::bad_alloc();
}

Runtime::~Runtime() {
  // Handlers that run when objects are destroyed later find that the script has ended.
  alive_.reset();
  ReleaseVariables();
}

void Runtime::ReleaseVariables() {
  for (std::size_t i = 0; i < globals_.size(); ++i) globals_[i].Clear(globalKinds_[i]);
}

double Runtime::Microseconds() const { return platform::MonotonicMicroseconds() - started_; }

void Runtime::Raise(const Frame &frame, Span span, ExceptionKind kind, std::string message, std::int64_t number) const {
  Raised raised;
  raised.kind = kind;
  raised.className = ExceptionClass(kind);
  raised.message = std::move(message);
  raised.number = number;
  raised.trace = Trace(frame, span);
  // The script may catch it, and ends all the same where the limit of memory was reached.
  if (kind == ExceptionKind::kOutOfMemory && host::Interruption::IsRequested()) {
    const_cast<Runtime *>(this)->NoteEnd(frame, span);
  }
  throw raised;
}

std::vector<TraceStep> Runtime::Trace(const Frame &frame, Span span) {
  std::vector<TraceStep> trace;
  for (const Frame *step = &frame; step != nullptr; step = step->caller) {
    trace.push_back({&step->procedure, span});
    span = step->callSpan;
  }
  return trace;
}

host::ObjectHandle Runtime::ExceptionObject(Raised &raised) const {
  if (raised.object.IsNil()) {
    raised.object = host_.Create(raised.className);
    host_.Set(raised.object, "Message", host::Value(raised.message));
    host_.Set(raised.object, "ErrorNumber", host::Value(raised.number));
  }
  return raised.object;
}

void Runtime::RaiseStackOverflow(const Procedure &procedure, const Frame *caller, Span span) const {
  const Frame self{const_cast<Runtime &>(*this), procedure, nullptr, {}, nullptr};
  const std::string_view cause = depth_ >= maxCalls_ ? ", the limit of --max-calls" : ", and memory for them has ended";
  Raise(caller == nullptr ? self : *caller, span, ExceptionKind::kStackOverflow,
        fmt::format("calls are nested too deeply ({} calls{})", depth_, cause));
}

}  // namespace quillbar::language
