// SPDX-License-Identifier: MIT
#include "host/language/tree/members.h"

#include <fmt/format.h>

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
  if (handle.IsNil()) {
    frame.runtime.Raise(frame, span, ExceptionKind::kNilObject, fmt::format("\"{}\" was used on Nil", member));
  }
  return handle;
}

std::vector<host::Value> EvaluateAll(Frame &frame, const std::vector<ExpressionPointer> &expressions) {
  std::vector<host::Value> values;
  values.reserve(expressions.size());
  for (const ExpressionPointer &expression : expressions) values.push_back(expression->Evaluate(frame));
  return values;
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
  for (std::size_t i = 0; i < arguments_.size(); ++i) {
    references_.push_back(method.parameters[i].byRef ? static_cast<const Lvalue *>(arguments_[i].get()) : nullptr);
  }
}

host::Value MethodCall::Compute(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, method_.name);
  std::vector<host::Value> values = EvaluateAll(frame, arguments_);
  host::Value result = InPlugin(frame, span, [&] { return frame.runtime.Host().Invoke(method_, object, values); });
  for (std::size_t i = 0; i < references_.size(); ++i) {
    if (references_[i] != nullptr) references_[i]->AssignValue(frame, values[i]);
  }
  return result;
}

host::Value PropertyLvalue::Get(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, property_.name);
  if (property_.computes != nullptr) {
    return CallWithValues(frame.runtime, &frame, span, CodeOf(*property_.computes), object, {}, {});
  }
  return InPlugin(frame, span, [&] { return frame.runtime.Host().Get(object, property_); });
}

void PropertyLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, property_.name);
  if (property_.accepts != nullptr) {
    host::Value passed = value;
    CallWithValues(frame.runtime, &frame, span, CodeOf(*property_.accepts), object, property_.accepts->parameters,
                   {&passed, 1});
    return;
  }
  InPlugin(frame, span, [&] { frame.runtime.Host().Set(object, property_, value); });
}

void MethodLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, method_.name);
  std::vector<host::Value> values = EvaluateAll(frame, arguments_);
  InPlugin(frame, span, [&] { frame.runtime.Host().InvokeSetter(method_, object, values, value); });
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
