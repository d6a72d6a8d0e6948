// SPDX-License-Identifier: MIT
#include "host/language/run/error_translation.h"

#include <fmt/format.h>

namespace quillbar::language {

void RaiseError(const Frame &frame, Span span, const host::HostError &error) {
  frame.runtime.Raise(frame, span, ExceptionFor(error.kind()), error.what());
}

void RaiseError(const Frame &frame, Span span, const LibraryError &error) {
  frame.runtime.Raise(frame, span, error.kind, error.message, error.number);
}

void RaiseError(const Frame &frame, Span span, const std::bad_alloc &) {
  frame.runtime.Raise(frame, span, ExceptionKind::kOutOfMemory, "there is not enough memory");
}

void RaiseError(const Frame &frame, Span span, const std::length_error &) {
  frame.runtime.Raise(frame, span, ExceptionKind::kOutOfMemory, "this would be too large");
}

void RaiseUsedOnNil(const Frame &frame, Span span, std::string_view member) {
  frame.runtime.Raise(frame, span, ExceptionKind::kNilObject, fmt::format("\"{}\" was used on Nil", member));
}

}  // namespace quillbar::language
