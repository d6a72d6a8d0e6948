// SPDX-License-Identifier: MIT
#include "host/language/tree/members.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/run/error_translation.h"
#include "host/language/run/runtime.h"

namespace quillbar::language {
namespace {

/// The object whose member is used; raises NilObjectException for Nil.
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

/// Calls into a plugin and notes the call, so that handlers which run meanwhile know what led to them.
template <class Work>
auto InPlugin(Frame &frame, Span span, Work work) {
  const Runtime::PluginCall call(frame.runtime, frame, span);
  return TranslateErrors(frame, span, work);
}

/// Runs the script's handler for one event. ByRef arguments get cells of their own meanwhile.
host::Value HandleEvent(Runtime &runtime, const Procedure &handler, const host::EventInfo &event,
                        const host::ObjectHandle &sender, std::span<host::Value> arguments) {
  const Runtime::PluginCall *call = runtime.CurrentPluginCall();
  std::vector<Cell> referenced(arguments.size());
  const auto prepare = [&](Cell *cells) {
    cells[1].SetObject(sender);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      const host::ParameterInfo &parameter = event.parameters[i];
      Cell &cell = parameter.byRef ? referenced[i] : cells[i + 2];
      StoreInCell(arguments[i], parameter.type, cell);
      if (parameter.byRef) cells[i + 2].reference = &cell;
    }
  };
  const auto release = [&] {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (event.parameters[i].byRef) referenced[i].Clear(RepresentationOf(event.parameters[i].type));
    }
  };
  try {
    host::Value result =
        runtime.Call(handler, call == nullptr ? nullptr : &call->frame(), call == nullptr ? Span() : call->span(),
                     prepare, [&](Cell *cells) { return LoadFromCell(cells[0], handler.result); });
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (event.parameters[i].byRef) arguments[i] = LoadFromCell(referenced[i], event.parameters[i].type);
    }
    release();
    return result;
  } catch (...) {
    release();
    throw;
  }
}

}  // namespace

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
  return InPlugin(frame, span, [&] { return frame.runtime.Host().Get(object, property_); });
}

void PropertyLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span, property_.name);
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
  const host::ObjectHandle object = object_->EvaluateObject(frame);
  return object && object.Class().IsSubclassOf(info_);
}

Flow HandlerStatement::Execute(Frame &frame) const {
  const host::ObjectHandle object = ObjectOrRaise(frame, object_, span_, event_.name);
  host::EventHandler handler;
  if (handler_ != nullptr) {
    handler = [&runtime = frame.runtime, alive = frame.runtime.Liveness(), procedure = handler_, &event = event_](
                  const host::ObjectHandle &sender, std::span<host::Value> arguments) {
      if (alive.expired()) return host::Value::Zero(event.result);
      return HandleEvent(runtime, *procedure, event, sender, arguments);
    };
  }
  TranslateErrors(frame, span_, [&] { frame.runtime.Host().SetEventHandler(object, event_, std::move(handler)); });
  return Flow::kNext;
}

}  // namespace quillbar::language
