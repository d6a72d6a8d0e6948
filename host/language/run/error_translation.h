// SPDX-License-Identifier: MIT
#pragma once

#include <new>
#include <stdexcept>
#include <string_view>

#include "host/language/run/exceptions.h"
#include "host/language/run/runtime.h"
#include "host/runtime/host_error.h"

namespace quillbar::language {

/// Raises the script's exception for an error of the host or of the library, at `span`.
[[noreturn]] void RaiseError(const Frame &frame, Span span, const host::HostError &error);
[[noreturn]] void RaiseError(const Frame &frame, Span span, const LibraryError &error);
[[noreturn]] void RaiseError(const Frame &frame, Span span, const std::bad_alloc &error);
[[noreturn]] void RaiseError(const Frame &frame, Span span, const std::length_error &error);

/// Raises a NilObjectException at `span`: the object whose member was used is Nil.
[[noreturn]] void RaiseUsedOnNil(const Frame &frame, Span span, std::string_view member);

/// Runs `work` and returns its result. Errors of the host and of the library become exceptions of the script, raised
/// at `span`. Every function of the library is called through a copy of this, so the handlers are elsewhere.
template <class Work>
decltype(auto) TranslateErrors(const Frame &frame, Span span, Work work) {
  try {
    return work();
  } catch (const host::HostError &error) {
    RaiseError(frame, span, error);
  } catch (const LibraryError &error) {
    RaiseError(frame, span, error);
  } catch (const std::bad_alloc &error) {
    RaiseError(frame, span, error);
  } catch (const std::length_error &error) {
    RaiseError(frame, span, error);
  }
}

}  // namespace quillbar::language
