// SPDX-License-Identifier: MIT
#pragma once

#include <new>
#include <stdexcept>

#include "host/language/run/exceptions.h"
#include "host/language/run/runtime.h"
#include "host/runtime/host_error.h"

namespace quillbar::language {

/// Runs `work` and returns its result. Errors of the host and of the library become exceptions of the script, raised
/// at `span`.
template <class Work>
decltype(auto) TranslateErrors(const Frame &frame, Span span, Work work) {
  try {
    return work();
  } catch (const host::HostError &error) {
    frame.runtime.Raise(frame, span, ExceptionFor(error.kind()), error.what());
  } catch (const LibraryError &error) {
    frame.runtime.Raise(frame, span, error.kind, error.message, error.number);
  } catch (const std::bad_alloc &) {
    frame.runtime.Raise(frame, span, ExceptionKind::kOutOfMemory, "there is not enough memory");
  } catch (const std::length_error &) {
    frame.runtime.Raise(frame, span, ExceptionKind::kOutOfMemory, "this would be too large");
  }
}

}  // namespace quillbar::language
