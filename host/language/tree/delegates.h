// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/tree/members.h"
#include "host/language/tree/program.h"

/// Nodes for delegates, which hold a method and the object whose method it is, and for events of the script's classes.
namespace quillbar::language {

/// `AddressOf Method` before it is known for which delegate. It has no value of its own.
class AddressNode final : public Expression {
 public:
  AddressNode(host::Type addressType, Span where, std::vector<const host::MethodInfo *> methods,
              ExpressionPointer receiver)
      : Expression(addressType, where), candidates(std::move(methods)), object(std::move(receiver)) {
    kind = NodeKind::kAddress;
  }
  /// Raises an exception: where a value of any type is allowed, there is no delegate.
  host::ObjectHandle EvaluateObject(Frame &frame) const override;

  std::vector<const host::MethodInfo *> candidates;
  ExpressionPointer object;  // null: not the methods of an object
};

/// A delegate that holds a method, and keeps the object alive whose method it is.
class DelegateNode final : public Computed<host::ObjectHandle, DelegateNode> {
 public:
  DelegateNode(const host::ClassInfo &delegate, Span where, const host::MethodInfo &method, ExpressionPointer object)
      : Computed(host::Type::Class(delegate), where), method_(method), object_(std::move(object)) {}
  host::ObjectHandle Compute(Frame &frame) const;

 private:
  const host::MethodInfo &method_;
  ExpressionPointer object_;
};

/// The base of calls whose procedure is found when they run. What the procedure stores in its ByRef arguments is copied
/// back to the lvalues that were passed.
class IndirectCall : public Expression {
 public:
  IndirectCall(Span where, const host::MethodInfo &method, ExpressionPointer object,
               std::vector<ExpressionPointer> arguments)
      : Expression(method.result, where),
        method_(method),
        object_(std::move(object)),
        arguments_(std::move(arguments)) {}

  std::int64_t EvaluateInteger(Frame &frame) const override { return Get(frame).RawInteger(); }
  double EvaluateReal(Frame &frame) const override { return Get(frame).RawReal(); }
  host::StringHandle EvaluateText(Frame &frame) const override { return Get(frame).AsString(); }
  host::ObjectHandle EvaluateObject(Frame &frame) const override { return Get(frame).AsObject(); }
  host::ArrayHandle EvaluateArray(Frame &frame) const override;
  host::Value EvaluateVariant(Frame &frame) const override { return Get(frame); }
  void Run(Frame &frame) const override { Get(frame); }

 protected:
  virtual host::Value Invoke(Frame &frame, const host::ObjectHandle &object, std::span<host::Value> values) const = 0;

  const host::MethodInfo &method_;

 private:
  host::Value Get(Frame &frame) const;

  ExpressionPointer object_;
  std::vector<ExpressionPointer> arguments_;
};

/// `delegate.Invoke(arguments)` and `delegate(arguments)`
class DelegateCall final : public IndirectCall {
 public:
  using IndirectCall::IndirectCall;

 private:
  host::Value Invoke(Frame &frame, const host::ObjectHandle &object, std::span<host::Value> values) const override;
};

/// `RaiseEvent Name(arguments)`: runs the handler that was attached to the object, or else the one of a subclass. Without
/// either the result is zero.
class RaiseEventCall final : public IndirectCall {
 public:
  using IndirectCall::IndirectCall;

 private:
  host::Value Invoke(Frame &frame, const host::ObjectHandle &object, std::span<host::Value> values) const override;
};

/// `AddHandler` with a method of an object, which is kept alive by it. The sender is the method's first argument.
class BoundHandlerStatement final : public Statement {
 public:
  BoundHandlerStatement(Span span, ExpressionPointer sender, const host::EventInfo &event,
                        const host::MethodInfo &method, ExpressionPointer object)
      : span_(span), sender_(std::move(sender)), event_(event), method_(method), object_(std::move(object)) {}
  Flow Execute(Frame &frame) const override;

 private:
  Span span_;
  ExpressionPointer sender_;
  const host::EventInfo &event_;
  const host::MethodInfo &method_;
  ExpressionPointer object_;
};

}  // namespace quillbar::language
