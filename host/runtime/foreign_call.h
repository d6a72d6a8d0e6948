// SPDX-License-Identifier: MIT
#pragma once

#include <ffi.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/runtime/class_model.h"
#include "host/runtime/foreign_slot.h"
#include "host/runtime/value.h"

/// How script values travel through C calls that are put together at run time, with libffi.
namespace quillbar::host {

/// Room for a result: libffi widens integers that are smaller than a register.
union ForeignResult {
  ffi_arg word = 0;
  std::int64_t int64;
  float single;
  double real;
  void *pointer;
};

/// The libffi type of a script type; void for the type "none".
ffi_type *ForeignTypeOf(Type type);

/// Stores a value in its C form at `place`. The value must already have exactly the type `type`. References are
/// borrowed.
void StoreForeign(const Value &value, Type type, void *place);

/// Loads a number, Boolean, colour, enumeration or Ptr from its C form at `place`. Types that hold references are left
/// to the caller, because they come with ownership.
Value LoadForeign(Type type, const void *place);

/// Loads a result that is not a reference from its widened form.
Value LoadForeignResult(Type type, const ForeignResult &result);

/// The prepared description of a C function: the instance first if there is one, then the parameters.
class CallInterface {
 public:
  CallInterface(std::span<const ParameterInfo> parameters, Type result, bool hasInstance);
  CallInterface(const CallInterface &) = delete;
  CallInterface &operator=(const CallInterface &) = delete;

  ffi_cif *get() { return &cif_; }

 private:
  std::vector<ffi_type *> types_;
  ffi_cif cif_{};
};

/// Calls a function whose arguments, after the instance, are in `slots`, and stores what it gives, if anything.
using DirectCall = void (*)(FunctionAddress address, Object instance, const ForeignSlot *slots, ForeignResult &result);

/// A direct call for functions of this shape; null when there is none, and libffi must put the call together. That takes
/// as long as a short member itself, so the shapes that most calls have are compiled: real numbers, a reference, and
/// what setters take; no result, a reference, a Single or an Integer. ByRef parameters have none.
DirectCall FindDirectCall(std::span<const ForeignForm> forms, std::optional<ForeignForm> result);

}  // namespace quillbar::host
