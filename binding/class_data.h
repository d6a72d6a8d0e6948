// SPDX-License-Identifier: MIT
#pragma once

#include "interface/records.h"

namespace quillbar {

/// The private data block of an instance. `Data` names its class record as `Data::definition`, whose offset the host
/// wrote at registration. Nothing is checked and the host isn't called: the instance must not be null and must be of
/// that class or of a subclass.
template <class Data>
Data *ClassData(Object instance) {
  return reinterpret_cast<Data *>(reinterpret_cast<char *>(instance) + Data::definition.classDataOffset);
}

}  // namespace quillbar
