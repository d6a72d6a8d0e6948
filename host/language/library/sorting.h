// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "host/language/tree/code.h"

namespace quillbar::language {

/// Sorts an array of numbers, texts (without regard to case), Booleans, colours or enumerations in ascending order.
/// Equal elements keep their order.
void SortArray(host::ArrayHandle list);

/// Sorts the first array, and has the elements of the others move along. All must have as many elements.
void SortArrays(const host::ArrayHandle &list, std::vector<host::ArrayHandle> others);

/// Sorts by a comparison, for `list.Sort(AddressOf compare)`: the function returns a number below, equal to or above
/// 0.
class SortWith final : public Computed<void, SortWith> {
 public:
  SortWith(Span where, ExpressionPointer list, const Procedure &compare)
      : Computed(host::Type(), where), list_(std::move(list)), compare_(compare) {}
  void Compute(Frame &frame) const;

 private:
  ExpressionPointer list_;
  const Procedure &compare_;
};

/// `list.SortWith(others…)`, with arrays of any types.
class SortTogether final : public Computed<void, SortTogether> {
 public:
  SortTogether(Span where, ExpressionPointer list, std::vector<ExpressionPointer> others)
      : Computed(host::Type(), where), list_(std::move(list)), others_(std::move(others)) {}
  void Compute(Frame &frame) const;

 private:
  ExpressionPointer list_;
  std::vector<ExpressionPointer> others_;
};

}  // namespace quillbar::language
