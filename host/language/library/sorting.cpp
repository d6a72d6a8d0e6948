// SPDX-License-Identifier: MIT
#include "host/language/library/sorting.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <vector>

#include "host/language/run/error_translation.h"
#include "host/language/run/exceptions.h"
#include "host/language/run/runtime.h"
#include "host/language/tree/lvalues.h"
#include "host/language/values/variant.h"
#include "host/runtime/text.h"

namespace quillbar::language {
namespace {

using host::TypeKind;

std::vector<host::Value> Elements(const host::ArrayHandle &list) {
  std::vector<host::Value> elements;
  elements.reserve(list.Size());
  for (std::size_t i = 0; i < list.Size(); ++i) elements.push_back(list.At(static_cast<std::int64_t>(i)));
  return elements;
}

void ReplaceElements(host::ArrayHandle &list, const std::vector<host::Value> &elements) {
  for (std::size_t i = 0; i < elements.size(); ++i) list.Set(static_cast<std::int64_t>(i), elements[i]);
}

/// A stable sort that is safe with any comparison, even one that contradicts itself: a merge sort only ever looks at
/// elements that exist. The standard library's algorithms don't promise that.
template <class Element, class After>
void MergeSort(std::vector<Element> &elements, After after) {
  std::vector<Element> merged(elements.size());
  for (std::size_t width = 1; width < elements.size(); width *= 2) {
    for (std::size_t begin = 0; begin < elements.size(); begin += 2 * width) {
      const std::size_t middle = std::min(begin + width, elements.size());
      const std::size_t end = std::min(begin + 2 * width, elements.size());
      std::size_t left = begin;
      std::size_t right = middle;
      for (std::size_t to = begin; to < end; ++to) {
        const bool takeRight = left == middle || (right < end && after(elements[left], elements[right]));
        merged[to] = std::move(elements[takeRight ? right++ : left++]);
      }
    }
    std::swap(elements, merged);
  }
}

bool IsAfter(const host::Value &one, const host::Value &other) {
  const bool isReference = one.type().IsReference() && !one.type().IsString();
  if (one.type() != other.type() || one.IsNil() || isReference) {
    const std::optional<int> order = variant::Compare(one, other);
    if (!order) {
      throw LibraryError{ExceptionKind::kTypeMismatch, fmt::format("these Variants have no order: {} and {}",
                                                                   one.type().Name(), other.type().Name())};
    }
    return *order > 0;
  }
  if (one.type().IsString()) {
    return host::text::Compare(one.AsString(), other.AsString(), host::text::Comparison::kIgnoreCase) > 0;
  }
  if (host::IsFloating(one.type().kind())) return one.AsDouble() > other.AsDouble();
  if (one.type().StorageKind() == TypeKind::kUInt64) {
    return static_cast<std::uint64_t>(one.AsInteger()) > static_cast<std::uint64_t>(other.AsInteger());
  }
  return one.RawInteger() > other.RawInteger();
}

void RequireOrder(const host::ArrayHandle &list) {
  if (!list.ElementType().IsObject() && !list.ElementType().IsNil()) return;
  throw LibraryError{ExceptionKind::kUnsupportedOperation,
                     "objects have no order of their own; pass a comparison: list.Sort(AddressOf Compare)"};
}

}  // namespace

void SortArray(host::ArrayHandle list) {
  RequireOrder(list);
  std::vector<host::Value> elements = Elements(list);
  MergeSort(elements, IsAfter);
  ReplaceElements(list, elements);
}

void SortArrays(const host::ArrayHandle &list, std::vector<host::ArrayHandle> others) {
  RequireOrder(list);
  for (const host::ArrayHandle &other : others) {
    if (other.Size() == list.Size()) continue;
    throw LibraryError{ExceptionKind::kOutOfBounds,
                       fmt::format("the arrays must have as many elements: {} and {}", list.Size(), other.Size())};
  }
  const std::vector<host::Value> elements = Elements(list);
  std::vector<std::size_t> order(elements.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  MergeSort(order, [&](std::size_t one, std::size_t other) { return IsAfter(elements[one], elements[other]); });
  // One of the others may be the list itself, or come twice: each moves once.
  std::vector<const void *> arranged;
  others.push_back(list);
  for (host::ArrayHandle &other : others) {
    if (std::ranges::find(arranged, other.Get()) != arranged.end()) continue;
    arranged.push_back(other.Get());
    const std::vector<host::Value> before = Elements(other);
    for (std::size_t i = 0; i < order.size(); ++i) other.Set(static_cast<std::int64_t>(i), before[order[i]]);
  }
}

void SortTogether::Compute(Frame &frame) const {
  const host::ArrayHandle list = list_->EvaluateArray(frame);
  std::vector<host::ArrayHandle> others;
  for (const ExpressionPointer &other : others_) others.push_back(other->EvaluateArray(frame));
  TranslateErrors(frame, span, [&] { SortArrays(list, std::move(others)); });
}

void SortWith::Compute(Frame &frame) const {
  host::ArrayHandle list = list_->EvaluateArray(frame);
  std::vector<host::Value> elements = Elements(list);
  const host::Type element = list.ElementType();
  MergeSort(elements, [&](const host::Value &one, const host::Value &other) {
    const auto prepare = [&](Cell *cells) {
      StoreInCell(one, element, cells[1]);
      StoreInCell(other, element, cells[2]);
    };
    return frame.runtime.Call(compare_, &frame, span, prepare, [](Cell *cells) { return cells[0].integer; }) > 0;
  });
  // The comparison may have changed the array's size meanwhile; as many elements are stored as still fit.
  elements.resize(std::min(elements.size(), list.Size()));
  ReplaceElements(list, elements);
}

}  // namespace quillbar::language
