// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/tree/code.h"

namespace quillbar::language {

/// Sorts an array of numbers, texts (without regard to case), Booleans, colours or enumerations in ascending order.
/// Equal elements keep their order.
void SortArray(host::ArrayHandle list);

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

}  // namespace quillbar::language
