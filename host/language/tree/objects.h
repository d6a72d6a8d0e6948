// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/tree/members.h"
#include "host/language/tree/program.h"

/// Nodes for objects of the classes that a script declares.
namespace quillbar::language {

/// The fields that a class of the script adds to an object.
inline Cell *FieldsOf(Object object, const host::ClassInfo &info) {
  return reinterpret_cast<Cell *>(reinterpret_cast<char *>(object) + info.dataOffset);
}

/// `Self` and `Me`: the object whose method runs.
class SelfValue final : public Computed<host::ObjectHandle, SelfValue> {
 public:
  SelfValue(host::Type self, Span where) : Computed(self, where) { isPlain = true; }
  host::ObjectHandle Compute(Frame &frame) const { return frame.cells[1].ObjectValue(); }
  Object BorrowObject(Frame &frame, host::ObjectHandle &) const override { return frame.cells[1].object; }
};

/// A field of an object: a property with storage.
class FieldLvalue final : public PropertyLvalue {
 public:
  FieldLvalue(Span where, const host::PropertyInfo &property, ExpressionPointer object)
      : PropertyLvalue(where, property, std::move(object)) {
    isPlain = representation != Representation::kArray && object_ && object_->isPlain;
  }

  std::int64_t EvaluateInteger(Frame &frame) const override;
  double EvaluateReal(Frame &frame) const override;
  host::StringHandle EvaluateText(Frame &frame) const override;
  host::ObjectHandle EvaluateObject(Frame &frame) const override;
  host::ArrayHandle EvaluateArray(Frame &frame) const override;
  host::Value EvaluateVariant(Frame &frame) const override;
  Object BorrowObject(Frame &frame, host::ObjectHandle &keeper) const override;
  Array BorrowArray(Frame &frame, host::ArrayHandle &keeper) const override;

  void Assign(Frame &frame, const Expression &value) const override;
  void AssignValue(Frame &frame, const host::Value &value) const override;
  Cell *Storage(Frame &frame, host::ObjectHandle &owner) const override {
    owner = ObjectOrRaise(frame, object_, span, property_.name);
    return &CellOf(owner.Get());
  }

 private:
  /// The object whose field this is; raises NilObjectException for Nil.
  Object BorrowOwner(Frame &frame, host::ObjectHandle &keeper) const;
  Cell &CellOf(Object object) const;
};

/// The node for a property of any kind. `object` is null for a shared one.
LvaluePointer MakeProperty(Span span, const host::PropertyInfo &property, ExpressionPointer object);

/// `object.Method(arguments) = value`, for a method of a script whose last parameter `Assigns`.
class AssignsLvalue final : public Lvalue {
 public:
  AssignsLvalue(Span where, const host::MethodInfo &method, ExpressionPointer object,
                std::vector<ExpressionPointer> arguments)
      : Lvalue(method.parameters.back().type, where, NodeKind::kMethod),
        method_(method),
        object_(std::move(object)),
        arguments_(std::move(arguments)) {}

  void Assign(Frame &frame, const Expression &value) const override { AssignValue(frame, value.Evaluate(frame)); }
  void AssignValue(Frame &frame, const host::Value &value) const override;

 private:
  const host::MethodInfo &method_;
  ExpressionPointer object_;
  std::vector<ExpressionPointer> arguments_;
};

/// `New Class(arguments)` for a class of the script: the fields get their first values, superclasses first, then the
/// constructor runs.
class NewScriptObject final : public Computed<host::ObjectHandle, NewScriptObject> {
 public:
  NewScriptObject(Span where, const host::ClassInfo &info, const host::MethodInfo *constructor,
                  std::vector<ExpressionPointer> arguments)
      : Computed(host::Type::Class(info), where),
        info_(info),
        constructor_(constructor),
        arguments_(std::move(arguments)) {}
  host::ObjectHandle Compute(Frame &frame) const;

 private:
  const host::ClassInfo &info_;
  const host::MethodInfo *constructor_;  // null: there is none
  std::vector<ExpressionPointer> arguments_;
};

/// Lets the objects of a program's classes run their destructors and release their fields while the runtime lives.
class ObjectLives {
 public:
  ObjectLives(Runtime &runtime, Program &program);
  ~ObjectLives();
  ObjectLives(const ObjectLives &) = delete;
  ObjectLives &operator=(const ObjectLives &) = delete;

 private:
  Runtime &runtime_;
  Program &program_;
};

}  // namespace quillbar::language
