// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace quillbar::host {

/// What kind of thing went wrong, so that the script language can map it to one of its exceptions.
enum class ErrorKind {
  kNilObject,      // a member of Nil was used
  kOutOfBounds,    // an array, string or memory index is out of bounds
  kTypeMismatch,   // a value can't be converted to the type that is needed
  kUnknownName,    // no class, member or enumeration of that name
  kNotAccessible,  // private constructor, or a read-only property
  kArguments,      // no overload takes these arguments
  kFile,           // a file or folder operation failed
  kPlugin,         // a plugin can't be loaded, or registered something invalid
  kUnsupported,    // a value that the operation can't work with
};

/// An error that a script or a caller of the host can understand: one sentence without a full stop.
class HostError : public std::runtime_error {
 public:
  HostError(ErrorKind kind, const std::string &message) : std::runtime_error(message), kind_(kind) {}

  ErrorKind kind() const { return kind_; }

 private:
  ErrorKind kind_;
};

}  // namespace quillbar::host
