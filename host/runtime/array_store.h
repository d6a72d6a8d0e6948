// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "host/runtime/type.h"
#include "host/runtime/value.h"

namespace quillbar {

/// An array of the host. Plugins see it as the opaque `Array`. The elements of one with several dimensions lie row by
/// row: the last index changes fastest.
struct HostArray {
  host::Type element;
  std::vector<host::Value> values;
  int rank = 1;
  host::ArrayExtents extents{};  // the number of elements in each dimension; unused when there is only one
  std::uint32_t hostReferences = 0;
  std::uint32_t loans = 0;  // plugins may read it during the calls it was handed to
};

}  // namespace quillbar

namespace quillbar::host {

/// Frees an array without references, however deeply arrays are nested in it.
void DestroyArray(Array array);
/// Takes the elements out of all arrays of Variants, so that those which hold each other go.
void ClearVariantArrays();

/// Whether this is the address of a live array that is on loan to a plugin.
bool IsArrayOnLoan(Array array);
/// Counts a loan of the array to a plugin, and its end. Null is ignored.
void LendArray(Array array);
void EndArrayLoan(Array array);

}  // namespace quillbar::host
