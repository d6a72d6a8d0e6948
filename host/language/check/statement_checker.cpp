// SPDX-License-Identifier: MIT
#include "host/language/check/statement_checker.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/syntax/names.h"
#include "host/language/tree/conversions.h"
#include "host/language/tree/literals.h"
#include "host/language/tree/members.h"
#include "host/language/tree/procedure_call.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;
using syntax::StatementKind;

template <class Node>
const Node &To(const syntax::Statement &statement) {
  return static_cast<const Node &>(statement);
}

}  // namespace

Block StatementChecker::CheckBlock(const syntax::Block &block) {
  const BlockScope scope(*this);
  Block checked;
  CheckStatements(block, checked);
  return checked;
}

void StatementChecker::CheckStatements(const syntax::Block &block, Block &checked) {
  for (const syntax::StatementPointer &statement : block) {
    Recover([&] {
      if (StatementPointer node = CheckStatement(*statement)) checked.Add(std::move(node));
    });
  }
}

StatementPointer StatementChecker::CheckStatement(const syntax::Statement &statement) {
  switch (statement.kind) {
    case StatementKind::kDeclare:
      return CheckDeclare(To<syntax::Declare>(statement));
    case StatementKind::kConstant:
      // Those at the top level were entered before everything else.
      return IsAtTop() ? nullptr : CheckConstant(To<syntax::Constant>(statement));
    case StatementKind::kAssign:
      return CheckAssign(To<syntax::Assign>(statement));
    case StatementKind::kCall:
      return CheckCallStatement(To<syntax::CallStatement>(statement));
    case StatementKind::kIf:
      return CheckIf(To<syntax::If>(statement));
    case StatementKind::kSelect:
      return CheckSelect(To<syntax::Select>(statement));
    case StatementKind::kFor:
      return CheckFor(To<syntax::For>(statement));
    case StatementKind::kForEach:
      return CheckForEach(To<syntax::ForEach>(statement));
    case StatementKind::kWhile:
      return CheckWhile(To<syntax::While>(statement));
    case StatementKind::kDo:
      return CheckDo(To<syntax::Do>(statement));
    case StatementKind::kExit:
    case StatementKind::kContinue:
      return CheckJump(To<syntax::Jump>(statement));
    case StatementKind::kReturn:
      return CheckReturn(To<syntax::Return>(statement));
    case StatementKind::kRedim:
      return CheckRedim(To<syntax::Redim>(statement));
    case StatementKind::kHandler:
      return CheckHandler(To<syntax::Handler>(statement));
    case StatementKind::kTry:
      return CheckTry(To<syntax::Try>(statement));
    case StatementKind::kRaise:
      return CheckRaise(To<syntax::Raise>(statement));
  }
  return nullptr;
}

// -- Declarations ---------------------------------------------------------------------------------

StatementPointer StatementChecker::CheckDeclare(const syntax::Declare &declare) {
  auto sequence = std::make_unique<Sequence>();
  for (const syntax::Declare::Variable &variable : declare.variables) {
    if (StatementPointer node = CheckVariable(declare, variable)) sequence->block.Add(std::move(node));
  }
  return sequence;
}

Symbol StatementChecker::NewVariable(const syntax::Declare &declare, const syntax::Declare::Variable &variable) {
  Symbol symbol;
  symbol.name = variable.name;
  symbol.span = variable.span;
  Recover([&] {
    const Type type = ResolveType(declare.type);
    symbol.type = variable.isArray ? type.ArrayOf() : type;
    const bool isGlobal = declare.isStatic || IsAtTop();
    symbol.kind = isGlobal ? Symbol::Kind::kGlobal : Symbol::Kind::kLocal;
    symbol.slot = isGlobal ? NewGlobal(symbol.type) : NewLocal(symbol.type);
  });
  return symbol;
}

StatementPointer StatementChecker::CheckVariable(const syntax::Declare &declare,
                                                 const syntax::Declare::Variable &variable) {
  // The script's own variables were entered before, for its procedures.
  Symbol *const entered = IsAtTop() ? globals_.Find(variable.name) : nullptr;
  if (entered != nullptr && entered->span.begin != variable.span.begin) {
    Fail(variable.span,
         fmt::format("\"{}\" is declared already in line {}", variable.name, source_.Locate(entered->span.begin).line));
  }
  const Symbol symbol = entered != nullptr ? *entered : NewVariable(declare, variable);
  // The name is known from here on, but not in its own initial value.
  StatementPointer initial;
  Recover([&] { initial = CheckInitial(declare, variable, symbol); });
  if (entered != nullptr) {
    entered->isDeclared = true;
  } else {
    Declare(symbol);
  }
  if (!initial || !declare.isStatic) return initial;
  Symbol done;
  done.kind = Symbol::Kind::kGlobal;
  done.type = TypeKind::kBoolean;
  done.slot = NewGlobal(done.type);
  return std::make_unique<StaticInitializer>(MakeVariable(done, variable.span), std::move(initial));
}

StatementPointer StatementChecker::CheckInitial(const syntax::Declare &declare,
                                                const syntax::Declare::Variable &variable, const Symbol &symbol) {
  auto sequence = std::make_unique<Sequence>();
  sequence->block.Add(std::make_unique<ResetVariable>(MakeVariable(symbol, variable.span)));
  if (variable.upperBound) {
    sequence->block.Add(std::make_unique<ResizeStatement>(
        MakeVariable(symbol, variable.span),
        CheckValue(*variable.upperBound, Type::Integer(), "the last index of an array")));
  }
  if (declare.initial) {
    if (variable.upperBound) Fail(declare.initial->span, "an array with a given size takes no initial value");
    sequence->block.Add(std::make_unique<Assignment>(
        MakeVariable(symbol, variable.span),
        CheckValue(*declare.initial, symbol.type, fmt::format("the variable \"{}\"", variable.name))));
  }
  return sequence;
}

StatementPointer StatementChecker::CheckConstant(const syntax::Constant &constant) {
  Symbol symbol;
  symbol.name = constant.name;
  symbol.span = constant.nameSpan;
  Recover([&] {
    ExpressionPointer value = CheckValue(*constant.value);
    if (constant.type) {
      value = Convert(std::move(value), ResolveType(*constant.type), fmt::format("the constant \"{}\"", constant.name));
    }
    const bool isPlain = !value->type.IsArray() && !value->type.IsObject() && !value->type.IsNil();
    if (!value->IsConstant() || !isPlain) {
      Fail(value->span, "the value of a constant is made of literals, other constants and operators");
    }
    symbol.constant = ConstantValue(*value);
    symbol.type = value->type;
    symbol.kind = Symbol::Kind::kConstant;
  });
  Declare(std::move(symbol));
  return nullptr;
}

// -- Assignments and calls ------------------------------------------------------------------------

StatementPointer StatementChecker::CheckAssign(const syntax::Assign &assign) {
  LvaluePointer lvalue = CheckLvalue(*assign.target);
  ExpressionPointer value = CheckValue(*assign.value);
  if (!assign.operation) {
    value = Convert(std::move(value), lvalue->type);
    return std::make_unique<Assignment>(std::move(lvalue), std::move(value));
  }
  const Type type = lvalue->type;
  const auto combine = [&](ExpressionPointer current) {
    const Span span = Span::Cover(assign.target->span, assign.value->span);
    return Convert(MakeBinary(*assign.operation, assign.operatorSpan, span, std::move(current), std::move(value)),
                   type);
  };
  if (dynamic_cast<const VariableLvalue *>(lvalue.get()) != nullptr) {
    ExpressionPointer current = CheckValue(*assign.target);
    return std::make_unique<Assignment>(std::move(lvalue), combine(std::move(current)));
  }
  if (dynamic_cast<const MethodLvalue *>(lvalue.get()) != nullptr) {
    Fail(assign.operatorSpan, "this can only be assigned to with \"=\"");
  }
  auto sequence = std::make_unique<Sequence>();
  const StableLvalue stable = Stabilise(std::move(lvalue), sequence->block);
  sequence->block.Add(std::make_unique<Assignment>(MakeLvalue(stable), combine(MakeLvalue(stable))));
  return sequence;
}

StatementPointer StatementChecker::CheckCallStatement(const syntax::CallStatement &statement) {
  const syntax::Expression &call = *statement.call;
  const bool isCall = call.kind == syntax::ExpressionKind::kName || call.kind == syntax::ExpressionKind::kMember ||
                      call.kind == syntax::ExpressionKind::kCall;
  if (!isCall) Fail(call.span, "this is a value, not a statement");
  ExpressionPointer checked = CheckCall(call);
  const bool isLvalue = dynamic_cast<const Lvalue *>(checked.get()) != nullptr || checked->IsConstant();
  if (isLvalue) Fail(call.span, "this is a value, not a statement; was \"=\" forgotten?");
  if (!checked->type.IsNone() && !statement.dropsResult) {
    Fail(call.span, fmt::format("this gives a value of type {} that isn't used; write \"Call\" before it to drop it",
                                Named(checked->type)));
  }
  return std::make_unique<ExpressionStatement>(std::move(checked));
}

StatementPointer StatementChecker::CheckReturn(const syntax::Return &statement) {
  if (!statement.value) {
    if (!resultType_.IsNone()) {
      Fail(statement.span, fmt::format("this Function returns {}: a value is missing", Named(resultType_)));
    }
    return std::make_unique<ReturnStatement>(nullptr);
  }
  if (resultType_.IsNone()) {
    Fail(statement.value->span, IsInMain() ? "the script itself returns no value" : "a Sub returns no value");
  }
  return std::make_unique<ReturnStatement>(CheckValue(*statement.value, resultType_, "the result"));
}

StatementPointer StatementChecker::CheckRedim(const syntax::Redim &statement) {
  ExpressionPointer list = CheckValue(*statement.list);
  if (!list->type.IsArray()) {
    Fail(statement.list->span,
         fmt::format("\"Redim\" changes the size of an array, but this is {}", Named(list->type)));
  }
  return std::make_unique<ResizeStatement>(
      std::move(list), CheckValue(*statement.upperBound, Type::Integer(), "the last index of an array"));
}

// -- Events ---------------------------------------------------------------------------------------

StatementPointer StatementChecker::CheckHandler(const syntax::Handler &statement) {
  const std::string_view word = statement.adds ? "AddHandler" : "RemoveHandler";
  if (statement.event->kind != syntax::ExpressionKind::kMember) {
    Fail(statement.event->span,
         fmt::format("\"{}\" takes an event of an object: {} object.Event, AddressOf Method", word, word));
  }
  const auto &member = static_cast<const syntax::Member &>(*statement.event);
  ExpressionPointer object = CheckValue(*member.base);
  const host::ClassInfo *info = object->type.IsObject() ? object->type.objectClass() : nullptr;
  const host::EventInfo *event = info == nullptr ? nullptr : info->FindEvent(member.name);
  if (event == nullptr) {
    std::vector<std::string_view> candidates;
    for (const host::ClassInfo *of = info; of != nullptr; of = of->superclass) {
      for (const host::EventInfo &other : of->events) candidates.push_back(other.name);
    }
    Fail(member.nameSpan, fmt::format("{} has no event \"{}\"{}", Named(object->type), member.name,
                                      Suggestion(member.name, candidates)));
  }
  const ScriptProcedure &handler = CheckAddressOf(*statement.procedure);
  CheckHandlerSignature(handler, *event, *info, statement.procedure->span);
  return std::make_unique<HandlerStatement>(member.span, std::move(object), *event,
                                            statement.adds ? handler.procedure : nullptr);
}

void StatementChecker::CheckHandlerSignature(const ScriptProcedure &handler, const host::EventInfo &event,
                                             const host::ClassInfo &sender, Span span) {
  bool fits = handler.parameters.size() == event.parameters.size() + 1 && handler.result == event.result;
  if (fits) {
    const CallParameter &first = handler.parameters.front();
    fits = !first.byReference && ImplicitCost(Type::Class(sender), first.type).has_value();
  }
  for (std::size_t i = 0; fits && i < event.parameters.size(); ++i) {
    fits = handler.parameters[i + 1].type == event.parameters[i].type &&
           handler.parameters[i + 1].byReference == event.parameters[i].byRef;
  }
  if (fits) return;
  std::vector<CallParameter> wanted(1);
  wanted.front().name = "sender";
  wanted.front().type = Type::Class(sender);
  for (const host::ParameterInfo &parameter : event.parameters) {
    CallParameter &added = wanted.emplace_back();
    added.name = parameter.name;
    added.type = parameter.type;
    added.byReference = parameter.byRef;
  }
  Fail(span, fmt::format("the handler of {} must be declared as: {}", event.name,
                         DescribeSignature(handler.name, wanted, event.result)));
}

// -- Exceptions -----------------------------------------------------------------------------------

const host::ClassInfo &StatementChecker::ExceptionBase() const { return host_.Class("RuntimeException"); }

StatementPointer StatementChecker::CheckTry(const syntax::Try &statement) {
  auto node = std::make_unique<TryStatement>();
  node->body = CheckBlock(statement.body);
  for (const syntax::Try::Catch &handler : statement.catches) {
    TryStatement::Catch &checked = node->catches.emplace_back();
    const BlockScope scope(*this);
    Recover([&] {
      Type type = Type::Class(ExceptionBase());
      if (handler.type) {
        type = ResolveType(*handler.type);
        if (!ImplicitCost(type, Type::Class(ExceptionBase()))) {
          Fail(handler.type->span,
               fmt::format("{} is not an exception; exceptions are kinds of RuntimeException", Named(type)));
        }
        checked.type = type.objectClass();
      }
      if (handler.variable.empty()) return;
      Symbol symbol;
      symbol.kind = Symbol::Kind::kLocal;
      symbol.name = handler.variable;
      symbol.span = handler.span;
      symbol.type = type;
      symbol.slot = NewLocal(type);
      checked.variable = MakeVariable(symbol, handler.span);
      Declare(std::move(symbol));
    });
    CheckStatements(handler.body, checked.body);
  }
  node->hasFinally = !statement.finally.empty();
  node->finally = CheckBlock(statement.finally);
  return node;
}

StatementPointer StatementChecker::CheckRaise(const syntax::Raise &statement) {
  ExpressionPointer exception = CheckValue(*statement.exception);
  if (!ImplicitCost(exception->type, Type::Class(ExceptionBase()))) {
    Fail(statement.exception->span,
         fmt::format("\"Raise\" takes an exception, but this is {}", Named(exception->type)));
  }
  return std::make_unique<RaiseStatement>(statement.span, std::move(exception));
}

}  // namespace quillbar::language
