// SPDX-License-Identifier: MIT
#include "host/language/run/exceptions.h"

namespace quillbar::language {

std::string_view ExceptionClass(ExceptionKind kind) {
  switch (kind) {
    case ExceptionKind::kRuntime:
      return "RuntimeException";
    case ExceptionKind::kNilObject:
      return "NilObjectException";
    case ExceptionKind::kOutOfBounds:
      return "OutOfBoundsException";
    case ExceptionKind::kTypeMismatch:
      return "TypeMismatchException";
    case ExceptionKind::kIllegalCast:
      return "IllegalCastException";
    case ExceptionKind::kInvalidArgument:
      return "InvalidArgumentException";
    case ExceptionKind::kDivideByZero:
      return "DivideByZeroException";
    case ExceptionKind::kIo:
      return "IOException";
    case ExceptionKind::kOutOfMemory:
      return "OutOfMemoryException";
    case ExceptionKind::kStackOverflow:
      return "StackOverflowException";
    case ExceptionKind::kUnsupportedOperation:
      return "UnsupportedOperationException";
    case ExceptionKind::kDatabase:
      return "DatabaseException";
    case ExceptionKind::kKeyNotFound:
      return "KeyNotFoundException";
    case ExceptionKind::kJson:
      return "JSONException";
  }
  return "RuntimeException";
}

ExceptionKind ExceptionFor(host::ErrorKind kind) {
  switch (kind) {
    case host::ErrorKind::kNilObject:
      return ExceptionKind::kNilObject;
    case host::ErrorKind::kOutOfBounds:
      return ExceptionKind::kOutOfBounds;
    case host::ErrorKind::kTypeMismatch:
      return ExceptionKind::kTypeMismatch;
    case host::ErrorKind::kArguments:
      return ExceptionKind::kInvalidArgument;
    case host::ErrorKind::kFile:
      return ExceptionKind::kIo;
    case host::ErrorKind::kUnsupported:
      return ExceptionKind::kUnsupportedOperation;
    case host::ErrorKind::kUnknownName:
    case host::ErrorKind::kNotAccessible:
    case host::ErrorKind::kPlugin:
      break;
  }
  return ExceptionKind::kRuntime;
}

}  // namespace quillbar::language
