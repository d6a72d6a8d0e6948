// SPDX-License-Identifier: MIT
#include "host/runtime/plugin_call.h"

#include <fmt/format.h>

#include <bit>

#include "host/runtime/array_store.h"
#include "host/runtime/foreign_call.h"
#include "host/runtime/internals.h"
#include "host/runtime/native_class.h"
#include "platform/sanitizers.h"

namespace quillbar::host {
namespace {

void Lend(Internals &internals, String string) { internals.ledger.Lend(string); }
void Lend(Internals &internals, Object object) { internals.objects.Lend(object); }
void Lend(Internals &, Array array) { LendArray(array); }
void EndLoan(Internals &internals, String string) { internals.ledger.EndLoan(string); }
void EndLoan(Internals &internals, Object object) { internals.objects.EndLoan(object); }
void EndLoan(Internals &, Array array) { EndArrayLoan(array); }
// Only the host's own classes take Variants, as the values that they are.
void Lend(Internals &, Value *) {}
void EndLoan(Internals &, Value *) {}

void Release(Value *variant) { delete variant; }

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

ForeignFunction::ForeignFunction(RunningMember called, FunctionAddress at, bool takesInstance,
                                 std::vector<ParameterInfo> taken, Type given)
    : member(called), address(at), hasInstance(takesInstance), parameters(std::move(taken)), result(given) {
  for (const ParameterInfo &parameter : parameters) {
    forms.push_back(ForeignFormOf(parameter.type));
    hasByRef = hasByRef || parameter.byRef;
  }
  if (hasInstance && !hasByRef) {
    direct = FindDirectCall(forms, result.IsNone() ? std::nullopt : std::optional(ForeignFormOf(result)));
  }
  interface = std::make_unique<CallInterface>(parameters, result, hasInstance);
}

ForeignFunction::~ForeignFunction() = default;

void MemberCall::Add(const Value &value) {
  switch (NextForm()) {
    case ForeignForm::kSingle:
    case ForeignForm::kDouble:
      AddReal(value.RawReal());
      break;
    case ForeignForm::kString:
      Add(value.AsString());
      break;
    case ForeignForm::kObject:
      Add(value.AsObject());
      break;
    case ForeignForm::kArray:
      Add(value.AsArray());
      break;
    case ForeignForm::kVariant:
      AddVariant(value);
      break;
    default:
      AddInteger(value.RawInteger());
      break;
  }
}

void MemberCall::AddVariant(Value value) { AddReference(new Value(std::move(value))); }

/// Calls `visit` with each string, object, array and Variant among the arguments.
template <class Visitor>
void MemberCall::ForEachReference(Visitor visit) const {
  for (std::uint32_t left = references_; left != 0; left &= left - 1) {
    const auto index = static_cast<std::size_t>(std::countr_zero(left));
    if (owned_[index] == nullptr) continue;
    switch (function_.forms[index]) {
      case ForeignForm::kString:
        visit(static_cast<String>(owned_[index]));
        break;
      case ForeignForm::kObject:
        visit(static_cast<Object>(owned_[index]));
        break;
      case ForeignForm::kArray:
        visit(static_cast<Array>(owned_[index]));
        break;
      default:
        visit(static_cast<Value *>(owned_[index]));
        break;
    }
  }
}

void MemberCall::ReleaseReferences() const {
  ForEachReference([](auto reference) { Release(reference); });
}

Value MemberCall::Run(Host &host, const ObjectHandle &object, std::span<Value> changed) {
  struct Loans {
    MemberCall &call;
    Internals &internals;
    Object self;
    Loans(MemberCall &lender, Internals &host, Object receiver) : call(lender), internals(host), self(receiver) {
      internals.objects.Lend(self);
      if (call.references_ != 0) call.ForEachReference([&](auto reference) { Lend(internals, reference); });
    }
    ~Loans() {
      if (call.references_ != 0) call.ForEachReference([&](auto reference) { EndLoan(internals, reference); });
      internals.objects.EndLoan(self);
    }
    Loans(const Loans &) = delete;
    Loans &operator=(const Loans &) = delete;
  };
  Internals &internals = Internals::Of(host);
  const Loans loans(*this, internals, object.Get());
  Value result;
  {
    const ReferenceLedger::Frame frame(internals.ledger, function_.member);
    ForeignResult raw;
    if (function_.direct != nullptr) {
      function_.direct(function_.address, object.Get(), slots_.data(), raw);
    } else {
      RunThroughLibrary(object.Get(), raw);
    }
    result = function_.result.IsReference() || function_.result.IsVariant()
                 ? TakeReference(host, function_.result, raw.pointer)
                 : LoadForeignResult(function_.result, raw);
    if (function_.hasByRef) TakeChanged(host, changed);
  }
  internals.EndProgress(host.options());
  internals.RethrowPending();
  return result;
}

void MemberCall::RunThroughLibrary(Object self, ForeignResult &result) {
  std::array<void *, kMostArguments + 1> addresses;
  std::array<void *, kMostArguments> slotAddresses;
  std::size_t used = 0;
  if (function_.hasInstance) addresses[used++] = &self;
  for (std::size_t i = 0; i < count_; ++i) {
    addresses[used] = &slots_[i];
    if (function_.hasByRef && function_.parameters[i].byRef) {
      slotAddresses[i] = &slots_[i];
      addresses[used] = &slotAddresses[i];
    }
    ++used;
  }
  ffi_call(function_.interface->get(), function_.address, &result, addresses.data());
  MarkAsSet(&result, sizeof result);  // libffi stored it, after a check where the function returned
}

void MemberCall::TakeChanged(Host &host, std::span<Value> changed) {
  for (std::size_t i = 0; i < changed.size(); ++i) {
    const ParameterInfo &parameter = function_.parameters[i];
    if (!parameter.byRef) continue;
    if (!parameter.type.IsReference()) {
      changed[i] = LoadForeign(parameter.type, &slots_[i]);
    } else if (slots_[i].pointer != owned_[i]) {
      // The plugin stored a reference of its own; the old one was only lent.
      changed[i] = TakeReference(host, parameter.type, slots_[i].pointer);
    }
  }
}

Value CallPlugin(Host &host, const ForeignFunction &function, const ObjectHandle &object, std::span<Value> arguments) {
  MemberCall call(function);
  for (const Value &argument : arguments) call.Add(argument);
  return call.Run(host, object, arguments);
}

}  // namespace quillbar::host
