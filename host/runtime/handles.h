// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "host/runtime/type.h"
#include "interface/values.h"

/// Owners of the host's own references. The references that plugins hold are counted apart from these (see
/// reference_ledger.h), so a plugin's mistake can't destroy what a handle holds.
namespace quillbar::host {

class Value;

/// Adds or removes one of the host's references. What has no reference left is destroyed.
void Retain(String string);
void Retain(Object object);
void Retain(Array array);
void Release(String string);
void Release(Object object);
void Release(Array array);

/// What all three handles share: one reference to what `Pointer` points to, or to nothing.
template <class Handle, class Pointer>
class Reference {
 public:
  Reference() = default;
  /// Takes a new reference.
  explicit Reference(Pointer pointer) : pointer_(pointer) {
    if (pointer_ != nullptr) Retain(pointer_);
  }
  Reference(const Reference &other) : Reference(other.pointer_) {}
  Reference(Reference &&other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  Reference &operator=(Reference other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~Reference() {
    if (pointer_ != nullptr) Release(pointer_);
  }

  /// Takes over a reference that the caller owns already.
  static Handle Adopt(Pointer owned) {
    Handle handle;
    handle.pointer_ = owned;
    return handle;
  }
  /// Hands the reference over to the caller; the handle is then empty.
  Pointer Detach() { return std::exchange(pointer_, nullptr); }

  /// The pointer that the handle holds, without a reference for the caller.
  Pointer Get() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }

 private:
  Pointer pointer_ = nullptr;
};

/// A host string: bytes in an encoding, immutable. The default is nil, which reads as the empty string.
class StringHandle : public Reference<StringHandle, String> {
 public:
  using Reference::Reference;

  /// UTF-8 text. Empty text gives nil.
  static StringHandle FromUtf8(std::string_view text);
  /// These bytes unchanged, tagged with an encoding. No bytes give nil.
  static StringHandle FromBytes(std::string_view bytes, TextEncoding encoding);

  bool IsEmpty() const { return Get() == nullptr; }

  /// The stored bytes, without the terminating nul; valid as long as a reference is held.
  std::string_view Bytes() const;
  /// UTF-8 for the empty string.
  TextEncoding Encoding() const;
  /// The text as UTF-8. Bytes that mean nothing in the string's encoding become U+FFFD.
  std::string Utf8() const;
};

/// A reference to an object; Nil by default. The object is destroyed with its last reference.
class ObjectHandle : public Reference<ObjectHandle, Object> {
 public:
  using Reference::Reference;

  bool IsNil() const { return Get() == nullptr; }

  /// The object's own class. The handle must not be Nil.
  const ClassInfo &Class() const;

  friend bool operator==(const ObjectHandle &a, const ObjectHandle &b) { return a.Get() == b.Get(); }
};

/// The number of elements in each of an array's dimensions.
inline constexpr int kMaxArrayRank = 3;
using ArrayExtents = std::array<std::size_t, kMaxArrayRank>;

/// A reference to an array, which all its references share, as in scripts. By default there is no
/// array.
class ArrayHandle : public Reference<ArrayHandle, Array> {
 public:
  using Reference::Reference;

  /// A new array of `size` zero values of this element type.
  static ArrayHandle Create(Type element, std::size_t size = 0);
  /// A new array of this type, which may have several dimensions, without elements.
  static ArrayHandle CreateEmpty(Type arrayType);

  /// The type of the elements; kNone without an array.
  Type ElementType() const;
  /// The type of the array itself.
  Type ArrayType() const;
  /// The number of elements; 0 without an array.
  std::size_t Size() const;

  /// The element at `index`, counted from 0. Throws HostError (kOutOfBounds) for an index that the array doesn't have.
  const Value &At(std::int64_t index) const;
  /// Stores `value`, converted to the element type. Throws HostError (kTypeMismatch) if it can't be converted.
  void Set(std::int64_t index, const Value &value);
  void Append(const Value &value);
  /// Inserts an element before `index`; an `index` equal to the size appends it.
  void Insert(std::int64_t index, const Value &value);
  void RemoveAt(std::int64_t index);
  /// Changes the size. New elements are zero values; a negative size counts as 0.
  void Resize(std::int64_t size);

  /// The number of elements in a dimension, counted from 0.
  std::size_t Extent(int dimension) const;
  /// Changes the size in all dimensions. Elements whose indices exist before and after keep them.
  void ResizeAll(const ArrayExtents &extents);

  friend bool operator==(const ArrayHandle &a, const ArrayHandle &b) { return a.Get() == b.Get(); }
};

}  // namespace quillbar::host
