// SPDX-License-Identifier: MIT
// Arrays, in both spellings of the dialect.

#include <fmt/format.h>

#include <random>

#include "host/language/library/library.h"
#include "host/language/library/sorting.h"
#include "host/language/values/variant.h"
#include "host/runtime/text.h"

namespace quillbar::language {
namespace {

using host::ArrayHandle;
using host::Value;

std::int64_t Count(const ArrayHandle &list) { return static_cast<std::int64_t>(list.Size()); }
std::int64_t LastIndex(const ArrayHandle &list) { return Count(list) - 1; }

void RefuseAnother(const ArrayHandle &list) {
  if (Count(list) < Runtime::kMaxArrayElements) return;
  throw LibraryError{ExceptionKind::kOutOfMemory,
                     fmt::format("an array has at most {} elements", Runtime::kMaxArrayElements)};
}

void Append(const ArrayHandle &list, const Value &value) {
  RefuseAnother(list);
  ArrayHandle(list).Append(value);
}

void Insert(const ArrayHandle &list, std::int64_t index, const Value &value) {
  RefuseAnother(list);
  ArrayHandle(list).Insert(index, value);
}

void RemoveAt(const ArrayHandle &list, std::int64_t index) { ArrayHandle(list).RemoveAt(index); }
void RemoveAll(const ArrayHandle &list) { ArrayHandle(list).Resize(0); }

void ResizeTo(const ArrayHandle &list, std::int64_t lastIndex) {
  if (lastIndex < -1) {
    throw LibraryError{ExceptionKind::kOutOfBounds,
                       fmt::format("the last index of an array can't be {}; -1 makes it empty", lastIndex)};
  }
  if (lastIndex >= Runtime::kMaxArrayElements) {
    throw LibraryError{ExceptionKind::kOutOfMemory,
                       fmt::format("an array has at most {} elements", Runtime::kMaxArrayElements)};
  }
  ArrayHandle(list).Resize(lastIndex + 1);
}

Value Pop(const ArrayHandle &list) {
  if (list.Size() == 0) throw LibraryError{ExceptionKind::kOutOfBounds, "the array is empty"};
  const Value last = list.At(LastIndex(list));
  RemoveAt(list, LastIndex(list));
  return last;
}

bool AreEqual(const Value &one, const Value &other) {
  if (one.type() != other.type()) return variant::AreEqual(one, other);
  if (one.type().IsString()) {
    return host::text::Compare(one.AsString(), other.AsString(), host::text::Comparison::kIgnoreCase) == 0;
  }
  if (one.type().IsObject() || one.type().IsNil()) return one.AsObject() == other.AsObject();
  if (host::IsFloating(one.type().kind())) return one.AsDouble() == other.AsDouble();
  return one.AsInteger() == other.AsInteger();
}

std::int64_t IndexOf(const ArrayHandle &list, const Value &value, std::int64_t start) {
  for (std::int64_t i = start < 0 ? 0 : start; i < Count(list); ++i) {
    if (AreEqual(list.At(i), value)) return i;
  }
  return -1;
}

bool Contains(const ArrayHandle &list, const Value &value) { return IndexOf(list, value, 0) >= 0; }

void Sort(const ArrayHandle &list) { SortArray(list); }

void Shuffle(Runtime &runtime, const ArrayHandle &list) {
  ArrayHandle shuffled = list;
  for (std::int64_t i = LastIndex(list); i > 0; --i) {
    const std::int64_t other = std::uniform_int_distribution<std::int64_t>(0, i)(runtime.Random());
    const Value kept = shuffled.At(i);
    shuffled.Set(i, Value(shuffled.At(other)));
    shuffled.Set(other, kept);
  }
}

using namespace library;

constexpr LibraryFunction kTable[] = {
    kFunction<"Ubound(list() As Element) As Integer", &LastIndex>,

    kMethod<"Array", "Ubound() As Integer", &LastIndex>,
    kMethod<"Array", "LastIndex() As Integer", &LastIndex>,
    kMethod<"Array", "Count() As Integer", &Count>,
    kMethod<"Array", "Append(value As Element)", &Append>,
    kMethod<"Array", "Add(value As Element)", &Append>,
    kMethod<"Array", "Insert(index As Integer, value As Element)", &Insert>,
    kMethod<"Array", "AddAt(index As Integer, value As Element)", &Insert>,
    kMethod<"Array", "Remove(index As Integer)", &RemoveAt>,
    kMethod<"Array", "RemoveAt(index As Integer)", &RemoveAt>,
    kMethod<"Array", "RemoveAll()", &RemoveAll>,
    kMethod<"Array", "ResizeTo(lastIndex As Integer)", &ResizeTo>,
    kMethod<"Array", "Pop() As Element", &Pop>,
    kMethod<"Array", "IndexOf(value As Element, start As Integer = 0) As Integer", &IndexOf>,
    kMethod<"Array", "Contains(value As Element) As Boolean", &Contains>,
    kMethod<"Array", "Sort()", &Sort>,
    kMethod<"Array", "Shuffle()", &Shuffle>,
};

}  // namespace

std::span<const LibraryFunction> ArrayFunctions() { return kTable; }

}  // namespace quillbar::language
