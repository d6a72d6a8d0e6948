// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/tree/code.h"
#include "host/language/tree/lvalues.h"
#include "host/runtime/class_model.h"
#include "host/runtime/host.h"
#include "host/runtime/plugin_call.h"

/// Nodes for the members of the host's and the plugins' classes.
namespace quillbar::language {

/// The object whose member is used; raises NilObjectException for Nil. Without an expression there is none.
host::ObjectHandle ObjectOrRaise(Frame &frame, const ExpressionPointer &object, Span span, std::string_view member);

std::vector<host::Value> EvaluateAll(Frame &frame, const std::vector<ExpressionPointer> &expressions);

/// A member's function, which the host prepares once for each place that uses it.
class PreparedFunction {
 public:
  /// `prepare` gives the function; it is called on first use.
  template <class Prepare>
  const host::ForeignFunction &Get(Prepare prepare) const {
    if (function_ == nullptr) function_ = &prepare();
    return *function_;
  }

 private:
  mutable const host::ForeignFunction *function_ = nullptr;
};

/// Adds the value of `expression`, which has the parameter's type, as the next argument.
void AddArgument(Frame &frame, const Expression &expression, host::MemberCall &call);

/// A handler that runs a procedure of the script: the sender is its first parameter, or Self of a method.
host::EventHandler MakeEventHandler(Runtime &runtime, const Procedure &procedure, const host::EventInfo &event);

/// `object.Method(arguments)`, or, without an object, a shared method or one of a module. The values that the method
/// stores in its ByRef arguments are copied back to the lvalues that were passed.
class MethodCall final : public Computed<host::Value, MethodCall> {
 public:
  MethodCall(Span where, const host::MethodInfo &method, ExpressionPointer object,
             std::vector<ExpressionPointer> arguments);
  host::Value Compute(Frame &frame) const;

 private:
  host::Value CallByRef(Frame &frame, const host::ObjectHandle &object) const;

  const host::MethodInfo &method_;
  PreparedFunction function_;
  ExpressionPointer object_;
  std::vector<ExpressionPointer> arguments_;
  bool hasByRef_ = false;
};

/// `object.Property`, also on the left of "=".
class PropertyLvalue : public Lvalue {
 public:
  PropertyLvalue(Span where, const host::PropertyInfo &property, ExpressionPointer object)
      : Lvalue(property.type, where, NodeKind::kProperty), property_(property), object_(std::move(object)) {}

  std::int64_t EvaluateInteger(Frame &frame) const override { return Get(frame).RawInteger(); }
  double EvaluateReal(Frame &frame) const override { return Get(frame).RawReal(); }
  host::StringHandle EvaluateText(Frame &frame) const override { return Get(frame).AsString(); }
  host::ObjectHandle EvaluateObject(Frame &frame) const override { return Get(frame).AsObject(); }
  host::ArrayHandle EvaluateArray(Frame &frame) const override { return Get(frame).AsArray(); }
  host::Value EvaluateVariant(Frame &frame) const override { return Get(frame); }

  void Assign(Frame &frame, const Expression &value) const override;
  void AssignValue(Frame &frame, const host::Value &value) const override;

  const host::PropertyInfo &Property() const { return property_; }
  ExpressionPointer TakeObject() { return std::move(object_); }

 private:
  host::Value Get(Frame &frame) const;
  template <class Add>
  void Set(Frame &frame, const host::ObjectHandle &object, Add add) const;

  PreparedFunction getter_;
  PreparedFunction setter_;

 protected:
  const host::PropertyInfo &property_;
  ExpressionPointer object_;  // null for a shared property
};

/// The property that a node reads or assigns; null for another node.
inline const host::PropertyInfo *PropertyOf(const Expression &node) {
  return node.kind == NodeKind::kProperty ? &static_cast<const PropertyLvalue &>(node).Property() : nullptr;
}

/// `object.Method(arguments) = value`, for methods that can be assigned to.
class MethodLvalue final : public Lvalue {
 public:
  MethodLvalue(Span where, const host::MethodInfo &method, ExpressionPointer object,
               std::vector<ExpressionPointer> arguments)
      : Lvalue(method.result, where, NodeKind::kMethod),
        method_(method),
        object_(std::move(object)),
        arguments_(std::move(arguments)) {}

  void Assign(Frame &frame, const Expression &value) const override { AssignValue(frame, value.Evaluate(frame)); }
  void AssignValue(Frame &frame, const host::Value &value) const override;

 private:
  const host::MethodInfo &method_;
  PreparedFunction setter_;
  ExpressionPointer object_;
  std::vector<ExpressionPointer> arguments_;
};

/// `New Type(arguments)`
class NewObject final : public Computed<host::ObjectHandle, NewObject> {
 public:
  NewObject(Span where, const host::ClassInfo &info, const host::MethodInfo *constructor,
            std::vector<ExpressionPointer> arguments)
      : Computed(host::Type::Class(info), where),
        info_(info),
        constructor_(constructor),
        arguments_(std::move(arguments)) {}
  host::ObjectHandle Compute(Frame &frame) const;

 private:
  const host::ClassInfo &info_;
  const host::MethodInfo *constructor_;
  std::vector<ExpressionPointer> arguments_;
};

/// `object IsA Type`; false for Nil.
class IsANode final : public Computed<bool, IsANode> {
 public:
  IsANode(Span where, ExpressionPointer object, const host::ClassInfo &info)
      : Computed(host::TypeKind::kBoolean, where), object_(std::move(object)), info_(info) {}
  bool Compute(Frame &frame) const;

 private:
  ExpressionPointer object_;
  const host::ClassInfo &info_;
};

/// `AddHandler` with a procedure, `RemoveHandler` without.
class HandlerStatement final : public Statement {
 public:
  HandlerStatement(Span span, ExpressionPointer object, const host::EventInfo &event, const Procedure *handler)
      : span_(span), object_(std::move(object)), event_(event), handler_(handler) {}
  Flow Execute(Frame &frame) const override;

 private:
  Span span_;
  ExpressionPointer object_;
  const host::EventInfo &event_;
  const Procedure *handler_;
};

}  // namespace quillbar::language
