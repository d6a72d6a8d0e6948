// SPDX-License-Identifier: MIT
#include "host/language/check/statement_checker.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/check/class_checker.h"
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

StatementPointer CheckInitial(Checker &checker, const syntax::Declare &declare,
                              const syntax::Declare::Variable &variable, const Symbol &symbol) {
  auto sequence = std::make_unique<Sequence>();
  sequence->block.Add(std::make_unique<ResetVariable>(checker.MakeVariable(symbol, variable.span)));
  if (!variable.upperBounds.empty()) {
    sequence->block.Add(std::make_unique<ResizeStatement>(checker.MakeVariable(symbol, variable.span),
                                                          CheckBounds(checker, variable.upperBounds)));
  }
  if (declare.initial) {
    if (!variable.upperBounds.empty())
      checker.Fail(declare.initial->span, "an array with a given size takes no initial value");
    sequence->block.Add(MakeAssignment(
        checker.MakeVariable(symbol, variable.span),
        CheckValue(checker, *declare.initial, symbol.type, fmt::format("the variable \"{}\"", variable.name))));
  }
  return sequence;
}

StatementPointer CheckVariable(Checker &checker, const syntax::Declare &declare,
                               const syntax::Declare::Variable &variable) {
  // The script's own variables were entered before, for its procedures.
  Symbol *const entered = checker.IsAtTop() ? checker.globals.Find(variable.name) : nullptr;
  if (entered != nullptr && entered->span.begin != variable.span.begin) {
    checker.Fail(variable.span, fmt::format("\"{}\" is declared already in {}", variable.name,
                                            checker.source.DescribeLine(entered->span.begin, variable.span.begin)));
  }
  const Symbol symbol = entered != nullptr ? *entered : NewVariable(checker, declare, variable);
  // The name is known from here on, but not in its own initial value.
  StatementPointer initial;
  checker.Recover([&] { initial = CheckInitial(checker, declare, variable, symbol); });
  if (entered != nullptr) {
    entered->isDeclared = true;
  } else {
    checker.Declare(symbol);
  }
  if (!initial || !declare.isStatic) return initial;
  Symbol done;
  done.kind = Symbol::Kind::kGlobal;
  done.type = TypeKind::kBoolean;
  done.slot = checker.NewGlobal(done.type);
  return std::make_unique<StaticInitializer>(checker.MakeVariable(done, variable.span), std::move(initial));
}

StatementPointer CheckDeclare(Checker &checker, const syntax::Declare &declare) {
  auto sequence = std::make_unique<Sequence>();
  for (const syntax::Declare::Variable &variable : declare.variables) {
    if (StatementPointer node = CheckVariable(checker, declare, variable)) sequence->block.Add(std::move(node));
  }
  return sequence;
}

/// The node for `text = text + a + b` and `text += a`; null for anything else.
StatementPointer MakeTextAppend(Checker &checker, const syntax::Assign &assign, LvaluePointer &lvalue) {
  const host::PropertyInfo *property = PropertyOf(*lvalue);
  const bool hasStorage = lvalue->kind == NodeKind::kVariable || (property != nullptr && property->isField);
  if (!hasStorage || !lvalue->type.IsString() || assign.target->kind != syntax::ExpressionKind::kName) return nullptr;
  std::vector<const syntax::Expression *> written;
  const syntax::Expression *left = assign.value.get();
  if (assign.operation) {
    if (*assign.operation != syntax::BinaryOperator::kAdd) return nullptr;
    written.push_back(left);
  } else {
    const auto isSum = [](const syntax::Expression &expression) {
      return expression.kind == syntax::ExpressionKind::kBinary &&
             static_cast<const syntax::Binary &>(expression).operation == syntax::BinaryOperator::kAdd;
    };
    for (; isSum(*left); left = static_cast<const syntax::Binary &>(*left).left.get()) {
      written.insert(written.begin(), static_cast<const syntax::Binary &>(*left).right.get());
    }
    const bool isSame =
        left->kind == syntax::ExpressionKind::kName &&
        SameName(static_cast<const syntax::Name &>(*left).name, static_cast<const syntax::Name &>(*assign.target).name);
    if (!isSame || written.empty()) return nullptr;
  }
  std::vector<ExpressionPointer> added;
  for (const syntax::Expression *part : written) {
    added.push_back(CheckValue(checker, *part));
    if (!added.back()->type.IsString()) return nullptr;
  }
  return std::make_unique<TextAppend>(assign.value->span, std::move(lvalue), std::move(added));
}

StatementPointer CheckAssign(Checker &checker, const syntax::Assign &assign) {
  LvaluePointer lvalue = CheckLvalue(checker, *assign.target);
  if (StatementPointer append = MakeTextAppend(checker, assign, lvalue)) return append;
  ExpressionPointer value = CheckValue(checker, *assign.value);
  if (!assign.operation) {
    value = Convert(checker, std::move(value), lvalue->type);
    return MakeAssignment(std::move(lvalue), std::move(value));
  }
  const Type type = lvalue->type;
  const auto combine = [&](ExpressionPointer current) {
    const Span span = Span::Cover(assign.target->span, assign.value->span);
    return Convert(
        checker,
        MakeBinary(checker, *assign.operation, assign.operatorSpan, span, std::move(current), std::move(value)), type);
  };
  if (lvalue->kind == NodeKind::kVariable) {
    ExpressionPointer current = CheckValue(checker, *assign.target);
    return MakeAssignment(std::move(lvalue), combine(std::move(current)));
  }
  if (lvalue->kind == NodeKind::kMethod) {
    checker.Fail(assign.operatorSpan, "this can only be assigned to with \"=\"");
  }
  auto sequence = std::make_unique<Sequence>();
  const StableLvalue stable = Stabilise(checker, std::move(lvalue), sequence->block);
  sequence->block.Add(MakeAssignment(MakeLvalue(checker, stable), combine(MakeLvalue(checker, stable))));
  return sequence;
}

/// Whether this raises an event; what a handler returns may be dropped.
bool IsRaise(const syntax::Expression &call) {
  const bool hasArguments = call.kind == syntax::ExpressionKind::kCall;
  const syntax::Expression &callee = hasArguments ? *static_cast<const syntax::Call &>(call).callee : call;
  return callee.kind == syntax::ExpressionKind::kRaiseEvent;
}

StatementPointer CheckCallStatement(Checker &checker, const syntax::CallStatement &statement) {
  const syntax::Expression &call = *statement.call;
  const bool isRaise = IsRaise(call);
  const bool isCall = isRaise || call.kind == syntax::ExpressionKind::kName ||
                      call.kind == syntax::ExpressionKind::kMember || call.kind == syntax::ExpressionKind::kCall;
  if (!isCall) checker.Fail(call.span, "this is a value, not a statement");
  ExpressionPointer checked = CheckCall(checker, call);
  if (checked->IsLvalue() && checked->type.IsObject() && IsDelegate(checked->type.objectClass())) {
    checked = CallDelegate(checker, std::move(checked), {}, call.span);
  }
  const bool isLvalue = checked->IsLvalue() || checked->IsConstant();
  if (isLvalue) checker.Fail(call.span, "this is a value, not a statement; was \"=\" forgotten?");
  if (!checked->type.IsNone() && !statement.dropsResult && !isRaise) {
    checker.Fail(call.span,
                 fmt::format("this gives a value of type {} that isn't used; write \"Call\" before it to drop it",
                             Named(checked->type)));
  }
  return std::make_unique<ExpressionStatement>(std::move(checked));
}

StatementPointer CheckReturn(Checker &checker, const syntax::Return &statement) {
  if (!statement.value) {
    if (!checker.resultType.IsNone()) {
      checker.Fail(statement.span,
                   fmt::format("this Function returns {}: a value is missing", Named(checker.resultType)));
    }
    return std::make_unique<ReturnStatement>(nullptr);
  }
  if (checker.resultType.IsNone()) {
    checker.Fail(statement.value->span,
                 checker.IsInMain() ? "the script itself returns no value" : "a Sub returns no value");
  }
  return std::make_unique<ReturnStatement>(CheckValue(checker, *statement.value, checker.resultType, "the result"));
}

StatementPointer CheckRedim(Checker &checker, const syntax::Redim &statement) {
  ExpressionPointer list = CheckValue(checker, *statement.list);
  if (!list->type.IsArray()) {
    checker.Fail(statement.list->span,
                 fmt::format("\"Redim\" changes the size of an array, but this is {}", Named(list->type)));
  }
  if (list->type.Rank() != static_cast<int>(statement.upperBounds.size())) {
    checker.Fail(statement.span,
                 fmt::format("\"Redim\" takes the last index of each dimension: this array has {}", list->type.Rank()));
  }
  return std::make_unique<ResizeStatement>(std::move(list), CheckBounds(checker, statement.upperBounds));
}

void CheckHandlerSignature(Checker &checker, const host::MethodInfo &handler, const host::EventInfo &event,
                           const host::ClassInfo &sender, Span span) {
  bool fits = handler.parameters.size() == event.parameters.size() + 1 && handler.result == event.result;
  if (fits) {
    const ParameterInfo &first = handler.parameters.front();
    fits = !first.byRef && host::ConversionCost(Type::Class(sender), first.type).has_value();
  }
  for (std::size_t i = 0; fits && i < event.parameters.size(); ++i) {
    fits = handler.parameters[i + 1].type == event.parameters[i].type &&
           handler.parameters[i + 1].byRef == event.parameters[i].byRef;
  }
  if (fits) return;
  std::vector<ParameterInfo> wanted(1);
  wanted.front().name = "sender";
  wanted.front().type = Type::Class(sender);
  for (const host::ParameterInfo &parameter : event.parameters) {
    ParameterInfo &added = wanted.emplace_back();
    added.name = parameter.name;
    added.type = parameter.type;
    added.byRef = parameter.byRef;
  }
  checker.Fail(span, fmt::format("the handler of {} must be declared as: {}", event.name,
                                 DescribeSignature(handler.name, wanted, event.result)));
}

StatementPointer CheckHandler(Checker &checker, const syntax::Handler &statement) {
  const std::string_view word = statement.adds ? "AddHandler" : "RemoveHandler";
  if (statement.event->kind != syntax::ExpressionKind::kMember) {
    checker.Fail(statement.event->span,
                 fmt::format("\"{}\" takes an event of an object: {} object.Event, AddressOf Method", word, word));
  }
  const auto &member = static_cast<const syntax::Member &>(*statement.event);
  ExpressionPointer object = CheckValue(checker, *member.base);
  const host::ClassInfo *info = object->type.IsObject() ? object->type.objectClass() : nullptr;
  const host::EventInfo *event = info == nullptr ? nullptr : info->FindEvent(member.name);
  if (event == nullptr) {
    std::vector<std::string_view> candidates;
    for (const host::ClassInfo *of = info; of != nullptr; of = of->superclass) {
      for (const host::EventInfo &other : of->events) candidates.push_back(other.name);
    }
    checker.Fail(member.nameSpan, fmt::format("{} has no event \"{}\"{}", Named(object->type), member.name,
                                              Suggestion(member.name, candidates)));
  }
  const std::unique_ptr<AddressNode> address = CheckAddressOf(checker, *statement.procedure);
  const host::MethodInfo &handler = OnlyMethod(checker, *address);
  CheckHandlerSignature(checker, handler, *event, *info, statement.procedure->span);
  if (statement.adds && !handler.isShared) {
    return std::make_unique<BoundHandlerStatement>(member.span, std::move(object), *event, handler,
                                                   std::move(address->object));
  }
  return std::make_unique<HandlerStatement>(member.span, std::move(object), *event,
                                            statement.adds ? &CodeOf(handler) : nullptr);
}

const host::ClassInfo &ExceptionBase(Checker &checker) { return checker.host.Class("RuntimeException"); }

StatementPointer CheckTry(Checker &checker, const syntax::Try &statement) {
  auto node = std::make_unique<TryStatement>();
  node->body = CheckBlock(checker, statement.body);
  for (const syntax::Try::Catch &handler : statement.catches) {
    TryStatement::Catch &checked = node->catches.emplace_back();
    const Checker::BlockScope scope(checker);
    checker.Recover([&] {
      Type type = Type::Class(ExceptionBase(checker));
      if (handler.type) {
        type = checker.ResolveType(*handler.type);
        if (!host::ConversionCost(type, Type::Class(ExceptionBase(checker)))) {
          checker.Fail(handler.type->span,
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
      symbol.slot = checker.NewLocal(type);
      checked.variable = checker.MakeVariable(symbol, handler.span);
      checker.Declare(std::move(symbol));
    });
    CheckStatements(checker, handler.body, checked.body);
  }
  node->hasFinally = !statement.finally.empty();
  node->finally = CheckBlock(checker, statement.finally);
  return node;
}

StatementPointer CheckRaise(Checker &checker, const syntax::Raise &statement) {
  ExpressionPointer exception = CheckValue(checker, *statement.exception);
  if (!host::ConversionCost(exception->type, Type::Class(ExceptionBase(checker)))) {
    checker.Fail(statement.exception->span,
                 fmt::format("\"Raise\" takes an exception, but this is {}", Named(exception->type)));
  }
  return std::make_unique<RaiseStatement>(statement.span, std::move(exception));
}

StatementPointer CheckStatement(Checker &checker, const syntax::Statement &statement) {
  switch (statement.kind) {
    case StatementKind::kDeclare:
      return CheckDeclare(checker, To<syntax::Declare>(statement));
    case StatementKind::kConstant:
      // Those at the top level were entered before everything else.
      return checker.IsAtTop() ? nullptr : CheckConstant(checker, To<syntax::Constant>(statement));
    case StatementKind::kAssign:
      return CheckAssign(checker, To<syntax::Assign>(statement));
    case StatementKind::kCall:
      return CheckCallStatement(checker, To<syntax::CallStatement>(statement));
    case StatementKind::kIf:
      return CheckIf(checker, To<syntax::If>(statement));
    case StatementKind::kSelect:
      return CheckSelect(checker, To<syntax::Select>(statement));
    case StatementKind::kFor:
      return CheckFor(checker, To<syntax::For>(statement));
    case StatementKind::kForEach:
      return CheckForEach(checker, To<syntax::ForEach>(statement));
    case StatementKind::kWhile:
      return CheckWhile(checker, To<syntax::While>(statement));
    case StatementKind::kDo:
      return CheckDo(checker, To<syntax::Do>(statement));
    case StatementKind::kExit:
    case StatementKind::kContinue:
      return CheckJump(checker, To<syntax::Jump>(statement));
    case StatementKind::kReturn:
      return CheckReturn(checker, To<syntax::Return>(statement));
    case StatementKind::kRedim:
      return CheckRedim(checker, To<syntax::Redim>(statement));
    case StatementKind::kHandler:
      return CheckHandler(checker, To<syntax::Handler>(statement));
    case StatementKind::kTry:
      return CheckTry(checker, To<syntax::Try>(statement));
    case StatementKind::kUsing:
      EnterUsing(checker, To<syntax::Using>(statement));
      return nullptr;
    case StatementKind::kRaise:
      return CheckRaise(checker, To<syntax::Raise>(statement));
  }
  return nullptr;
}

// -- Declarations ---------------------------------------------------------------------------------

// -- Assignments and calls ------------------------------------------------------------------------

// -- Events ---------------------------------------------------------------------------------------

// -- Exceptions -----------------------------------------------------------------------------------

}  // namespace

Arguments CheckBounds(Checker &checker, const std::vector<syntax::ExpressionPointer> &written) {
  Arguments bounds;
  for (const syntax::ExpressionPointer &bound : written) {
    bounds.push_back(CheckValue(checker, *bound, Type::Integer(), "the last index of an array"));
  }
  return bounds;
}

Block CheckBlock(Checker &checker, const syntax::Block &block) {
  const Checker::BlockScope scope(checker);
  Block checked;
  CheckStatements(checker, block, checked);
  return checked;
}

void CheckStatements(Checker &checker, const syntax::Block &block, Block &checked) {
  if (!block.empty()) checked.SetPlace(block.front()->span);
  for (const syntax::StatementPointer &statement : block) {
    checker.Recover([&] {
      if (StatementPointer node = CheckStatement(checker, *statement)) checked.Add(std::move(node));
    });
  }
}

Symbol NewVariable(Checker &checker, const syntax::Declare &declare, const syntax::Declare::Variable &variable) {
  Symbol symbol;
  symbol.name = variable.name;
  symbol.span = variable.span;
  checker.Recover([&] {
    const Type type = checker.ResolveType(declare.type);
    symbol.type = variable.rank > 0 ? type.ArrayOf(variable.rank) : type;
    const bool isGlobal = declare.isStatic || checker.IsAtTop();
    symbol.kind = isGlobal ? Symbol::Kind::kGlobal : Symbol::Kind::kLocal;
    symbol.slot = isGlobal ? checker.NewGlobal(symbol.type) : checker.NewLocal(symbol.type);
  });
  return symbol;
}

StatementPointer CheckConstant(Checker &checker, const syntax::Constant &constant) {
  Symbol symbol;
  symbol.name = constant.name;
  symbol.span = constant.nameSpan;
  checker.Recover([&] {
    ExpressionPointer value = CheckValue(checker, *constant.value);
    if (constant.type) {
      value = Convert(checker, std::move(value), checker.ResolveType(*constant.type),
                      fmt::format("the constant \"{}\"", constant.name));
    }
    const bool isPlain = !value->type.IsArray() && !value->type.IsObject() && !value->type.IsNil();
    if (!value->IsConstant() || !isPlain) {
      checker.Fail(value->span, "the value of a constant is made of literals, other constants and operators");
    }
    symbol.constant = checker.ConstantValue(*value);
    symbol.type = value->type;
    symbol.kind = Symbol::Kind::kConstant;
  });
  checker.Declare(std::move(symbol));
  return nullptr;
}

}  // namespace quillbar::language
