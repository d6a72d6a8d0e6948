// SPDX-License-Identifier: MIT
#include "host/language/tree/delegates.h"

#include <iterator>
#include <utility>

#include "host/language/run/error_translation.h"
#include "host/language/run/runtime.h"
#include "host/language/tree/objects.h"
#include "host/language/tree/procedure_call.h"

namespace quillbar::language {
namespace {

// The fields of a delegate.
constexpr std::size_t kObject = 0;
constexpr std::size_t kProcedure = 1;

/// The procedure that a method is for this object.
const Procedure &ProcedureOf(const host::MethodInfo &method, const host::ObjectHandle &object) {
  return static_cast<const Procedure &>(*(object ? object.Class().dispatch[method.slot] : method.code));
}

}  // namespace

host::ObjectHandle AddressNode::EvaluateObject(Frame &frame) const {
  frame.runtime.Raise(frame, span, ExceptionKind::kTypeMismatch, "\"AddressOf\" needs a variable of a delegate");
}

host::ObjectHandle DelegateNode::Compute(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, method_.name);
  const host::ClassInfo &info = *type.objectClass();
  host::ObjectHandle delegate =
      TranslateErrors(frame, span, [&] { return frame.runtime.Host().Create(info, nullptr, {}); });
  Cell *const fields = FieldsOf(delegate.Get(), info);
  fields[kObject].SetObject(object);
  fields[kProcedure].integer = reinterpret_cast<std::intptr_t>(&ProcedureOf(method_, object));
  return delegate;
}

host::Value IndirectCall::Get(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, method_.name);
  std::vector<host::Value> values = EvaluateAll(frame, arguments_);
  host::Value result = Invoke(frame, object, values);
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!method_.parameters[i].byRef) continue;
    static_cast<const Lvalue &>(*arguments_[i]).AssignValue(frame, values[i]);
  }
  return result;
}

host::ArrayHandle IndirectCall::EvaluateArray(Frame &frame) const {
  host::ArrayHandle result = Get(frame).AsArray();
  return result ? result : host::ArrayHandle::Create(type.Element());
}

host::Value DelegateCall::Invoke(Frame &frame, const host::ObjectHandle &object, std::span<host::Value> values) const {
  const Cell *const fields = FieldsOf(object.Get(), *method_.owner);
  const auto &procedure = *reinterpret_cast<const Procedure *>(static_cast<std::intptr_t>(fields[kProcedure].integer));
  return CallWithValues(frame.runtime, &frame, span, procedure, fields[kObject].ObjectValue(), method_.parameters,
                        values);
}

host::Value RaiseEventCall::Invoke(Frame &frame, const host::ObjectHandle &object,
                                   std::span<host::Value> values) const {
  const Runtime::PluginCall call(frame.runtime, frame, span);
  if (const host::EventHandler handler = frame.runtime.Host().EventHandlerOf(object, *method_.raises)) {
    return handler(object, values);
  }
  const host::MemberCode *code = object.Class().dispatch[method_.slot];
  if (code == nullptr) return host::Value::Zero(method_.result);
  return CallWithValues(frame.runtime, &frame, span, static_cast<const Procedure &>(*code), object, method_.parameters,
                        values);
}

Flow BoundHandlerStatement::Execute(Frame &frame) const {
  const host::ObjectHandle sender = ObjectOrRaise(frame, sender_, span_, event_.name);
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span_, method_.name);
  Runtime &runtime = frame.runtime;
  const auto handle = [&runtime, alive = runtime.Liveness(), object, &method = method_, &event = event_](
                          const host::ObjectHandle &from, std::span<host::Value> arguments) {
    if (alive.expired()) return host::Value::Zero(event.result);
    const Runtime::PluginCall *call = runtime.CurrentPluginCall();
    std::vector<host::Value> values = {host::Value(from)};
    values.insert(values.end(), arguments.begin(), arguments.end());
    host::Value result =
        CallWithValues(runtime, call == nullptr ? nullptr : &call->frame(), call == nullptr ? Span() : call->span(),
                       ProcedureOf(method, object), object, method.parameters, values);
    std::move(std::next(values.begin()), values.end(), arguments.begin());
    return result;
  };
  TranslateErrors(frame, span_, [&] { runtime.Host().SetEventHandler(sender, event_, handle); });
  return Flow::kNext;
}

}  // namespace quillbar::language
