// SPDX-License-Identifier: MIT
#include "plugin/script/uint16_array.h"

#include "binding/service.h"

namespace quillbar {

namespace {

std::size_t SizeOf(Array array) {
  if (array == nullptr) return 0;
  const std::intptr_t upperBound = CallHost<service::UBound>(array);
  return upperBound < 0 ? 0 : static_cast<std::size_t>(upperBound) + 1;
}

/// The host's element getter; null also when the host can't tell how many elements there are. Hosts offer the
/// service under one of two names; older ones have the second.
UInt16ElementGetter GetterOf(Array array) {
  if (HostSlot<service::UBound>::Resolve() == nullptr) return nullptr;
  const auto getterOf = HostSlot<service::UInt16ArrayGetter>::ResolveEither<service::ArrayDirectGetter>();
  return getterOf != nullptr ? reinterpret_cast<UInt16ElementGetter>(getterOf(array)) : nullptr;
}

}  // namespace

UInt16Array::UInt16Array(ArrayOf<std::uint16_t> *array)
    : array_(reinterpret_cast<Array>(array)),
      size_(SizeOf(array_)),
      getter_(array_ != nullptr ? GetterOf(array_) : nullptr) {}

}  // namespace quillbar
