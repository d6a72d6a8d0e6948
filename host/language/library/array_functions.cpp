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
  if (Count(list) < Limits::Current().arrayElements) return;
  throw LibraryError{ExceptionKind::kOutOfMemory, TooManyElements()};
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

void CheckLastIndex(std::int64_t lastIndex) {
  if (lastIndex < -1) {
    throw LibraryError{ExceptionKind::kOutOfBounds,
                       fmt::format("the last index of an array can't be {}; -1 makes it empty", lastIndex)};
  }
  if (lastIndex >= Limits::Current().arrayElements) {
    throw LibraryError{ExceptionKind::kOutOfMemory, TooManyElements()};
  }
}

void ResizeTo(const ArrayHandle &list, std::int64_t lastIndex) {
  CheckLastIndex(lastIndex);
  ArrayHandle(list).Resize(lastIndex + 1);
}

std::int64_t LastIndexIn(const ArrayHandle &list, std::int64_t dimension) {
  const int rank = list.ArrayType().Rank();
  if (dimension < 1 || dimension > rank) {
    throw LibraryError{ExceptionKind::kOutOfBounds,
                       fmt::format("there is no dimension {}; this array has {}", dimension, rank)};
  }
  return static_cast<std::int64_t>(list.Extent(static_cast<int>(dimension - 1))) - 1;
}

void ResizeGrid(const ArrayHandle &list, std::initializer_list<std::int64_t> lastIndices) {
  host::ArrayExtents extents{};
  std::int64_t total = 1;
  for (std::size_t i = 0; const std::int64_t lastIndex : lastIndices) {
    CheckLastIndex(lastIndex);
    total *= lastIndex + 1;
    if (total > Limits::Current().arrayElements) CheckLastIndex(total);
    extents[i++] = static_cast<std::size_t>(lastIndex + 1);
  }
  ArrayHandle(list).ResizeAll(extents);
}

void ResizeTo2(const ArrayHandle &list, std::int64_t first, std::int64_t second) { ResizeGrid(list, {first, second}); }
void ResizeTo3(const ArrayHandle &list, std::int64_t first, std::int64_t second, std::int64_t third) {
  ResizeGrid(list, {first, second, third});
}

std::int64_t FirstIndex(const ArrayHandle &) { return 0; }

Value Pop(const ArrayHandle &list) {
  if (list.Size() == 0) throw LibraryError{ExceptionKind::kOutOfBounds, "the array is empty"};
  const Value last = list.At(LastIndex(list));
  RemoveAt(list, LastIndex(list));
  return last;
}

bool AreEqual(const Value &one, const Value &other) {
  if (one.type() != other.type() || one.type().IsArray()) return variant::AreEqual(one, other);
  if (one.type().IsString()) {
    return host::text::Compare(one.AsString(), other.AsString(), host::text::Comparison::kIgnoreCase) == 0;
  }
  if (one.type().IsObject() || one.type().IsNil()) return one.AsObject() == other.AsObject();
  if (host::IsFloating(one.type().kind())) return one.AsDouble() == other.AsDouble();
  return one.RawInteger() == other.RawInteger();
}

std::int64_t IndexOfElement(const ArrayHandle &list, const Value &value, std::int64_t start) {
  for (std::int64_t i = start < 0 ? 0 : start; i < Count(list); ++i) {
    if (AreEqual(list.At(i), value)) return i;
  }
  return -1;
}

bool ContainsElement(const ArrayHandle &list, const Value &value) { return IndexOfElement(list, value, 0) >= 0; }

void Sort(const ArrayHandle &list) { SortArray(list); }

void SortWithOther(const ArrayHandle &list, const ArrayHandle &other) { SortArrays(list, {other}); }

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

constexpr LibraryFunction kArrayFunctions[] = {
    kFunction<"Ubound(list() As Element, dimension As Integer = 1) As Integer", &LastIndexIn>,

    kMethod<"Array", "Ubound() As Integer", &LastIndex>,
    kMethod<"Array", "LastIndex() As Integer", &LastIndex>,
    kMethod<"Array", "LastIndex(dimension As Integer) As Integer", &LastIndexIn>,
    kMethod<"Array", "FirstIndex() As Integer", &FirstIndex>,
    kMethod<"Array", "Count() As Integer", &Count>,
    kMethod<"Array", "Append(value As Element)", &Append>,
    kMethod<"Array", "Add(value As Element)", &Append>,
    kMethod<"Array", "Insert(index As Integer, value As Element)", &Insert>,
    kMethod<"Array", "AddRow(value As Element)", &Append>,
    kMethod<"Array", "AddRowAt(index As Integer, value As Element)", &Insert>,
    kMethod<"Array", "AddAt(index As Integer, value As Element)", &Insert>,
    kMethod<"Array", "Remove(index As Integer)", &RemoveAt>,
    kMethod<"Array", "RemoveAt(index As Integer)", &RemoveAt>,
    kMethod<"Array", "RemoveRowAt(index As Integer)", &RemoveAt>,
    kMethod<"Array", "RemoveAll()", &RemoveAll>,
    kMethod<"Array", "RemoveAllRows()", &RemoveAll>,
    kMethod<"Array", "ResizeTo(lastIndex As Integer)", &ResizeTo>,
    kMethod<"Array", "Pop() As Element", &Pop>,
    kMethod<"Array", "IndexOf(value As Element, start As Integer = 0) As Integer", &IndexOfElement>,
    kMethod<"Array", "Contains(value As Element) As Boolean", &ContainsElement>,
    kMethod<"Array", "Sort()", &Sort>,
    kMethod<"Array", "SortWith(other() As Element)", &SortWithOther>,
    kMethod<"Array", "Shuffle()", &Shuffle>,

    kMethod<"Grid", "Ubound(dimension As Integer = 1) As Integer", &LastIndexIn>,
    kMethod<"Grid", "LastIndex(dimension As Integer = 1) As Integer", &LastIndexIn>,
    kMethod<"Grid", "FirstIndex() As Integer", &FirstIndex>,
    kMethod<"Grid", "Count() As Integer", &Count>,
    kMethod<"Array2", "ResizeTo(first As Integer, second As Integer)", &ResizeTo2>,
    kMethod<"Array3", "ResizeTo(first As Integer, second As Integer, third As Integer)", &ResizeTo3>,
};

}  // namespace

std::span<const LibraryFunction> ArrayFunctions() { return kArrayFunctions; }

}  // namespace quillbar::language
