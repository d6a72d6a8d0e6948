// SPDX-License-Identifier: MIT
#pragma once

#include "binding/service.h"

namespace quillbar {

/// A class of the host, looked up by its qualified name on first use and kept for the life of the
/// process. A name that the host doesn't know is asked for again at the next use.
template <FixedString QualifiedName>
class ClassReference {
 public:
  /// The host's reference to the class; null when the host doesn't know the name.
  static ClassRef Get() {
    if (reference_ == nullptr) reference_ = CallHost<service::ObjectType>(QualifiedName.CString());
    return reference_;
  }

  /// Forgets the class, so that the next use looks it up again.
  static void Clear() { reference_ = nullptr; }

 private:
  inline static ClassRef reference_ = nullptr;
};

/// A new instance of the class, which belongs to the caller; null when there is no such class.
template <FixedString QualifiedName>
Object CreateInstance() {
  const ClassRef reference = ClassReference<QualifiedName>::Get();
  return reference != nullptr ? CallHost<service::CreateInstance>(reference) : nullptr;
}

}  // namespace quillbar
