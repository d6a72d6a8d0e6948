// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "host/runtime/type.h"
#include "host/runtime/value.h"

namespace quillbar {

/// An array of the host. Plugins see it as the opaque `Array`.
struct HostArray {
  host::Type element;
  std::vector<host::Value> values;
  std::uint32_t hostReferences = 0;
  std::uint32_t loans = 0;  // plugins may read it during the calls it was handed to
};

}  // namespace quillbar

namespace quillbar::host {

/// Whether this is the address of a live array that is on loan to a plugin.
bool IsArrayOnLoan(Array array);
/// Counts a loan of the array to a plugin, and its end. Null is ignored.
void LendArray(Array array);
void EndArrayLoan(Array array);

}  // namespace quillbar::host
