// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "host/runtime/type.h"

namespace quillbar::host {

/// The form that a value has in C.
enum class ForeignForm : std::uint8_t {
  kInt8,
  kInt16,
  kInt32,
  kInt64,
  kSingle,
  kDouble,
  kPtr,
  kString,
  kObject,
  kArray,
  kVariant,  // the address of a Value
};

/// The form of a script type's values. Signed and unsigned integers of one width have one form.
ForeignForm ForeignFormOf(Type type);

/// Whether values of this form own something.
constexpr bool IsOwning(ForeignForm form) { return form >= ForeignForm::kString; }

/// Room for one argument in its C form. ByRef arguments are the address of such a slot. Nothing is in it at first.
union ForeignSlot {
  std::int8_t int8;
  std::int16_t int16;
  std::int32_t int32;
  std::int64_t int64;
  float single;
  double real;
  void *pointer;

  /// Stores an integer, Boolean, Color or enumeration, or a Ptr by its bits.
  void PutInteger(ForeignForm form, std::int64_t number) {
    switch (form) {
      case ForeignForm::kInt8:
        int8 = static_cast<std::int8_t>(number);
        break;
      case ForeignForm::kInt16:
        int16 = static_cast<std::int16_t>(number);
        break;
      case ForeignForm::kInt32:
        int32 = static_cast<std::int32_t>(number);
        break;
      case ForeignForm::kInt64:
        int64 = number;
        break;
      default:
        pointer = reinterpret_cast<void *>(static_cast<std::intptr_t>(number));
        break;
    }
  }

  /// Stores a Single or Double.
  void PutReal(ForeignForm form, double number) {
    if (form == ForeignForm::kSingle) {
      single = static_cast<float>(number);
    } else {
      real = number;
    }
  }
};

}  // namespace quillbar::host
