// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/language/syntax/source_text.h"
#include "host/language/tree/cell.h"
#include "host/language/tree/representation.h"
#include "host/runtime/class_model.h"
#include "host/runtime/handles.h"
#include "host/runtime/interruption.h"
#include "host/runtime/numbers.h"
#include "host/runtime/type.h"
#include "host/runtime/value.h"

/// The typed tree: what the checker makes of a script, and what runs. Names have become slots and members, and every
/// conversion is a node, so that nothing is looked up at run time.
namespace quillbar::language {

class Runtime;
struct Procedure;

/// A running procedure: its variables and its caller.
struct Frame {
  Runtime &runtime;
  const Procedure &procedure;
  const Frame *caller;
  Span callSpan;  // in the caller
  Cell *cells;
  Cell *globals = nullptr;           // the script's global variables
  const void *jumpTarget = nullptr;  // the loop or selection at which `Exit` or `Continue` is aimed
};

/// What the checker must know of a node besides its type. Those from `kVariable` on can be on the left of "=".
enum class NodeKind : std::uint8_t {
  kComputed,
  kInteger,
  kLiteral,
  kArrayLiteral,
  kAddress,
  kVariable,
  kElement,
  kProperty,
  kMethod
};

/// An expression with its type. Exactly one of the typed evaluators works: the one for the type's representation.
/// `Evaluate` wraps its result in a value of the host.
class Expression {
 public:
  Expression(host::Type expressionType, Span where)
      : type(expressionType), span(where), representation(RepresentationOf(expressionType)) {}
  virtual ~Expression() = default;
  Expression(const Expression &) = delete;
  Expression &operator=(const Expression &) = delete;

  virtual std::int64_t EvaluateInteger(Frame &frame) const;
  virtual double EvaluateReal(Frame &frame) const;
  virtual host::StringHandle EvaluateText(Frame &frame) const;
  virtual host::ObjectHandle EvaluateObject(Frame &frame) const;
  virtual host::ArrayHandle EvaluateArray(Frame &frame) const;
  virtual host::Value EvaluateVariant(Frame &frame) const;

  /// The value with its type; no value for a call of a Sub.
  host::Value Evaluate(Frame &frame) const;

  /// Runs the expression for its effect alone.
  virtual void Run(Frame &frame) const;

  // What a variable or a field holds can be used where it is, without a reference of its own. It stays there until code
  // of the script runs next. What is stored nowhere is kept by `keeper`.

  virtual Object BorrowObject(Frame &frame, host::ObjectHandle &keeper) const {
    keeper = EvaluateObject(frame);
    return keeper.Get();
  }
  virtual Array BorrowArray(Frame &frame, host::ArrayHandle &keeper) const {
    keeper = EvaluateArray(frame);
    return keeper.Get();
  }

  /// Whether the value is always the same and needs no frame.
  virtual bool IsConstant() const { return false; }

  bool IsLvalue() const { return kind >= NodeKind::kVariable; }

  host::Type type;
  Span span;
  const Representation representation;  // of `type`
  NodeKind kind = NodeKind::kComputed;
  /// Whether evaluating the expression runs no code of the script and changes nothing; it may raise an exception.
  bool isPlain = false;
};

using ExpressionPointer = std::unique_ptr<Expression>;

/// A node of the class `Node`. std::make_unique would make an owner for each class, and templates make hundreds of
/// classes: seconds of compilation.
template <class Node, class... Arguments>
ExpressionPointer MakeExpression(Arguments &&...arguments) {
  return ExpressionPointer(new Node(std::forward<Arguments>(arguments)...));
}

/// How control leaves a statement.
enum class Flow : std::uint8_t { kNext, kExit, kContinue, kReturn };

/// A statement that can be executed.
class Statement {
 public:
  Statement() = default;
  virtual ~Statement() = default;
  Statement(const Statement &) = delete;
  Statement &operator=(const Statement &) = delete;

  /// Executes the statement and says how control leaves it.
  virtual Flow Execute(Frame &frame) const = 0;
};

using StatementPointer = std::unique_ptr<Statement>;

#ifdef QUILLBAR_FUZZ
/// Thrown where a fuzzed script has executed as many blocks as it may; scripts can't catch it.
struct OutOfSteps {};
inline std::size_t stepsLeft = static_cast<std::size_t>(-1);
#endif

/// Statements in order, which the block owns.
class Block {
 public:
  void Add(StatementPointer statement) { statements_.push_back(std::move(statement)); }

  /// Says where in the script the block is.
  void SetPlace(Span place) { place_ = place; }

  /// Executes the statements until control leaves in another way than to the next one. Throws host::Interrupted when
  /// the script is to end: every loop and every call executes a block.
  Flow Execute(Frame &frame) const {
    if (host::Interruption::IsRequested()) FollowInterruption(frame);
#ifdef QUILLBAR_FUZZ
    if (stepsLeft == 0) throw OutOfSteps();
    --stepsLeft;
#endif
    try {
      for (const StatementPointer &statement : statements_) {
        const Flow flow = statement->Execute(frame);
        if (flow != Flow::kNext) return flow;
      }
    } catch (const std::bad_alloc &) {
      RaiseOutOfMemory(frame);
    }
    return Flow::kNext;
  }

 private:
  /// Ends the script, noting where it was. A block that has no place leaves that to the next one that has.
  void FollowInterruption(const Frame &frame) const;
  /// Within a `catch`: makes an exception of the script of what the system threw.
  [[noreturn]] void RaiseOutOfMemory(const Frame &frame) const;

  std::vector<StatementPointer> statements_;
  Span place_;
};

/// A Sub or Function of the script, or the script's own statements. Cell 0 holds the result.
struct Procedure : host::MemberCode {
  std::size_t firstParameter = 1;  // its cell; 2 in methods, where cell 1 holds Self
  std::string name;
  Span span;
  Span nameSpan;
  bool isScript = false;
  host::Type result;
  std::size_t cellCount = 1;
  struct OwningCell {
    std::size_t slot;
    Representation representation;
  };
  std::vector<OwningCell> owningCells;  // those whose references are released at the end
  Block body;
};

/// The C++ type that holds a value while it is computed, and the evaluator that gives it.
template <class Native>
Native EvaluateAs(const Expression &expression, Frame &frame) {
  if constexpr (std::is_same_v<Native, bool>) {
    return expression.EvaluateInteger(frame) != 0;
  } else if constexpr (std::is_same_v<Native, host::Value>) {
    return expression.Evaluate(frame);
  } else if constexpr (std::is_same_v<Native, double>) {
    return expression.EvaluateReal(frame);
  } else if constexpr (std::is_same_v<Native, host::StringHandle>) {
    return expression.EvaluateText(frame);
  } else if constexpr (std::is_same_v<Native, host::ObjectHandle>) {
    return expression.EvaluateObject(frame);
  } else if constexpr (std::is_same_v<Native, host::ArrayHandle>) {
    return expression.EvaluateArray(frame);
  } else {
    static_assert(std::is_same_v<Native, std::int64_t>);
    return expression.EvaluateInteger(frame);
  }
}

/// The base of a node that computes one kind of value. `Derived` has `Native Compute(Frame &) const`, which the
/// evaluator for `Native` calls directly.
template <class Native, class Derived>
class Computed;

template <class Derived>
class Computed<std::int64_t, Derived> : public Expression {
 public:
  using Expression::Expression;
  std::int64_t EvaluateInteger(Frame &frame) const final { return static_cast<const Derived &>(*this).Compute(frame); }
};

template <class Derived>
class Computed<bool, Derived> : public Expression {
 public:
  using Expression::Expression;
  std::int64_t EvaluateInteger(Frame &frame) const final {
    return static_cast<const Derived &>(*this).Compute(frame) ? 1 : 0;
  }
};

template <class Derived>
class Computed<double, Derived> : public Expression {
 public:
  using Expression::Expression;
  double EvaluateReal(Frame &frame) const final { return static_cast<const Derived &>(*this).Compute(frame); }
};

template <class Derived>
class Computed<host::StringHandle, Derived> : public Expression {
 public:
  using Expression::Expression;
  host::StringHandle EvaluateText(Frame &frame) const final {
    return static_cast<const Derived &>(*this).Compute(frame);
  }
};

template <class Derived>
class Computed<host::ObjectHandle, Derived> : public Expression {
 public:
  using Expression::Expression;
  host::ObjectHandle EvaluateObject(Frame &frame) const final {
    return static_cast<const Derived &>(*this).Compute(frame);
  }
};

template <class Derived>
class Computed<host::ArrayHandle, Derived> : public Expression {
 public:
  using Expression::Expression;
  host::ArrayHandle EvaluateArray(Frame &frame) const final {
    return static_cast<const Derived &>(*this).Compute(frame);
  }
};

/// The base of nodes whose result comes as a value of the host: members of classes, elements of arrays. Every
/// evaluator works, and unwraps the value.
template <class Derived>
class Computed<host::Value, Derived> : public Expression {
 public:
  using Expression::Expression;
  std::int64_t EvaluateInteger(Frame &frame) const final { return Get(frame).RawInteger(); }
  double EvaluateReal(Frame &frame) const final { return Get(frame).RawReal(); }
  host::StringHandle EvaluateText(Frame &frame) const final { return Get(frame).AsString(); }
  host::ObjectHandle EvaluateObject(Frame &frame) const final { return Get(frame).AsObject(); }
  host::ArrayHandle EvaluateArray(Frame &frame) const final { return Get(frame).AsArray(); }
  host::Value EvaluateVariant(Frame &frame) const final { return Get(frame); }
  void Run(Frame &frame) const final { Get(frame); }

 private:
  host::Value Get(Frame &frame) const { return static_cast<const Derived &>(*this).Compute(frame); }
};

/// The base of nodes for calls of Subs.
template <class Derived>
class Computed<void, Derived> : public Expression {
 public:
  using Expression::Expression;
  void Run(Frame &frame) const final { static_cast<const Derived &>(*this).Compute(frame); }
};

}  // namespace quillbar::language
