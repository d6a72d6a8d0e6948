// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/check/expression_checker.h"
#include "host/language/tree/statements.h"

/// Checks statements and builds the nodes that run them.
namespace quillbar::language {

/// Checks statements with a scope of their own. Those with errors are reported and left out.
Block CheckBlock(Checker &checker, const syntax::Block &block);

/// Checks statements in the current scope.
void CheckStatements(Checker &checker, const syntax::Block &block, Block &checked);

/// The last indices of an array's dimensions.
Arguments CheckBounds(Checker &checker, const std::vector<syntax::ExpressionPointer> &written);

/// Enters a constant into the current scope.
StatementPointer CheckConstant(Checker &checker, const syntax::Constant &constant);

/// The variable with its slot, not yet in a scope. One of an unknown type is reported and broken.
Symbol NewVariable(Checker &checker, const syntax::Declare &declare, const syntax::Declare::Variable &variable);

/// Check the statement of their name.
StatementPointer CheckIf(Checker &checker, const syntax::If &statement);
StatementPointer CheckSelect(Checker &checker, const syntax::Select &statement);
StatementPointer CheckFor(Checker &checker, const syntax::For &statement);
StatementPointer CheckForEach(Checker &checker, const syntax::ForEach &statement);
StatementPointer CheckWhile(Checker &checker, const syntax::While &statement);
StatementPointer CheckDo(Checker &checker, const syntax::Do &statement);
StatementPointer CheckJump(Checker &checker, const syntax::Jump &statement);

}  // namespace quillbar::language
