// SPDX-License-Identifier: MIT
#include "host/language/tree/procedure_call.h"

#include <utility>

#include "host/language/run/runtime.h"
#include "host/language/tree/members.h"
#include "host/language/tree/program.h"

namespace quillbar::language {

host::Value CallWithValues(Runtime &runtime, const Frame *caller, Span span, const Procedure &procedure,
                           const host::ObjectHandle &self, std::span<const host::ParameterInfo> parameters,
                           std::span<host::Value> arguments) {
  std::vector<Cell> referenced(arguments.size());
  const std::size_t first = self ? 2 : 1;
  const auto prepare = [&](Cell *cells) {
    if (self) cells[1].SetObject(self);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      const bool byRef = parameters[i].byRef;
      Cell &cell = byRef ? referenced[i] : cells[i + first];
      StoreInCell(arguments[i], parameters[i].type, cell);
      if (byRef) cells[i + first].reference = &cell;
    }
  };
  const auto release = [&] {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (parameters[i].byRef) referenced[i].Clear(RepresentationOf(parameters[i].type));
    }
  };
  try {
    host::Value result = runtime.Call(procedure, caller, span, prepare,
                                      [&](Cell *cells) { return LoadFromCell(cells[0], procedure.result); });
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (parameters[i].byRef) arguments[i] = LoadFromCell(referenced[i], parameters[i].type);
    }
    release();
    return result;
  } catch (...) {
    release();
    throw;
  }
}

ProcedureCall::ProcedureCall(Span where, const host::MethodInfo &method, ExpressionPointer receiver, bool isDirect,
                             std::vector<ExpressionPointer> arguments)
    : Expression(method.result, where), method_(method), receiver_(std::move(receiver)), isDirect_(isDirect) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const auto *variable =
        method.parameters[i].byRef ? static_cast<const VariableLvalue *>(arguments[i].get()) : nullptr;
    arguments_.push_back({std::move(arguments[i]), variable});
  }
}

template <class Finish>
auto ProcedureCall::Call(Frame &frame, Finish finish) const {
  host::ObjectHandle self = ObjectOrRaise(frame, receiver_, span, method_.name);
  const host::MemberCode *code = self && !isDirect_ ? self.Class().dispatch[method_.slot] : method_.code;
  const std::size_t first = receiver_ ? 2 : 1;
  const auto prepare = [&](Cell *cells) {
    if (receiver_) cells[1].SetObject(std::move(self));
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
      const Argument &argument = arguments_[i];
      if (argument.variable != nullptr) {
        cells[i + first].reference = &argument.variable->Find(frame);
      } else {
        StoreInCell(frame, *argument.value, cells[i + first]);
      }
    }
  };
  return frame.runtime.Call(static_cast<const Procedure &>(*code), &frame, span, prepare, finish);
}

std::int64_t ProcedureCall::EvaluateInteger(Frame &frame) const {
  return Call(frame, [](Cell *cells) { return cells[0].integer; });
}

double ProcedureCall::EvaluateReal(Frame &frame) const {
  return Call(frame, [](Cell *cells) { return cells[0].real; });
}

host::StringHandle ProcedureCall::EvaluateText(Frame &frame) const {
  return Call(frame, [](Cell *cells) { return host::StringHandle::Adopt(std::exchange(cells[0].text, nullptr)); });
}

host::ObjectHandle ProcedureCall::EvaluateObject(Frame &frame) const {
  return Call(frame, [](Cell *cells) { return host::ObjectHandle::Adopt(std::exchange(cells[0].object, nullptr)); });
}

host::ArrayHandle ProcedureCall::EvaluateArray(Frame &frame) const {
  host::ArrayHandle result = Call(frame, [](Cell *cells) { return cells[0].ArrayValue(); });
  return result ? result : host::ArrayHandle::CreateEmpty(type);
}

host::Value ProcedureCall::EvaluateVariant(Frame &frame) const {
  return Call(frame, [](Cell *cells) { return cells[0].VariantValue(); });
}

void ProcedureCall::Run(Frame &frame) const {
  Call(frame, [](Cell *) {});
}

host::ArrayHandle ArrayLiteral::Compute(Frame &frame) const {
  host::ArrayHandle array = host::ArrayHandle::Create(type.Element());
  for (const ExpressionPointer &element : elements) array.Append(element->Evaluate(frame));
  return array;
}

}  // namespace quillbar::language
