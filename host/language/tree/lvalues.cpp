// SPDX-License-Identifier: MIT
#include "host/language/tree/lvalues.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

#include "host/language/run/runtime.h"
#include "host/runtime/array_store.h"

namespace quillbar::language {

void StoreInCell(Frame &frame, const Expression &expression, Cell &cell) {
  switch (expression.representation) {
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

Array ArrayIn(Cell &cell, host::Type type) {
  if (cell.array == nullptr) cell.SetArray(host::ArrayHandle::CreateEmpty(type));
  return cell.array;
}

void VariableLvalue::Assign(Frame &frame, const Expression &value) const { StoreInCell(frame, value, Find(frame)); }

void VariableLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  StoreInCell(value, type, Find(frame));
}

template <class Use>
auto ElementLvalue::WithElement(Frame &frame, Use use) const {
  // The array is found before the index, which may run code that puts another one in the variable.
  host::ArrayHandle keeper;
  Array list = nullptr;
  if (!others_.empty()) {
    keeper = list_->EvaluateArray(frame);
    const std::int64_t place = CheckedIndices(frame, keeper);
    return use(keeper.Get()->values[static_cast<std::size_t>(place)]);
  }
  if (index_->isPlain) {
    list = list_->BorrowArray(frame, keeper);
  } else {
    keeper = list_->EvaluateArray(frame);
    list = keeper.Get();
  }
  const std::int64_t index = index_->EvaluateInteger(frame);
  static std::vector<host::Value> none;
  std::vector<host::Value> &values = list == nullptr ? none : list->values;
  if (index < 0 || static_cast<std::uint64_t>(index) >= values.size()) {
    frame.runtime.Raise(frame, index_->span, ExceptionKind::kOutOfBounds,
                        values.empty()
                            ? fmt::format("the index is {}, but the array is empty", index)
                            : fmt::format("the index is {}, but the array ends at {}", index, values.size() - 1));
  }
  return use(values[static_cast<std::size_t>(index)]);
}

std::int64_t ElementLvalue::CheckedIndices(Frame &frame, const host::ArrayHandle &list) const {
  std::int64_t place = 0;
  for (int dimension = 0; dimension <= static_cast<int>(others_.size()); ++dimension) {
    const Expression &written = dimension == 0 ? *index_ : *others_[static_cast<std::size_t>(dimension - 1)];
    const std::int64_t index = written.EvaluateInteger(frame);
    const auto extent = static_cast<std::int64_t>(list.Extent(dimension));
    if (index < 0 || index >= extent) {
      frame.runtime.Raise(frame, written.span, ExceptionKind::kOutOfBounds,
                          extent == 0 ? fmt::format("the index is {}, but the array is empty", index)
                                      : fmt::format("the index is {}, but dimension {} of the array ends at {}", index,
                                                    dimension + 1, extent - 1));
    }
    place = place * extent + index;
  }
  // An index may have changed the size meanwhile.
  if (static_cast<std::uint64_t>(place) < list.Size()) return place;
  frame.runtime.Raise(frame, span, ExceptionKind::kOutOfBounds, "the array became smaller meanwhile");
}

std::int64_t ElementLvalue::EvaluateInteger(Frame &frame) const {
  return WithElement(frame, [](const host::Value &element) { return element.RawInteger(); });
}
double ElementLvalue::EvaluateReal(Frame &frame) const {
  return WithElement(frame, [](const host::Value &element) { return element.RawReal(); });
}
host::StringHandle ElementLvalue::EvaluateText(Frame &frame) const {
  return WithElement(frame, [](const host::Value &element) { return element.AsString(); });
}
host::ObjectHandle ElementLvalue::EvaluateObject(Frame &frame) const {
  return WithElement(frame, [](const host::Value &element) { return element.AsObject(); });
}
host::Value ElementLvalue::EvaluateVariant(Frame &frame) const {
  return WithElement(frame, [](const host::Value &element) { return element; });
}

void ElementLvalue::Assign(Frame &frame, const Expression &value) const {
  // The value comes before the array and the index.
  switch (representation) {
    case Representation::kInteger: {
      const std::int64_t number = value.EvaluateInteger(frame);
      WithElement(frame, [=](host::Value &element) { element.PutInteger(number); });
      break;
    }
    case Representation::kReal: {
      const double number = value.EvaluateReal(frame);
      WithElement(frame, [=](host::Value &element) { element.PutReal(number); });
      break;
    }
    default:
      AssignValue(frame, value.Evaluate(frame));
      break;
  }
}

void ElementLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  host::Value converted = value.ConvertedTo(type);
  // The old value goes when the array has the new one: destroying an object may run code that changes the array.
  WithElement(frame, [&](host::Value &element) { std::swap(element, converted); });
}

}  // namespace quillbar::language
