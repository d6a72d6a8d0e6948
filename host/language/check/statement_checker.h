// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "host/language/check/expression_checker.h"
#include "host/language/tree/statements.h"

namespace quillbar::language {

/// Checks statements and builds the nodes that run them.
class StatementChecker : public ExpressionChecker {
 public:
  using ExpressionChecker::ExpressionChecker;

 protected:
  /// Checks statements with a scope of their own. Those with errors are reported and left out.
  Block CheckBlock(const syntax::Block &block);

  /// Checks statements in the current scope.
  void CheckStatements(const syntax::Block &block, Block &checked);

  StatementPointer CheckConstant(const syntax::Constant &constant);

  /// The variable with its slot, not yet in a scope. One of an unknown type is reported and broken.
  Symbol NewVariable(const syntax::Declare &declare, const syntax::Declare::Variable &variable);

 private:
  StatementPointer CheckStatement(const syntax::Statement &statement);
  StatementPointer CheckDeclare(const syntax::Declare &declare);
  StatementPointer CheckVariable(const syntax::Declare &declare, const syntax::Declare::Variable &variable);
  StatementPointer CheckInitial(const syntax::Declare &declare, const syntax::Declare::Variable &variable,
                                const Symbol &symbol);
  StatementPointer CheckAssign(const syntax::Assign &assign);
  StatementPointer CheckCallStatement(const syntax::CallStatement &statement);
  StatementPointer CheckIf(const syntax::If &statement);
  StatementPointer CheckSelect(const syntax::Select &statement);
  ExpressionPointer CheckCaseTest(const syntax::Select::Test &test, const Symbol &subject);
  StatementPointer CheckFor(const syntax::For &statement);
  template <class Node>
  StatementPointer FinishFor(const syntax::For &statement, const Symbol &variable);
  StatementPointer CheckForEach(const syntax::ForEach &statement);
  Symbol LoopVariable(const std::optional<syntax::TypeName> &type, const std::string &name, Span span);
  StatementPointer CheckWhile(const syntax::While &statement);
  StatementPointer CheckDo(const syntax::Do &statement);
  ExpressionPointer CheckDoTest(const syntax::Do::Test &test);
  StatementPointer CheckJump(const syntax::Jump &statement);
  StatementPointer CheckReturn(const syntax::Return &statement);
  StatementPointer CheckRedim(const syntax::Redim &statement);
  StatementPointer CheckHandler(const syntax::Handler &statement);
  void CheckHandlerSignature(const ScriptProcedure &handler, const host::EventInfo &event,
                             const host::ClassInfo &sender, Span span);
  StatementPointer CheckTry(const syntax::Try &statement);
  StatementPointer CheckRaise(const syntax::Raise &statement);
  const host::ClassInfo &ExceptionBase() const;

  /// The targets of `Exit` and `Continue`, innermost last.
  struct Target {
    syntax::JumpTarget kind;
    std::string variable;
    const JumpTarget *node;
  };
  Block CheckLoopBody(const syntax::Block &body, syntax::JumpTarget kind, const std::string &variable,
                      const JumpTarget *node);
  std::vector<Target> targets_;
};

}  // namespace quillbar::language
