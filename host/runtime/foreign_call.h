// SPDX-License-Identifier: MIT
#pragma once

#include <ffi.h>

#include <cstdint>
#include <span>
#include <vector>

#include "host/runtime/class_model.h"
#include "host/runtime/value.h"

/// How script values travel through C calls that are put together at run time, with libffi.
namespace quillbar::host {

/// Room for one argument in its C form. ByRef arguments are the address of such a slot.
union ForeignSlot {
  std::int8_t int8;
  std::int16_t int16;
  std::int32_t int32;
  std::int64_t int64 = 0;
  float single;
  double real;
  void *pointer;
};

/// Room for a result: libffi widens integers that are smaller than a register.
union ForeignResult {
  ffi_arg word = 0;
  std::int64_t int64;
  float single;
  double real;
  void *pointer;
};

/// The libffi type of a script type; void for no type.
ffi_type *ForeignTypeOf(Type type);

/// Puts a value, which must have exactly this type already, into its C form. References are borrowed.
void StoreForeign(const Value &value, Type type, void *place);

/// Numbers, Booleans, colours, enumerations and Ptr from their C form at `place`. Types that hold
/// references are the caller's to read, because they come with ownership.
Value LoadForeign(Type type, const void *place);

/// A plain number result in its widened form.
Value LoadForeignResult(Type type, const ForeignResult &result);

/// The prepared description of a C function: optional instance first, then the parameters.
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

}  // namespace quillbar::host
