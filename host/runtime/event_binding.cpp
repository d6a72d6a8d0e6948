// SPDX-License-Identifier: MIT
#include "host/runtime/event_binding.h"

#include <fmt/format.h>

#include <cstring>
#include <new>
#include <vector>

#include "host/runtime/array_store.h"
#include "host/runtime/internals.h"
#include "platform/sanitizers.h"

namespace quillbar::host {
namespace {

constexpr std::string_view kOperation = "raising the event";

}  // namespace

EventBinding::EventBinding(Host &host, Object object, const EventInfo &event, EventHandler handler)
    : host_(host),
      object_(object),
      event_(event),
      handler_(std::move(handler)),
      interface_(event.parameters, event.result, true) {
  closure_ = static_cast<ffi_closure *>(ffi_closure_alloc(sizeof(ffi_closure), &address_));
  if (closure_ == nullptr) throw std::bad_alloc();
  if (ffi_prep_closure_loc(closure_, interface_.get(), &EventBinding::Enter, this, address_) != FFI_OK) {
    ffi_closure_free(closure_);
    throw std::logic_error("libffi can't make a closure");
  }
}

EventBinding::~EventBinding() { ffi_closure_free(closure_); }

void EventBinding::Enter(ffi_cif *cif, void *result, void **arguments, void *binding) {
  // libffi stored them. Whether the plugin had set their values was checked where it made the call.
  MarkAsSet(arguments, cif->nargs * sizeof *arguments);
  for (unsigned i = 0; i < cif->nargs; ++i) MarkAsSet(arguments[i], cif->arg_types[i]->size);
  // Kept alive: the handler may detach itself.
  const auto self = static_cast<EventBinding *>(binding)->shared_from_this();
  self->Raise(result, arguments);
}

void EventBinding::Raise(void *result, void **arguments) {
  Internals &internals = Internals::Of(host_);
  const ReferenceLedger::Frame frame(internals.ledger, {RunningMember::Part::kEvent, &event_});
  WriteResult(Value::Zero(event_.result), result);
  // An exception can't pass through the plugin's frames; until the plugin has returned, nothing else runs.
  if (internals.pending != nullptr) return;

  Object sender = nullptr;
  std::memcpy(&sender, arguments[0], sizeof sender);
  if (sender != object_) {
    internals.ledger.Note(
        ViolationKind::kBadArgument,
        fmt::format("{} {} for another object than the one it was looked up for", kOperation, event_.name));
    return;
  }
  ++internals.ledger.counters.eventsRaised;
  try {
    const ObjectHandle senderHandle(object_);
    std::vector<Value> values;
    values.reserve(event_.parameters.size());
    for (std::size_t i = 0; i < event_.parameters.size(); ++i) {
      const ParameterInfo &parameter = event_.parameters[i];
      void *place = arguments[i + 1];
      if (parameter.byRef) std::memcpy(&place, arguments[i + 1], sizeof place);
      values.push_back(ReadArgument(parameter, place));
    }
    Value returned = handler_(senderHandle, values);
    for (std::size_t i = 0; i < event_.parameters.size(); ++i) {
      const ParameterInfo &parameter = event_.parameters[i];
      if (!parameter.byRef || parameter.type.IsReference()) continue;
      void *place = nullptr;
      std::memcpy(&place, arguments[i + 1], sizeof place);
      StoreForeign(values[i].ConvertedTo(parameter.type), parameter.type, place);
    }
    if (!event_.result.IsNone() && !returned.type().IsNone()) {
      WriteResult(returned.ConvertedTo(event_.result), result);
    }
  } catch (...) {
    internals.pending = std::current_exception();
  }
}

Value EventBinding::ReadArgument(const ParameterInfo &parameter, const void *place) {
  Internals &internals = Internals::Of(host_);
  if (!parameter.type.IsReference()) return LoadForeign(parameter.type, place);
  void *pointer = nullptr;
  std::memcpy(&pointer, place, sizeof pointer);
  if (pointer == nullptr) return Value::Zero(parameter.type);
  if (parameter.type.IsString()) {
    const auto string = static_cast<String>(pointer);
    return internals.ledger.MayUse(string, kOperation) ? Value(StringHandle(string)) : Value::Zero(parameter.type);
  }
  if (parameter.type.IsObject()) {
    const auto object = static_cast<Object>(pointer);
    if (!internals.objects.MayUse(object, kOperation)) return Value::Zero(parameter.type);
    return Value(ObjectHandle(object)).ConvertedTo(parameter.type);
  }
  const auto array = static_cast<Array>(pointer);
  return IsArrayOnLoan(array) ? Value(ArrayHandle(array)) : Value::Zero(parameter.type);
}

void EventBinding::WriteResult(const Value &value, void *result) {
  const Type type = event_.result;
  if (type.IsNone()) return;
  ForeignResult widened;
  if (type.IsString()) {
    widened.pointer = Internals::Of(host_).ledger.Give(static_cast<String>(value.RawPointer()));
  } else if (type.IsObject()) {
    widened.pointer = Internals::Of(host_).objects.Give(static_cast<Object>(value.RawPointer()));
  } else {
    switch (type.StorageKind()) {
      case TypeKind::kSingle:
        widened.single = value.RawSingle();
        break;
      case TypeKind::kDouble:
        widened.real = value.RawDouble();
        break;
      case TypeKind::kPtr:
        widened.pointer = value.RawPointer();
        break;
      case TypeKind::kInt64:
      case TypeKind::kUInt64:
      case TypeKind::kCurrency:
        widened.int64 = value.RawInteger();
        break;
      default:
        widened.word = static_cast<ffi_arg>(value.RawInteger());
        break;
    }
  }
  const std::size_t size = interface_.get()->rtype->size;
  const bool isReal = type.StorageKind() == TypeKind::kSingle || type.StorageKind() == TypeKind::kDouble;
  std::memcpy(result, &widened, isReal || size > sizeof(ffi_arg) ? size : sizeof(ffi_arg));
}

}  // namespace quillbar::host
