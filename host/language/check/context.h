// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/check/scope.h"
#include "host/language/check/signature.h"
#include "host/language/run/runtime.h"
#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/syntax_tree.h"
#include "host/language/tree/code.h"
#include "host/language/tree/lvalues.h"
#include "host/language/tree/program.h"
#include "host/language/tree/statements.h"
#include "host/runtime/host.h"

namespace quillbar::language {

/// Thrown where a statement can't be checked any further; caught before the next statement. An empty message means
/// that the cause has been reported already.
struct CheckError {
  Span span;
  std::string message;
};

/// What all checking functions share: the program being built, the names in scope, types.
class Checker {
 public:
  Checker(const SourceText &text, host::Host &scriptHost, Program &made, Diagnostics &diagnosticList);
  Checker(const Checker &) = delete;
  Checker &operator=(const Checker &) = delete;

  const SourceText &source;
  host::Host &host;
  Program &program;
  Procedure *procedure;  // being checked
  host::Type resultType;
  const host::ClassInfo *selfClass = nullptr;  // whose method is being checked
  bool hasSelf = false;                        // and whether it has an object
  Scope predefined;
  Scope globals;
  std::deque<Scope> scopes;
  std::map<std::string, std::vector<const host::MethodInfo *>, NameLess> procedures;  // of the script

  /// A statement that `Exit` and `Continue` can be aimed at.
  struct Target {
    syntax::JumpTarget kind;
    std::string variable;
    const JumpTarget *node;
  };
  std::vector<Target> targets;  // innermost last

  /// Gives up on the statement that is being checked.
  [[noreturn]] static void Fail(Span span, std::string message);
  /// Reports an error and continues.
  void Report(Span span, std::string message) { diagnostics_.Report(source, span, std::move(message)); }

  /// Runs `check` and reports an error in it; false when there was one.
  template <class Check>
  bool Recover(Check check) {
    try {
      check();
      return true;
    } catch (const CheckError &error) {
      if (!error.message.empty()) Report(error.span, error.message);
      return false;
    }
  }

  const host::Registry &Registry() const { return host.registry(); }

  // -- Types --------------------------------------------------------------------------------------

  /// The type of this name. Fails for an unknown one.
  host::Type ResolveType(const syntax::TypeName &name) const;
  host::Type FindType(std::string_view name) const;
  /// The type of this name inside a class or module of the script.
  host::Type FindTypeIn(const host::ClassInfo &container, std::string_view name) const;

  /// Whether the code that is being checked belongs to this class or module, or to what the module contains.
  bool IsInside(const host::ClassInfo *info) const;

  // -- Scopes -------------------------------------------------------------------------------------

  /// Adds a block's scope while it lives.
  class BlockScope {
   public:
    explicit BlockScope(Checker &checker) : checker_(checker), usedBefore_(checker.usedModules.size()) {
      checker_.scopes.emplace_back();
    }
    ~BlockScope() {
      checker_.scopes.pop_back();
      checker_.usedModules.resize(usedBefore_);
    }
    BlockScope(const BlockScope &) = delete;
    BlockScope &operator=(const BlockScope &) = delete;

   private:
    Checker &checker_;
    std::size_t usedBefore_;  // modules
  };

  /// The symbol that a name means in the current scope; null when there is none. `FindLocal` looks in the blocks of the
  /// procedure only.
  Symbol *FindSymbol(std::string_view name);
  Symbol *FindLocal(std::string_view name);

  /// The constants of the script's classes, and those that nothing has asked for yet.
  std::map<const host::ClassInfo *, Scope> classConstants;
  std::map<const host::ClassInfo *, std::map<std::string, const syntax::Class::Constant *, NameLess>> pendingConstants;

  /// The script's own types and modules, by their names with the modules that contain them.
  std::map<std::string, host::Type, NameLess> types;
  std::map<const syntax::Class *, ScriptClass *> parts;

  /// A member of a module that isn't private to it.
  struct ModuleMember {
    const host::ClassInfo *module;
    host::Access access;
  };
  std::map<std::string, std::vector<ModuleMember>, NameLess> moduleMembers;
  std::vector<const host::ClassInfo *> usedModules;

  /// The modules whose member of this name is known without the module's.
  std::vector<const host::ClassInfo *> ModulesWith(std::string_view name) const;

  /// The methods that raise the events of the script's classes.
  std::map<const host::EventInfo *, const host::MethodInfo *> raisers;

  /// The type of `AddressOf Method` before it is known for which delegate.
  host::Type AddressType();

  /// The places in dispatch tables that the methods of interfaces take: the same ones in all classes.
  std::size_t interfaceSlots = 0;

  /// Enters a symbol into the innermost block, or among the script's own names outside of every block.
  Symbol &Declare(Symbol symbol);

  /// Adds a variable to the procedure being checked, or to the script, and returns its slot.
  std::size_t NewLocal(host::Type type);
  std::size_t NewGlobal(host::Type type);

  /// The node that reads or assigns the variable of a symbol.
  VariablePointer MakeVariable(const Symbol &symbol, Span span) const;

  /// Adds a nameless local variable.
  Symbol NewTemporary(host::Type type);

  bool IsInMain() const { return procedure == &program.main; }
  bool IsAtTop() const { return IsInMain() && scopes.empty(); }

  // -- Constants ----------------------------------------------------------------------------------

  /// A constant expression as a literal; any other expression unchanged.
  ExpressionPointer Fold(ExpressionPointer expression);

  /// The value of a constant expression.
  host::Value ConstantValue(const Expression &expression);

 private:
  host::ClassInfo *addressClass_ = nullptr;
  Diagnostics &diagnostics_;
  Runtime constantRuntime_;  // constants are evaluated without variables or output
};

}  // namespace quillbar::language
