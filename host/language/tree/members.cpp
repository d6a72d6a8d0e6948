// SPDX-License-Identifier: MIT
#include "host/language/tree/members.h"

#include <algorithm>
#include <utility>

#include "host/language/run/error_translation.h"
#include "host/language/run/runtime.h"
#include "host/language/tree/procedure_call.h"
#include "host/language/tree/program.h"

namespace quillbar::language {
namespace {

/// Calls into a plugin and notes the call, so that handlers which run meanwhile know what led to them.
template <class Work>
auto InPlugin(Frame &frame, Span span, Work work) {
  const Runtime::PluginCall call(frame.runtime, frame, span);
  return TranslateErrors(frame, span, work);
}

}  // namespace

host::ObjectHandle ObjectOrRaise(Frame &frame, const ExpressionPointer &object, Span span, std::string_view member) {
  if (!object) return {};
  host::ObjectHandle handle = object->EvaluateObject(frame);
  if (handle.IsNil()) RaiseUsedOnNil(frame, span, member);
  return handle;
}

std::vector<host::Value> EvaluateAll(Frame &frame, const std::vector<ExpressionPointer> &expressions) {
  std::vector<host::Value> values;
  values.reserve(expressions.size());
  for (const ExpressionPointer &expression : expressions) values.push_back(expression->Evaluate(frame));
  return values;
}

void AddArgument(Frame &frame, const Expression &expression, host::MemberCall &call) {
  switch (expression.representation) {
    case Representation::kReal:
      call.AddReal(expression.EvaluateReal(frame));
      break;
    case Representation::kText:
      call.Add(expression.EvaluateText(frame));
      break;
    case Representation::kObject:
      call.Add(expression.EvaluateObject(frame));
      break;
    case Representation::kArray:
      call.Add(expression.EvaluateArray(frame));
      break;
    case Representation::kVariant:
      call.AddVariant(expression.EvaluateVariant(frame));
      break;
    default:
      call.AddInteger(expression.EvaluateInteger(frame));
      break;
  }
}

host::EventHandler MakeEventHandler(Runtime &runtime, const Procedure &procedure, const host::EventInfo &event) {
  return [&runtime, alive = runtime.Liveness(), &procedure, &event](const host::ObjectHandle &sender,
                                                                    std::span<host::Value> arguments) {
    if (alive.expired()) return host::Value::Zero(event.result);
    const Runtime::PluginCall *call = runtime.CurrentPluginCall();
    const Frame *caller = call == nullptr ? nullptr : &call->frame();
    return CallWithValues(runtime, caller, call == nullptr ? Span() : call->span(), procedure, sender, event.parameters,
                          arguments);
  };
}

MethodCall::MethodCall(Span where, const host::MethodInfo &method, ExpressionPointer object,
                       std::vector<ExpressionPointer> arguments)
    : Computed(method.result, where), method_(method), object_(std::move(object)), arguments_(std::move(arguments)) {
  hasByRef_ = std::ranges::any_of(method.parameters, &host::ParameterInfo::byRef);
}

host::Value MethodCall::Compute(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, method_.name);
  if (hasByRef_) return CallByRef(frame, object);
  host::Host &host = frame.runtime.Host();
  host::MemberCall call(function_.Get([&]() -> auto & { return host.Prepare(method_); }));
  for (const ExpressionPointer &argument : arguments_) AddArgument(frame, *argument, call);
  return InPlugin(frame, span, [&] { return call.Run(host, object); });
}

host::Value MethodCall::CallByRef(Frame &frame, const host::ObjectHandle &object) const {
  std::vector<host::Value> values = EvaluateAll(frame, arguments_);
  host::Value result = InPlugin(frame, span, [&] { return frame.runtime.Host().Invoke(method_, object, values); });
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!method_.parameters[i].byRef) continue;
    static_cast<const Lvalue &>(*arguments_[i]).AssignValue(frame, values[i]);
  }
  return result;
}

host::Value PropertyLvalue::Get(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, property_.name);
  if (property_.computes != nullptr) {
    return CallWithValues(frame.runtime, &frame, span, CodeOf(*property_.computes), object, {}, {});
  }
  host::Host &host = frame.runtime.Host();
  return InPlugin(frame, span, [&] {
    host::MemberCall call(getter_.Get([&]() -> auto & { return host.PrepareGetter(property_); }));
    return call.Run(host, object);
  });
}

/// Calls the setter with the value that `add` adds to the call.
template <class Add>
void PropertyLvalue::Set(Frame &frame, const host::ObjectHandle &object, Add add) const {
  host::Host &host = frame.runtime.Host();
  InPlugin(frame, span, [&] {
    host::MemberCall call(setter_.Get([&]() -> auto & { return host.PrepareSetter(property_); }));
    call.AddInteger(property_.parameter);
    add(call);
    call.Run(host, object);
  });
}

void PropertyLvalue::Assign(Frame &frame, const Expression &value) const {
  // The value comes before the object. Numbers need no Value on their way.
  if (property_.accepts != nullptr || IsOwning(representation)) {
    AssignValue(frame, value.Evaluate(frame));
  } else if (representation == Representation::kReal) {
    const double number = value.EvaluateReal(frame);
    Set(frame, ObjectOrRaise(frame, object_, span, property_.name),
        [&](host::MemberCall &call) { call.AddReal(number); });
  } else {
    const std::int64_t number = value.EvaluateInteger(frame);
    Set(frame, ObjectOrRaise(frame, object_, span, property_.name),
        [&](host::MemberCall &call) { call.AddInteger(number); });
  }
}

void PropertyLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, property_.name);
  if (property_.accepts != nullptr) {
    host::Value passed = value;
    CallWithValues(frame.runtime, &frame, span, CodeOf(*property_.accepts), object, property_.accepts->parameters,
                   {&passed, 1});
    return;
  }
  Set(frame, object, [&](host::MemberCall &call) { call.Add(value); });
}

void MethodLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, method_.name);
  host::Host &host = frame.runtime.Host();
  host::MemberCall call(setter_.Get([&]() -> auto & { return host.PrepareSetter(method_); }));
  for (const ExpressionPointer &argument : arguments_) AddArgument(frame, *argument, call);
  call.Add(value);
  InPlugin(frame, span, [&] { call.Run(host, object); });
}

host::ObjectHandle NewObject::Compute(Frame &frame) const {
  std::vector<host::Value> values = EvaluateAll(frame, arguments_);
  return InPlugin(frame, span, [&] { return frame.runtime.Host().Create(info_, constructor_, values); });
}

bool IsANode::Compute(Frame &frame) const {
  const host::Value value = object_->Evaluate(frame);
  if (!value.type().IsObject()) return false;
  const host::ObjectHandle object = value.AsObject();
  return object && object.Class().IsSubclassOf(info_);
}

Flow HandlerStatement::Execute(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span_, event_.name);
  host::EventHandler handler;
  if (handler_ != nullptr) handler = MakeEventHandler(frame.runtime, *handler_, event_);
  TranslateErrors(frame, span_, [&] { frame.runtime.Host().SetEventHandler(object, event_, std::move(handler)); });
  return Flow::kNext;
}

}  // namespace quillbar::language
