// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "host/language/tree/code.h"
#include "host/language/tree/lvalues.h"

/// Nodes for statements.
namespace quillbar::language {

/// Several statements in place of one.
class Sequence final : public Statement {
 public:
  Block block;
  Flow Execute(Frame &frame) const override { return block.Execute(frame); }
};

/// A variable is reset each time its declaration is reached.
class ResetVariable final : public Statement {
 public:
  explicit ResetVariable(VariablePointer variable) : variable_(std::move(variable)) {}
  Flow Execute(Frame &frame) const override {
    variable_->Reset(frame);
    return Flow::kNext;
  }

 private:
  VariablePointer variable_;
};

/// Sets the initial value of a `Static` variable: runs its statement the first time only.
class StaticInitializer final : public Statement {
 public:
  StaticInitializer(VariablePointer done, StatementPointer statement)
      : done_(std::move(done)), statement_(std::move(statement)) {}
  Flow Execute(Frame &frame) const override {
    Cell &done = done_->Find(frame);
    if (done.integer == 0) {
      done.integer = 1;
      statement_->Execute(frame);
    }
    return Flow::kNext;
  }

 private:
  VariablePointer done_;
  StatementPointer statement_;
};

/// `lvalue = value`, where the value has the lvalue's type.
StatementPointer MakeAssignment(LvaluePointer lvalue, ExpressionPointer value);

/// `text = text + a + b` and `text += a`, for a variable or a field: the text grows where it is.
class TextAppend final : public Statement {
 public:
  TextAppend(Span span, LvaluePointer text, std::vector<ExpressionPointer> added)
      : span_(span), text_(std::move(text)), added_(std::move(added)) {}
  Flow Execute(Frame &frame) const override;

 private:
  Span span_;
  LvaluePointer text_;
  std::vector<ExpressionPointer> added_;
};

class ExpressionStatement final : public Statement {
 public:
  explicit ExpressionStatement(ExpressionPointer expression) : expression_(std::move(expression)) {}
  Flow Execute(Frame &frame) const override {
    expression_->Run(frame);
    return Flow::kNext;
  }

 private:
  ExpressionPointer expression_;
};

class IfStatement final : public Statement {
 public:
  struct Branch {
    ExpressionPointer condition;
    Block body;
  };
  std::vector<Branch> branches;
  Block otherwise;
  Flow Execute(Frame &frame) const override;
};

/// A statement that `Exit` can leave: a jump is aimed at its address.
class JumpTarget : public Statement {
 protected:
  /// How the statement ends after its body has ended with `flow`; nothing when a loop goes on.
  std::optional<Flow> Leave(Frame &frame, Flow flow) const {
    if (flow == Flow::kNext) return std::nullopt;
    if (flow == Flow::kReturn || frame.jumpTarget != this) return flow;
    return flow == Flow::kContinue ? std::nullopt : std::optional(Flow::kNext);
  }
};

class SelectStatement final : public JumpTarget {
 public:
  struct Case {
    std::vector<ExpressionPointer> tests;  // Boolean, on the variable that holds the subject
    Block body;
  };
  StatementPointer store;  // puts the subject into its variable
  std::vector<Case> cases;
  Block otherwise;
  Flow Execute(Frame &frame) const override;
};

/// `While`, and `Do` with a test at its start, its end or nowhere.
class LoopStatement final : public JumpTarget {
 public:
  ExpressionPointer before;  // the loop goes on while these are true
  ExpressionPointer after;
  Block body;
  Flow Execute(Frame &frame) const override;
};

/// `For`. The bounds and the step are evaluated once.
class ForStatement : public JumpTarget {
 public:
  VariablePointer variable;
  ExpressionPointer first, last, step;
  bool isDown = false;
  Block body;
};

class IntegerFor final : public ForStatement {
 public:
  Flow Execute(Frame &frame) const override;
};

class RealFor final : public ForStatement {
 public:
  Flow Execute(Frame &frame) const override;
};

class ForEachStatement final : public JumpTarget {
 public:
  VariablePointer variable;
  ExpressionPointer list;
  Block body;
  Flow Execute(Frame &frame) const override;
};

class JumpStatement final : public Statement {
 public:
  JumpStatement(Flow flow, const JumpTarget *target) : flow_(flow), target_(target) {}
  Flow Execute(Frame &frame) const override {
    frame.jumpTarget = target_;
    return flow_;
  }

 private:
  Flow flow_;
  const JumpTarget *target_;
};

/// Leaves the procedure; the value, if any, goes to cell 0.
class ReturnStatement final : public Statement {
 public:
  explicit ReturnStatement(ExpressionPointer value) : value_(std::move(value)) {}
  Flow Execute(Frame &frame) const override {
    if (value_) StoreInCell(frame, *value_, frame.cells[0]);
    return Flow::kReturn;
  }

 private:
  ExpressionPointer value_;
};

/// `Redim list(upperBounds)` and the bounds in a declaration, one for each dimension.
class ResizeStatement final : public Statement {
 public:
  ResizeStatement(ExpressionPointer list, std::vector<ExpressionPointer> upperBounds)
      : list_(std::move(list)), upperBounds_(std::move(upperBounds)) {}
  Flow Execute(Frame &frame) const override;

 private:
  ExpressionPointer list_;
  std::vector<ExpressionPointer> upperBounds_;
};

class TryStatement final : public Statement {
 public:
  struct Catch {
    const host::ClassInfo *type = nullptr;  // null: every exception
    VariablePointer variable;               // null: not wanted
    Block body;
  };
  Block body;
  std::vector<Catch> catches;
  Block finally;
  bool hasFinally = false;
  Flow Execute(Frame &frame) const override;

 private:
  Flow ExecuteCaught(Frame &frame) const;
};

class RaiseStatement final : public Statement {
 public:
  RaiseStatement(Span span, ExpressionPointer exception) : span_(span), exception_(std::move(exception)) {}
  Flow Execute(Frame &frame) const override;

 private:
  Span span_;
  ExpressionPointer exception_;
};

}  // namespace quillbar::language
