#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "host/runtime/type.h"
#include "interface/values.h"

/// Owners of the host's own references. The references that plugins hold are counted apart from these
/// (see accounting.h), so a plugin's mistake can't pull anything from under a handle.
namespace quillbar::host {

class Value;

/// A host string: bytes in an encoding, immutable. The default is nil, which reads as the empty string.
class StringHandle {
 public:
  StringHandle() = default;
  /// Takes a new reference.
  explicit StringHandle(String string);
  StringHandle(const StringHandle &other) : StringHandle(other.string_) {}
  StringHandle(StringHandle &&other) noexcept : string_(std::exchange(other.string_, nullptr)) {}
  StringHandle &operator=(StringHandle other) noexcept {
    std::swap(string_, other.string_);
    return *this;
  }
  ~StringHandle();

  /// UTF-8 text. Empty text gives nil.
  static StringHandle FromUtf8(std::string_view text);
  /// Bytes as they stand, tagged with an encoding. No bytes give nil.
  static StringHandle FromBytes(std::string_view bytes, TextEncoding encoding);

  bool IsEmpty() const { return string_ == nullptr; }
  explicit operator bool() const { return string_ != nullptr; }

  /// The stored bytes, without the terminating nul; valid as long as a reference is held.
  std::string_view Bytes() const;
  /// UTF-8 for the empty string.
  TextEncoding Encoding() const;
  /// The text as UTF-8; bytes that mean nothing in the string's encoding become U+FFFD.
  std::string Utf8() const;

  String Get() const { return string_; }

  /// Adopts a reference that the caller owns already.
  static StringHandle Adopt(String owned) {
    StringHandle handle;
    handle.string_ = owned;
    return handle;
  }
  /// Hands the reference to the caller.
  String Detach() { return std::exchange(string_, nullptr); }

 private:
  String string_ = nullptr;
};

/// A reference to an object; default Nil. The object's destructors run when its last reference goes.
class ObjectHandle {
 public:
  ObjectHandle() = default;
  /// Takes a new reference.
  explicit ObjectHandle(Object object);
  ObjectHandle(const ObjectHandle &other) : ObjectHandle(other.object_) {}
  ObjectHandle(ObjectHandle &&other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ObjectHandle &operator=(ObjectHandle other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ObjectHandle();

  bool IsNil() const { return object_ == nullptr; }
  explicit operator bool() const { return object_ != nullptr; }

  /// The object's own class; must not be Nil.
  const ClassInfo &Class() const;

  Object Get() const { return object_; }

  static ObjectHandle Adopt(Object owned) {
    ObjectHandle handle;
    handle.object_ = owned;
    return handle;
  }
  Object Detach() { return std::exchange(object_, nullptr); }

  friend bool operator==(const ObjectHandle &a, const ObjectHandle &b) { return a.object_ == b.object_; }

 private:
  Object object_ = nullptr;
};

/// A reference to a one-dimensional array; arrays are shared, as in scripts. Default: no array.
class ArrayHandle {
 public:
  ArrayHandle() = default;
  explicit ArrayHandle(Array array);
  ArrayHandle(const ArrayHandle &other) : ArrayHandle(other.array_) {}
  ArrayHandle(ArrayHandle &&other) noexcept : array_(std::exchange(other.array_, nullptr)) {}
  ArrayHandle &operator=(ArrayHandle other) noexcept {
    std::swap(array_, other.array_);
    return *this;
  }
  ~ArrayHandle();

  /// A new array of `size` zero values of this element type.
  static ArrayHandle Create(Type element, std::size_t size = 0);

  explicit operator bool() const { return array_ != nullptr; }
  Type ElementType() const;
  std::size_t Size() const;

  /// Elements count from 0. An index outside throws HostError (kOutOfBounds).
  const Value &At(std::int64_t index) const;
  /// The value is converted to the element type; throws HostError (kTypeMismatch) if that can't be.
  void Set(std::int64_t index, const Value &value);
  void Append(const Value &value);
  /// `index` may be the size: then it appends.
  void Insert(std::int64_t index, const Value &value);
  void RemoveAt(std::int64_t index);
  /// New elements are zero values. Negative sizes count as 0.
  void Resize(std::int64_t size);

  Array Get() const { return array_; }

  static ArrayHandle Adopt(Array owned) {
    ArrayHandle handle;
    handle.array_ = owned;
    return handle;
  }
  Array Detach() { return std::exchange(array_, nullptr); }

  friend bool operator==(const ArrayHandle &a, const ArrayHandle &b) { return a.array_ == b.array_; }

 private:
  Array array_ = nullptr;
};

}  // namespace quillbar::host
