// SPDX-License-Identifier: MIT
#include "host/language/tree/procedure_call.h"

#include <utility>

#include "host/language/run/runtime.h"
#include "host/language/tree/program.h"

namespace quillbar::language {

ProcedureCall::ProcedureCall(Span where, const host::MethodInfo &method, std::vector<ExpressionPointer> arguments)
    : Expression(method.result, where), procedure_(CodeOf(method)) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const auto *variable =
        method.parameters[i].byRef ? static_cast<const VariableLvalue *>(arguments[i].get()) : nullptr;
    arguments_.push_back({std::move(arguments[i]), variable});
  }
}

template <class Finish>
auto ProcedureCall::Call(Frame &frame, Finish finish) const {
  const auto prepare = [&](Cell *cells) {
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
      const Argument &argument = arguments_[i];
      if (argument.variable != nullptr) {
        cells[i + 1].reference = &argument.variable->Find(frame);
      } else {
        StoreInCell(frame, *argument.value, cells[i + 1]);
      }
    }
  };
  return frame.runtime.Call(procedure_, &frame, span, prepare, finish);
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
  return result ? result : host::ArrayHandle::Create(type.Element());
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
