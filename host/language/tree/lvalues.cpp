// SPDX-License-Identifier: MIT
#include "host/language/tree/lvalues.h"

#include <fmt/format.h>

#include "host/language/run/runtime.h"

namespace quillbar::language {

void StoreInCell(Frame &frame, const Expression &expression, Cell &cell) {
  switch (RepresentationOf(expression.type)) {
    case Representation::kNone:
      break;
    case Representation::kInteger:
      cell.integer = expression.EvaluateInteger(frame);
      break;
    case Representation::kReal:
      cell.real = expression.EvaluateReal(frame);
      break;
    case Representation::kText:
      cell.SetText(expression.EvaluateText(frame));
      break;
    case Representation::kObject:
      cell.SetObject(expression.EvaluateObject(frame));
      break;
    case Representation::kArray:
      cell.SetArray(expression.EvaluateArray(frame));
      break;
    case Representation::kVariant:
      cell.SetVariant(expression.EvaluateVariant(frame));
      break;
  }
}

void StoreInCell(const host::Value &value, host::Type type, Cell &cell) {
  switch (RepresentationOf(type)) {
    case Representation::kNone:
      break;
    case Representation::kInteger:
      cell.integer = value.RawInteger();
      break;
    case Representation::kReal:
      cell.real = value.RawReal();
      break;
    case Representation::kText:
      cell.SetText(value.AsString());
      break;
    case Representation::kObject:
      cell.SetObject(value.AsObject());
      break;
    case Representation::kArray:
      cell.SetArray(value.AsArray());
      break;
    case Representation::kVariant:
      cell.SetVariant(value);
      break;
  }
}

host::Value LoadFromCell(const Cell &cell, host::Type type) {
  switch (RepresentationOf(type)) {
    case Representation::kNone:
      break;
    case Representation::kInteger:
      return host::Value::OfInteger(type, cell.integer);
    case Representation::kReal:
      return host::Value::OfReal(type, cell.real);
    case Representation::kText:
      return cell.Text();
    case Representation::kObject:
      return cell.ObjectValue();
    case Representation::kArray:
      return cell.ArrayValue();
    case Representation::kVariant:
      return cell.VariantValue();
  }
  return {};
}

host::ArrayHandle VariableLvalue::EvaluateArray(Frame &frame) const {
  Cell &cell = Find(frame);
  if (cell.array == nullptr) cell.SetArray(host::ArrayHandle::Create(type.Element()));
  return cell.ArrayValue();
}

void VariableLvalue::Assign(Frame &frame, const Expression &value) const { StoreInCell(frame, value, Find(frame)); }

void VariableLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  StoreInCell(value, type, Find(frame));
}

Cell &GlobalVariable::Find(Frame &frame) const { return frame.runtime.Globals()[slot_]; }

std::int64_t ElementLvalue::CheckedIndex(Frame &frame, const host::ArrayHandle &list) const {
  const std::int64_t index = index_->EvaluateInteger(frame);
  if (index < 0 || static_cast<std::uint64_t>(index) >= list.Size()) {
    frame.runtime.Raise(frame, index_->span, ExceptionKind::kOutOfBounds,
                        list.Size() == 0
                            ? fmt::format("the index is {}, but the array is empty", index)
                            : fmt::format("the index is {}, but the array ends at {}", index, list.Size() - 1));
  }
  return index;
}

host::Value ElementLvalue::Get(Frame &frame) const {
  const host::ArrayHandle list = list_->EvaluateArray(frame);
  return list.At(CheckedIndex(frame, list));
}

std::int64_t ElementLvalue::EvaluateInteger(Frame &frame) const { return Get(frame).RawInteger(); }
double ElementLvalue::EvaluateReal(Frame &frame) const { return Get(frame).RawReal(); }
host::StringHandle ElementLvalue::EvaluateText(Frame &frame) const { return Get(frame).AsString(); }
host::ObjectHandle ElementLvalue::EvaluateObject(Frame &frame) const { return Get(frame).AsObject(); }

void ElementLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  host::ArrayHandle list = list_->EvaluateArray(frame);
  list.Set(CheckedIndex(frame, list), value);
}

}  // namespace quillbar::language
