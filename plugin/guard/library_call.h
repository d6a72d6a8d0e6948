// SPDX-License-Identifier: MIT
/// The one guard around every call of the engine, libharu's functions and those of its own.
///
///     Call<HPDF_Page_Rectangle>(page, x, y, width, height);
///
/// calls the function with these arguments and returns its result. Beyond that:
///
/// - Numbers that aren't finite (NaN, infinities; also inside points, rectangles, colours and matrices) never reach the
///   engine, which would print them into the page: the call is refused with HPDF_INVALID_PARAMETER.
/// - A failure reaches the document's error handler exactly once, however the engine expressed it: raised, only marked
///   in its error record, or returned as a bare status or null. Several failures of one call count as the first.
/// - The handler runs after the engine has been left: it may call it on the same document. The next call starts clean,
///   whatever the handler did.
/// - A function that returns a status returns the failure's code. Other functions return what the engine returned; a
///   refused call returns null, 0 or a record of zeros.
/// - What the engine throws ends here, as HPDF_FAILD_TO_ALLOC_MEM: it throws when memory is short.
///
/// The document is found through the first argument: a document, a page or any other object of one. With a null first
/// argument the function is called too and answers as for any invalid object; there is no handler to call then.
///
/// Three calls go without the guard: `engine::NewDocument`, before which there is no document, the functions that only
/// read what is in memory and can't fail, such as `engine::DeviceColorSpace`, and `engine::ReportShortage`.
#pragma once

#include <cmath>
#include <type_traits>

#include "plugin/engine/errors/error_state.h"
#include "plugin/engine/objects/enumeration_numbers.h"

namespace quillbar {

namespace library_call {

inline HPDF_Error ErrorOf(HPDF_Doc document) {
  return document != nullptr && document->sig_bytes == HPDF_SIG_BYTES ? &document->error : nullptr;
}
inline HPDF_Error ErrorOf(HPDF_Dict object) { return object ? object->error : nullptr; }
inline HPDF_Error ErrorOf(HPDF_Array object) { return object ? object->error : nullptr; }
inline HPDF_Error ErrorOf(HPDF_Encoder encoder) { return encoder ? encoder->error : nullptr; }
inline HPDF_Error ErrorOf(HPDF_Stream stream) { return stream ? stream->error : nullptr; }
inline HPDF_Error ErrorOf(HPDF_MMgr memory) { return memory ? memory->error : nullptr; }

template <typename T>
bool IsFinite(const T &) {
  return true;
}
inline bool IsFinite(HPDF_REAL value) { return std::isfinite(value); }
inline bool IsFinite(const HPDF_Point &p) { return IsFinite(p.x) && IsFinite(p.y); }
inline bool IsFinite(const HPDF_Point3D &p) { return IsFinite(p.x) && IsFinite(p.y) && IsFinite(p.z); }
inline bool IsFinite(const HPDF_Rect &r) {
  return IsFinite(r.left) && IsFinite(r.bottom) && IsFinite(r.right) && IsFinite(r.top);
}
inline bool IsFinite(const HPDF_RGBColor &c) { return IsFinite(c.r) && IsFinite(c.g) && IsFinite(c.b); }
inline bool IsFinite(const HPDF_CMYKColor &c) {
  return IsFinite(c.c) && IsFinite(c.m) && IsFinite(c.y) && IsFinite(c.k);
}
inline bool IsFinite(const HPDF_TransMatrix &m) {
  return IsFinite(m.a) && IsFinite(m.b) && IsFinite(m.c) && IsFinite(m.d) && IsFinite(m.x) && IsFinite(m.y);
}

// The functions for which null says "there is none" and not "this failed".
template <auto Function>
inline constexpr bool kNullIsAnswer = false;
template <>
inline constexpr bool kNullIsAnswer<HPDF_GetInfoAttr> = true;
template <>
inline constexpr bool kNullIsAnswer<HPDF_GetCurrentPage> = true;
template <>
inline constexpr bool kNullIsAnswer<HPDF_GetCurrentEncoder> = true;
template <>
inline constexpr bool kNullIsAnswer<HPDF_Page_GetCurrentFont> = true;
template <>
inline constexpr bool kNullIsAnswer<HPDF_Dict_GetItem> = true;

// The functions after which the error record no longer exists.
template <auto Function>
inline constexpr bool kEndsDocument = false;
template <>
inline constexpr bool kEndsDocument<HPDF_Free> = true;

// Statuses that tell how a call ended and aren't failures: the text did not fit, the data ended.
constexpr bool IsInformation(HPDF_STATUS status) {
  return status == HPDF_PAGE_INSUFFICIENT_SPACE || status == HPDF_STREAM_EOF || status == HPDF_STREAM_READLN_CONTINUE;
}

// What `result` alone says about a failure: HPDF_OK for none. A null that comes without any code counts as a refused
// operation.
template <auto Function, typename Result>
HPDF_STATUS BareStatus(Result result) {
  if constexpr (std::is_same_v<Result, HPDF_STATUS>) {
    return IsInformation(result) ? HPDF_OK : result;
  } else if constexpr (std::is_pointer_v<Result> && !kNullIsAnswer<Function>) {
    return result == nullptr ? HPDF_INVALID_OPERATION : HPDF_OK;
  } else {
    return HPDF_OK;
  }
}

template <typename Result>
Result RefusedResult(HPDF_STATUS status) {
  if constexpr (std::is_same_v<Result, HPDF_STATUS>) {
    return status;
  } else {
    return Result();
  }
}

template <auto Function>
struct Guarded;

template <typename Result, typename Handle, typename... Parameters, Result (*Function)(Handle, Parameters...)>
struct Guarded<Function> {
  QUILLBAR_ANY_ENUMERATION_NUMBER static Result Answer(HPDF_Error error, Handle handle, Parameters... arguments) {
    try {
      return Function(handle, arguments...);
    } catch (...) {
      return RefusedResult<Result>(engine::NoteShortage(error));
    }
  }

  QUILLBAR_ANY_ENUMERATION_NUMBER Result operator()(Handle handle, Parameters... arguments) const {
    if constexpr (kEndsDocument<Function>) {
      return Function(handle);
    } else {
      const HPDF_Error error = ErrorOf(handle);
      // A call made inside another one is part of it, and the outer one reports.
      if (error == nullptr || error->call_depth != 0) return Answer(error, handle, arguments...);
      HPDF_Error_Reset(error);
      if (!(IsFinite(arguments) && ...)) {
        return RefusedResult<Result>(engine::FinishFailedCall(error, HPDF_INVALID_PARAMETER));
      }
      error->call_depth = 1;
      if constexpr (std::is_void_v<Result>) {
        Answer(error, handle, arguments...);
        error->call_depth = 0;
        if ((error->error_no | error->raised_no) != HPDF_OK) [[unlikely]]
          engine::FinishFailedCall(error, HPDF_OK);
      } else {
        const Result result = Answer(error, handle, arguments...);
        error->call_depth = 0;
        const HPDF_STATUS bare = BareStatus<Function>(result);
        if ((error->error_no | error->raised_no | bare) != HPDF_OK) [[unlikely]] {
          const HPDF_STATUS failure = engine::FinishFailedCall(error, bare);
          if constexpr (std::is_same_v<Result, HPDF_STATUS>) return failure;
        }
        return result;
      }
    }
  }
};

}  // namespace library_call

/// See the head of this file.
template <auto Function>
inline constexpr library_call::Guarded<Function> Call{};

}  // namespace quillbar
