// SPDX-License-Identifier: MIT
#include "host/runtime/array_store.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "host/runtime/handles.h"
#include "host/runtime/host_error.h"

namespace quillbar::host {
namespace {

std::unordered_set<Array> &ArraysOnLoan() {
  static std::unordered_set<Array> arrays;
  return arrays;
}

/// The live arrays that can hold arrays.
std::unordered_set<Array> &VariantArrays() {
  static std::unordered_set<Array> arrays;
  return arrays;
}

void Free(Array array) {
  if (array->element.IsVariant()) VariantArrays().erase(array);
  delete array;
}

std::size_t CheckedIndex(const HostArray *array, std::int64_t index, std::size_t end) {
  if (array == nullptr) throw HostError(ErrorKind::kNilObject, "there is no array");
  if (index < 0 || static_cast<std::size_t>(index) >= end) {
    throw HostError(ErrorKind::kOutOfBounds, "index " + std::to_string(index) +
                                                 " is outside an array with the upper bound " +
                                                 std::to_string(static_cast<std::int64_t>(array->values.size()) - 1));
  }
  return static_cast<std::size_t>(index);
}

}  // namespace

void DestroyArray(Array array) {
  // Long chains of arrays would need as much of the machine's stack.
  constexpr std::size_t kMostNested = 100;
  static std::size_t depth = 0;
  static std::vector<Array> doomed;  // unused arrays that wait until the depth is less
  if (depth >= kMostNested) {
    doomed.push_back(array);
    return;
  }
  ++depth;
  Free(array);
  --depth;
  while (depth == 0 && !doomed.empty()) {
    const Array next = doomed.back();
    doomed.pop_back();
    ++depth;
    Free(next);
    --depth;
  }
}

void ClearVariantArrays() {
  std::vector<ArrayHandle> kept;
  for (const Array array : VariantArrays()) kept.emplace_back(array);
  for (const ArrayHandle &handle : kept) {
    handle.Get()->extents = {};
    const std::vector<Value> removed = std::exchange(handle.Get()->values, {});
  }
}

bool IsArrayOnLoan(Array array) { return ArraysOnLoan().contains(array); }

void LendArray(Array array) {
  if (array != nullptr && array->loans++ == 0) ArraysOnLoan().insert(array);
}

void EndArrayLoan(Array array) {
  if (array != nullptr && --array->loans == 0) ArraysOnLoan().erase(array);
}

ArrayHandle ArrayHandle::Create(Type element, std::size_t size) {
  auto *array = new HostArray;
  ArrayHandle handle(array);
  array->element = element;
  if (element.IsVariant()) VariantArrays().insert(array);
  array->values.assign(size, Value::Zero(element));
  return handle;
}

ArrayHandle ArrayHandle::CreateEmpty(Type arrayType) {
  ArrayHandle handle = Create(arrayType.Element());
  handle.Get()->rank = arrayType.Rank();
  return handle;
}

Type ArrayHandle::ArrayType() const { return Get() == nullptr ? Type() : Get()->element.ArrayOf(Get()->rank); }

std::size_t ArrayHandle::Extent(int dimension) const {
  if (Get() == nullptr) return 0;
  return Get()->rank == 1 ? Get()->values.size() : Get()->extents[static_cast<std::size_t>(dimension)];
}

void ArrayHandle::ResizeAll(const ArrayExtents &extents) {
  CheckedIndex(Get(), 0, 1);
  HostArray &array = *Get();
  if (array.rank == 1) {
    Resize(static_cast<std::int64_t>(extents[0]));
    return;
  }
  const ArrayExtents old = array.extents;
  const auto whole = [&](ArrayExtents sizes) {
    if (array.rank == 2) sizes[2] = 1;
    return sizes;
  };
  const ArrayExtents from = whole(old);
  const ArrayExtents to = whole(extents);
  std::vector<Value> values(to[0] * to[1] * to[2], Value::Zero(array.element));
  for (std::size_t i = 0; i < std::min(from[0], to[0]); ++i) {
    for (std::size_t j = 0; j < std::min(from[1], to[1]); ++j) {
      for (std::size_t k = 0; k < std::min(from[2], to[2]); ++k) {
        values[(i * to[1] + j) * to[2] + k] = std::move(array.values[(i * from[1] + j) * from[2] + k]);
      }
    }
  }
  array.extents = extents;
  std::swap(array.values, values);
}

Type ArrayHandle::ElementType() const { return Get() == nullptr ? Type() : Get()->element; }

std::size_t ArrayHandle::Size() const { return Get() == nullptr ? 0 : Get()->values.size(); }

const Value &ArrayHandle::At(std::int64_t index) const {
  const std::size_t place = CheckedIndex(Get(), index, Size());
  return Get()->values[place];
}

void ArrayHandle::Set(std::int64_t index, const Value &value) {
  const std::size_t place = CheckedIndex(Get(), index, Size());
  Get()->values[place] = value.ConvertedTo(Get()->element);
}

void ArrayHandle::Append(const Value &value) { Insert(static_cast<std::int64_t>(Size()), value); }

void ArrayHandle::Insert(std::int64_t index, const Value &value) {
  const std::size_t place = CheckedIndex(Get(), index, Size() + 1);
  Get()->values.insert(Get()->values.begin() + static_cast<std::ptrdiff_t>(place), value.ConvertedTo(Get()->element));
}

void ArrayHandle::RemoveAt(std::int64_t index) {
  const std::size_t place = CheckedIndex(Get(), index, Size());
  Get()->values.erase(Get()->values.begin() + static_cast<std::ptrdiff_t>(place));
}

void ArrayHandle::Resize(std::int64_t size) {
  CheckedIndex(Get(), 0, 1);
  Get()->values.resize(static_cast<std::size_t>(std::max<std::int64_t>(size, 0)), Value::Zero(Get()->element));
}

}  // namespace quillbar::host
