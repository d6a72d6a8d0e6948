// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "host/language/tree/code.h"

/// Expressions that can be on the left of "=".
namespace quillbar::language {

/// An expression that can be assigned to. It reads as its value.
class Lvalue : public Expression {
 public:
  Lvalue(host::Type valueType, Span where, NodeKind nodeKind) : Expression(valueType, where) { kind = nodeKind; }

  /// Evaluates `value`, which has the lvalue's type, and stores it.
  virtual void Assign(Frame &frame, const Expression &value) const = 0;
  virtual void AssignValue(Frame &frame, const host::Value &value) const = 0;

  /// The cell that holds the value, and the object that it is part of; null for what has none.
  virtual Cell *Storage(Frame &, host::ObjectHandle &) const { return nullptr; }
};

using LvaluePointer = std::unique_ptr<Lvalue>;

/// An lvalue whose storage doesn't move, so that a ByRef parameter can refer to it.
class VariableLvalue : public Lvalue {
 public:
  VariableLvalue(host::Type valueType, Span where) : Lvalue(valueType, where, NodeKind::kVariable) {
    isPlain = representation != Representation::kArray;
  }
  /// The cell that stores the variable's value.
  virtual Cell &Find(Frame &frame) const = 0;

  void Assign(Frame &frame, const Expression &value) const final;
  void AssignValue(Frame &frame, const host::Value &value) const final;
  Cell *Storage(Frame &frame, host::ObjectHandle &) const final { return &Find(frame); }

  /// Makes the variable zero, the empty string, Nil or a new empty array.
  void Reset(Frame &frame) const { Find(frame).Clear(RepresentationOf(type)); }
};

using VariablePointer = std::unique_ptr<VariableLvalue>;

/// The array in a cell, which is made where there is none yet.
Array ArrayIn(Cell &cell, host::Type type);

/// A variable that `Derived` finds with its `Cell &At(Frame &) const`, without a virtual call.
template <class Derived>
class FoundVariable : public VariableLvalue {
 public:
  FoundVariable(host::Type variableType, Span where, std::size_t variableSlot)
      : VariableLvalue(variableType, where), slot(variableSlot) {}

  Cell &Find(Frame &frame) const final { return static_cast<const Derived &>(*this).At(frame); }
  std::int64_t EvaluateInteger(Frame &frame) const final { return Here(frame).integer; }
  double EvaluateReal(Frame &frame) const final { return Here(frame).real; }
  host::StringHandle EvaluateText(Frame &frame) const final { return Here(frame).Text(); }
  host::ObjectHandle EvaluateObject(Frame &frame) const final { return Here(frame).ObjectValue(); }
  host::ArrayHandle EvaluateArray(Frame &frame) const final { return host::ArrayHandle(ArrayIn(Here(frame), type)); }
  host::Value EvaluateVariant(Frame &frame) const final { return Here(frame).VariantValue(); }
  Object BorrowObject(Frame &frame, host::ObjectHandle &) const final { return Here(frame).object; }
  Array BorrowArray(Frame &frame, host::ArrayHandle &) const final { return ArrayIn(Here(frame), type); }

  const std::size_t slot;

 private:
  Cell &Here(Frame &frame) const { return static_cast<const Derived &>(*this).At(frame); }
};

class LocalVariable final : public FoundVariable<LocalVariable> {
 public:
  using FoundVariable::FoundVariable;
  Cell &At(Frame &frame) const { return frame.cells[slot]; }
};

class GlobalVariable final : public FoundVariable<GlobalVariable> {
 public:
  using FoundVariable::FoundVariable;
  Cell &At(Frame &frame) const { return frame.globals[slot]; }
};

/// A ByRef parameter: its cell holds the address of the caller's variable.
class ReferencedVariable final : public FoundVariable<ReferencedVariable> {
 public:
  using FoundVariable::FoundVariable;
  Cell &At(Frame &frame) const { return *frame.cells[slot].reference; }
};

/// `list(index)`
class ElementLvalue final : public Lvalue {
 public:
  /// `others` are the indices of the second and third dimension.
  ElementLvalue(Span where, ExpressionPointer list, ExpressionPointer index, std::vector<ExpressionPointer> others = {})
      : Lvalue(list->type.Element(), where, NodeKind::kElement),
        list_(std::move(list)),
        index_(std::move(index)),
        others_(std::move(others)) {
    isPlain = others_.empty() && list_->kind == NodeKind::kVariable && index_->isPlain;
  }

  std::int64_t EvaluateInteger(Frame &frame) const override;
  double EvaluateReal(Frame &frame) const override;
  host::StringHandle EvaluateText(Frame &frame) const override;
  host::ObjectHandle EvaluateObject(Frame &frame) const override;
  host::ArrayHandle EvaluateArray(Frame &frame) const override { return Expression::EvaluateArray(frame); }
  host::Value EvaluateVariant(Frame &frame) const override;

  void Assign(Frame &frame, const Expression &value) const override;
  void AssignValue(Frame &frame, const host::Value &value) const override;

  /// Takes the parts out of the node, to evaluate them once for several uses.
  ExpressionPointer TakeList() { return std::move(list_); }
  ExpressionPointer TakeIndex() { return std::move(index_); }
  std::vector<ExpressionPointer> TakeOtherIndices() { return std::move(others_); }

 private:
  /// Calls `use` with the element, which is where it is until code of the script runs.
  template <class Use>
  auto WithElement(Frame &frame, Use use) const;
  /// The place of an element of an array with several dimensions.
  std::int64_t CheckedIndices(Frame &frame, const host::ArrayHandle &list) const;

  ExpressionPointer list_;
  ExpressionPointer index_;
  std::vector<ExpressionPointer> others_;
};

/// Stores the result of `expression` in a cell of its representation.
void StoreInCell(Frame &frame, const Expression &expression, Cell &cell);
void StoreInCell(const host::Value &value, host::Type type, Cell &cell);
host::Value LoadFromCell(const Cell &cell, host::Type type);

}  // namespace quillbar::language
