// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <utility>

#include "binding/service.h"

/// Owners of what the host lends or gives, which return it on every path.
namespace quillbar {

/// The bytes of a string in one encoding, nul-terminated. Empty (false) when the string is nil, the
/// conversion fails or the service is missing; only a filled one may be read.
class StringData {
 public:
  StringData(String string, TextEncoding encoding) : StringData(string, static_cast<std::uint32_t>(encoding)) {}

  /// `encoding` is one of the host's codes, as fonts keep it.
  StringData(String string, std::uint32_t encoding)
      : filled_(string != nullptr && CallHost<service::GetStringData>(string, encoding, &record_) != 0) {}

  ~StringData() {
    if (filled_) CallHost<service::DisposeStringData>(&record_);
  }
  StringData(const StringData &) = delete;
  StringData &operator=(const StringData &) = delete;

  explicit operator bool() const { return filled_; }
  /// The nul-terminated bytes, valid as long as this object.
  const char *bytes() const { return record_.data; }
  /// Their number, without the nul.
  std::size_t byteLength() const { return record_.byteLength; }

 private:
  StringDataRecord record_{};
  bool filled_;
};

/// A string that the host gave us: released once.
class OwnedString {
 public:
  OwnedString() = default;
  explicit OwnedString(String string) : string_(string) {}
  ~OwnedString() {
    if (string_ != nullptr) CallHost<service::UnlockString>(string_);
  }
  OwnedString(OwnedString &&other) noexcept : string_(std::exchange(other.string_, nullptr)) {}
  OwnedString &operator=(OwnedString &&other) noexcept {
    std::swap(string_, other.string_);
    return *this;
  }

  /// The string, which stays owned here.
  String get() const { return string_; }

  /// Where a service stores the string that it gives; only for an owner that is still empty.
  String *out() { return &string_; }

 private:
  String string_ = nullptr;
};

/// One reference to an object that the host gave us: released once, unless it is handed on.
template <class Class>
class ObjectRef {
 public:
  ObjectRef() = default;
  explicit ObjectRef(Class *object) : object_(object) {}
  ~ObjectRef() {
    if (object_ != nullptr) CallHost<service::UnlockObject>(object_);
  }
  ObjectRef(ObjectRef &&other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ObjectRef &operator=(ObjectRef &&other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  explicit operator bool() const { return object_ != nullptr; }
  /// The object, whose reference stays owned here.
  Class *get() const { return object_; }

  /// Hands the reference on, for example as the result of a method.
  Class *release() { return std::exchange(object_, nullptr); }

 private:
  Class *object_ = nullptr;
};

}  // namespace quillbar
