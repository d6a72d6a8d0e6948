// SPDX-License-Identifier: MIT
#include "host/runtime/native_class.h"

#include "host/runtime/internals.h"

namespace quillbar::host::native {

void Postpone(std::exception_ptr error) {
  Internals &internals = Internals::Current();
  if (internals.pending == nullptr) internals.pending = std::move(error);
}

String Give(const StringHandle &string) { return Internals::Current().ledger.Give(string.Get()); }

Variant Give(Value value) { return reinterpret_cast<Variant>(new Value(std::move(value))); }

Value TakeVariant(Variant variant) {
  const std::unique_ptr<Value> owned(reinterpret_cast<Value *>(variant));
  return owned ? std::move(*owned) : Value::Nil();
}

Object Give(const ObjectHandle &object) { return Internals::Current().objects.Give(object.Get()); }

}  // namespace quillbar::host::native
