// SPDX-License-Identifier: MIT
#include "host/runtime/plugin_call.h"

#include <fmt/format.h>

#include <array>
#include <cstring>

#include "host/runtime/array_store.h"
#include "host/runtime/native_class.h"

namespace quillbar::host {
namespace {

/// Lends an argument to the plugin while it lives. It holds a reference of its own, because script code called in
/// between may change the variable that the argument came from.
class ArgumentLoan {
 public:
  ArgumentLoan(Internals &internals, const Value &value) : internals_(internals), value_(value) {
    if (value_.type().IsString()) internals_.ledger.Lend(string());
    if (value_.type().IsObject()) internals_.objects.Lend(object());
    if (value_.type().IsArray()) LendArray(array());
  }
  ArgumentLoan(ArgumentLoan &&other) noexcept : internals_(other.internals_), value_(std::move(other.value_)) {}
  ArgumentLoan &operator=(const ArgumentLoan &) = delete;
  ~ArgumentLoan() {
    if (value_.type().IsString()) internals_.ledger.EndLoan(string());
    if (value_.type().IsObject()) internals_.objects.EndLoan(object());
    if (value_.type().IsArray()) EndArrayLoan(array());
  }

 private:
  String string() const { return static_cast<String>(value_.RawPointer()); }
  Object object() const { return static_cast<Object>(value_.RawPointer()); }
  Array array() const { return static_cast<Array>(value_.RawPointer()); }

  Internals &internals_;
  Value value_;
};

/// Takes over a reference that the plugin hands over: it moves from the plugin's count to the host's.
Value TakeReference(Host &host, Type type, void *pointer) {
  if (type.IsVariant()) return native::TakeVariant(static_cast<Variant>(pointer));
  if (pointer == nullptr) return Value::Zero(type);
  if (type.IsString()) return Value(host.TakeResult(static_cast<String>(pointer)));
  if (type.IsObject()) {
    const ObjectHandle object = host.TakeResult(static_cast<Object>(pointer));
    if (object.IsNil()) return Value::Zero(type);
    if (type.objectClass() != nullptr && !object.Class().IsSubclassOf(*type.objectClass())) {
      Internals::Of(host).ledger.Note(
          ViolationKind::kBadArgument,
          fmt::format("an object of class {} was returned where {} is declared", object.Class().name, type.Name()));
      return Value::Zero(type);
    }
    return Value(object);
  }
  Internals::Of(host).ledger.Note(ViolationKind::kBadArgument, "an array was returned, which no service can make");
  return Value::Zero(type);
}

}  // namespace

Value CallPlugin(Host &host, ForeignFunction &function, const ObjectHandle &object, std::span<Value> arguments) {
  Internals &internals = Internals::Of(host);
  const std::size_t count = function.parameters.size();

  std::vector<ForeignSlot> slots(count);
  std::vector<void *> addresses(count);
  std::vector<void *> cArguments;
  std::vector<ArgumentLoan> loans;
  cArguments.reserve(count + 1);
  loans.reserve(count + 1);

  Object self = object.Get();
  if (function.hasInstance) {
    loans.emplace_back(internals, Value(object));
    cArguments.push_back(&self);
  }
  for (std::size_t i = 0; i < count; ++i) {
    const ParameterInfo &parameter = function.parameters[i];
    StoreForeign(arguments[i], parameter.type, &slots[i]);
    if (parameter.type.IsReference()) loans.emplace_back(internals, arguments[i]);
    addresses[i] = &slots[i];
    cArguments.push_back(parameter.byRef ? static_cast<void *>(&addresses[i]) : static_cast<void *>(&slots[i]));
  }

  ForeignResult raw;
  Value result;
  {
    const ReferenceLedger::Frame frame(internals.ledger, function.member);
    ffi_call(function.interface->get(), function.address, &raw, cArguments.data());
    result = function.result.IsReference() || function.result.IsVariant()
                 ? TakeReference(host, function.result, raw.pointer)
                 : LoadForeignResult(function.result, raw);
    for (std::size_t i = 0; i < count; ++i) {
      const ParameterInfo &parameter = function.parameters[i];
      if (!parameter.byRef) continue;
      if (!parameter.type.IsReference()) {
        arguments[i] = LoadForeign(parameter.type, &slots[i]);
      } else if (slots[i].pointer != arguments[i].RawPointer()) {
        // The plugin stored a reference of its own; the old one was only lent.
        arguments[i] = TakeReference(host, parameter.type, slots[i].pointer);
      }
    }
  }
  internals.EndProgress(host.options());
  internals.RethrowPending();
  return result;
}

}  // namespace quillbar::host
