// SPDX-License-Identifier: MIT
#include "host/runtime/array_store.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "host/runtime/handles.h"
#include "host/runtime/host_error.h"

namespace quillbar::host {
namespace {

std::unordered_set<Array> &ArraysOnLoan() {
  static std::unordered_set<Array> arrays;
  return arrays;
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
  array->values.assign(size, Value::Zero(element));
  return handle;
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
