// SPDX-License-Identifier: MIT
#include "host/language/check/call_checker.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/language/tree/conversions.h"
#include "host/language/tree/literals.h"
#include "host/language/tree/members.h"
#include "host/language/tree/procedure_call.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

constexpr int kAnyCost = 60;
constexpr int kColourNumberCost = 50;
constexpr int kOperatorConvertCost = 70;
constexpr int kListCost = 30;  // arguments that a ParamArray gathers

bool IsPrintable(Type type) {
  if (type.IsArray()) return false;
  return host::IsNumeric(type.kind()) || type.IsString() || type.IsEnumeration() || type.kind() == TypeKind::kBoolean ||
         type.kind() == TypeKind::kColor;
}

const ArrayLiteral *AsArrayLiteral(const Expression &value) { return dynamic_cast<const ArrayLiteral *>(&value); }

/// `&hFF8000` for a Color: a whole number that is a constant and in range.
bool IsColourNumber(const Expression &value, Type type) {
  const auto *constant = dynamic_cast<const IntegerConstant *>(&value);
  return type.kind() == TypeKind::kColor && constant != nullptr && host::IsInteger(value.type.kind()) &&
         constant->value >= 0 && constant->value <= 0xFFFFFFFF;
}

/// The method that converts objects of this class to `type`; null when the class has none.
const host::MethodInfo *FindOperatorConvert(Type from, Type type) {
  if (!from.IsObject()) return nullptr;
  for (const host::MethodInfo *method : from.objectClass()->FindMethods("Operator_Convert")) {
    if (method->parameters.empty() && method->result == type) return method;
  }
  return nullptr;
}

std::string ConversionHint(Type from, Type to) {
  if (to.IsString() && IsPrintable(from)) return "; convert it with Str(…)";
  if (from.IsString() && host::IsNumeric(to.kind())) return "; convert it with Val(…)";
  if (from.IsString() && to.IsEnumeration()) {
    const host::EnumerationInfo &info = *to.enumeration();
    return info.members.empty()
               ? std::string()
               : fmt::format("; write one of its members, such as {}.{}", to.Name(), info.members.front().name);
  }
  if (from.IsEnumeration() || to.IsEnumeration()) return fmt::format("; convert it with CType(…, {})", to.Name());
  if (from.IsObject() && to.IsObject() && CanConvertExplicitly(from, to)) {
    return fmt::format("; convert it with {}(…)", to.Name());
  }
  return {};
}

std::size_t CountRequired(const Callable &callable) {
  return static_cast<std::size_t>(
      std::count_if(callable.parameters.begin(), callable.parameters.end(),
                    [](const CallParameter &parameter) { return !parameter.isOptional && !parameter.isList; }));
}

bool TakesList(const Callable &callable) { return !callable.parameters.empty() && callable.parameters.back().isList; }

}  // namespace

std::string Named(Type type) {
  if (type.IsNil()) return "Nil";
  if (type.IsNone()) return "no value";
  if (type.IsArray()) {
    return type.Element().IsNil() ? "an array" : fmt::format("an array of {}", type.Element().Name());
  }
  return type.Name();
}

std::optional<int> CallChecker::Cost(const Expression &value, Type type) const {
  if (const std::optional<int> cost = ImplicitCost(value.type, type)) return cost;
  if (IsColourNumber(value, type)) return kColourNumberCost;
  if (FindOperatorConvert(value.type, type) != nullptr) return kOperatorConvertCost;
  const ArrayLiteral *literal = AsArrayLiteral(value);
  if (literal == nullptr || !type.IsArray()) return std::nullopt;
  int worst = 1;
  for (const ExpressionPointer &element : literal->elements) {
    const std::optional<int> cost = Cost(*element, type.Element());
    if (!cost) return std::nullopt;
    worst = std::max(worst, *cost);
  }
  return worst;
}

ExpressionPointer CallChecker::Convert(ExpressionPointer value, Type type, std::string_view purpose) {
  const Span span = value->span;
  if (!Cost(*value, type)) {
    const std::string what = purpose.empty() ? std::string() : fmt::format(" for {}", purpose);
    Fail(span, fmt::format("{} is needed{}, but this is {}{}", Named(type), what, Named(value->type),
                           ConversionHint(value->type, type)));
  }
  if (value->type == type) return value;
  if (const ArrayLiteral *literal = AsArrayLiteral(*value); literal != nullptr && type.IsArray()) {
    std::vector<ExpressionPointer> elements;
    for (ExpressionPointer &element : static_cast<ArrayLiteral &>(*value).elements) {
      elements.push_back(Convert(std::move(element), type.Element()));
    }
    return std::make_unique<ArrayLiteral>(type.Element(), span, std::move(elements));
  }
  if (!ImplicitCost(value->type, type)) {
    if (const host::MethodInfo *method = FindOperatorConvert(value->type, type)) {
      return std::make_unique<MethodCall>(span, *method, std::move(value), Arguments());
    }
  }
  return Fold(MakeConversion(std::move(value), type, span));
}

// -- Overloads ------------------------------------------------------------------------------------

std::optional<int> CallChecker::CallCost(const Callable &callable, const Arguments &arguments) const {
  const bool takesList = TakesList(callable);
  const std::size_t fixedCount = callable.parameters.size() - (takesList ? 1 : 0);
  if (arguments.size() < CountRequired(callable)) return std::nullopt;
  if (arguments.size() > fixedCount && !takesList) return std::nullopt;

  int total = takesList ? kListCost : 0;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const bool isListed = i >= fixedCount;
    const CallParameter &parameter = callable.parameters[isListed ? fixedCount : i];
    const Type type = isListed ? parameter.type.Element() : parameter.type;
    const Expression &argument = *arguments[i];
    if (parameter.isAny) {
      if (!IsPrintable(argument.type)) return std::nullopt;
      total += kAnyCost;
      continue;
    }
    if (parameter.byReference && argument.type != type) return std::nullopt;
    const std::optional<int> cost = Cost(argument, type);
    if (!cost) return std::nullopt;
    total += *cost;
  }
  return total;
}

CallChecker::Choice CallChecker::Choose(const std::vector<Callable> &callables, const Arguments &arguments) const {
  Choice best;
  for (const Callable &callable : callables) {
    const std::optional<int> cost = CallCost(callable, arguments);
    if (!cost || (best.callable != nullptr && *cost > best.cost)) continue;
    best.isAmbiguous = best.callable != nullptr && *cost == best.cost;
    best.callable = &callable;
    best.cost = *cost;
  }
  return best;
}

void CallChecker::ExplainMismatch(const Callable &callable, const Arguments &arguments, Span span) const {
  const bool hasReceiver = std::holds_alternative<const LibraryFunction *>(callable.target) &&
                           std::get<const LibraryFunction *>(callable.target)->form == LibraryFunction::Form::kMethod;
  const std::size_t skipped = hasReceiver ? 1 : 0;
  const std::size_t required = CountRequired(callable) - skipped;
  const std::size_t most = callable.parameters.size() - skipped;
  const std::size_t given = arguments.size() - skipped;
  if (given < required || (given > most && !TakesList(callable))) {
    const std::string wanted = TakesList(callable) ? fmt::format("{} or more", required)
                               : required == most  ? fmt::format("{}", required)
                                                   : fmt::format("{} to {}", required, most);
    Fail(span, fmt::format("\"{}\" takes {} argument{}, {} given: {}", callable.name, wanted, wanted == "1" ? "" : "s",
                           given == 0   ? "none is"
                           : given == 1 ? "1 is"
                                        : fmt::format("{} are", given),
                           callable.Describe()));
  }
  for (std::size_t i = skipped; i < arguments.size(); ++i) {
    const std::size_t at = std::min(i, callable.parameters.size() - 1);
    const CallParameter &parameter = callable.parameters[at];
    const Expression &argument = *arguments[i];
    const Type type = parameter.isList ? parameter.type.Element() : parameter.type;
    const std::string purpose = fmt::format("the argument \"{}\" of {}", parameter.name, callable.name);
    if (parameter.isAny) {
      if (IsPrintable(argument.type)) continue;
      Fail(argument.span, fmt::format("a number, a text or a Boolean is needed for {}, but this is {}", purpose,
                                      Named(argument.type)));
    }
    if (parameter.byReference && argument.type != type) {
      Fail(argument.span, fmt::format("a variable of exactly the type {} is needed for {} (ByRef), but this is {}",
                                      Named(type), purpose, Named(argument.type)));
    }
    if (!Cost(argument, type)) {
      Fail(argument.span, fmt::format("{} is needed for {}, but this is {}{}", Named(type), purpose,
                                      Named(argument.type), ConversionHint(argument.type, type)));
    }
  }
}

void CallChecker::FailNoOverload(const Resolution &callee, const Arguments &arguments, Span span) const {
  // When the number of arguments leaves one candidate, that is the one that was meant.
  const Callable *meant = callee.callables.size() == 1 ? &callee.callables.front() : nullptr;
  std::size_t fittingCount = 0;
  for (const Callable &callable : callee.callables) {
    const bool fits = arguments.size() >= CountRequired(callable) &&
                      (arguments.size() <= callable.parameters.size() || TakesList(callable));
    if (fits && ++fittingCount == 1) meant = &callable;
  }
  if (meant != nullptr && fittingCount <= 1) ExplainMismatch(*meant, arguments, span);
  std::string candidates;
  for (const Callable &callable : callee.callables) candidates += "\n  " + callable.Describe();
  Fail(span, fmt::format("no \"{}\" takes these arguments; there is{}", callee.name, candidates));
}

void CallChecker::BindElements(Resolution &callee, const Arguments &arguments) const {
  if (arguments.empty() || !arguments.front()->type.IsArray()) return;
  for (Callable &callable : callee.callables) {
    const auto *library = std::get_if<const LibraryFunction *>(&callable.target);
    if (library == nullptr || (*library)->form != LibraryFunction::Form::kFunction) continue;
    callable = MakeCallable(**library, {}, arguments.front()->type.Element(), Registry());
  }
}

ExpressionPointer CallChecker::Call(Resolution callee, Arguments arguments, Span span) {
  const bool isMethodOfLibrary =
      callee.value != nullptr && std::holds_alternative<const LibraryFunction *>(callee.callables.front().target);
  if (isMethodOfLibrary) arguments.insert(arguments.begin(), std::move(callee.value));
  for (std::size_t i = isMethodOfLibrary ? 1 : 0; i < arguments.size(); ++i) {
    if (arguments[i]->type.IsNone()) Fail(arguments[i]->span, "this is the call of a Sub, which has no value");
  }
  BindElements(callee, arguments);
  const Choice choice = Choose(callee.callables, arguments);
  if (choice.callable == nullptr) FailNoOverload(callee, arguments, span);
  if (choice.isAmbiguous) {
    Fail(span, fmt::format("several \"{}\" take these arguments equally well; convert them with CType", callee.name));
  }
  return MakeCall(*choice.callable, std::move(callee.value), std::move(arguments), span);
}

// -- Making calls ---------------------------------------------------------------------------------

CallChecker::Arguments CallChecker::FillIn(const Callable &callable, Arguments arguments, Span span) {
  const bool takesList = TakesList(callable);
  const std::size_t fixedCount = callable.parameters.size() - (takesList ? 1 : 0);
  Arguments filled;
  Arguments listed;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const bool isListed = i >= fixedCount;
    const CallParameter &parameter = callable.parameters[isListed ? fixedCount : i];
    if (parameter.byReference || parameter.isAny) {
      filled.push_back(std::move(arguments[i]));
      continue;
    }
    const Type type = isListed ? parameter.type.Element() : parameter.type;
    (isListed ? listed : filled)
        .push_back(Convert(std::move(arguments[i]), type,
                           fmt::format("the argument \"{}\" of {}", parameter.name, callable.name)));
  }
  if (takesList) {
    const Type element = callable.parameters.back().type.Element();
    filled.push_back(std::make_unique<ArrayLiteral>(element, span, std::move(listed)));
    return filled;
  }
  // The host fills in what a call of a class's method leaves out.
  if (std::holds_alternative<const host::MethodInfo *>(callable.target)) return filled;
  for (std::size_t i = filled.size(); i < callable.parameters.size(); ++i) {
    const CallParameter &parameter = callable.parameters[i];
    if (parameter.type.IsArray()) {
      filled.push_back(std::make_unique<ArrayLiteral>(parameter.type.Element(), span, Arguments()));
    } else {
      filled.push_back(MakeConstant(parameter.defaultValue, span));
    }
  }
  return filled;
}

ExpressionPointer CallChecker::PassReference(const Callable &callable, const CallParameter &parameter,
                                             ExpressionPointer argument, Block &before, Block &after) {
  if (dynamic_cast<const VariableLvalue *>(argument.get()) != nullptr) return argument;
  if (dynamic_cast<const ElementLvalue *>(argument.get()) == nullptr) {
    Fail(argument->span,
         fmt::format("the argument \"{}\" of {} is ByRef: it needs a variable or an element of an array",
                     parameter.name, callable.name));
  }
  // An element may move while the call runs, so a temporary variable is passed instead.
  const StableLvalue lvalue = Stabilise(std::move(argument), before);
  const Symbol temporary = NewTemporary(lvalue.type);
  before.Add(std::make_unique<Assignment>(MakeVariable(temporary, lvalue.span), MakeLvalue(lvalue)));
  after.Add(std::make_unique<Assignment>(MakeLvalue(lvalue), MakeVariable(temporary, lvalue.span)));
  return MakeVariable(temporary, lvalue.span);
}

ExpressionPointer CallChecker::MakeCall(const Callable &callable, ExpressionPointer receiver, Arguments arguments,
                                        Span span) {
  if (const auto *library = std::get_if<const LibraryFunction *>(&callable.target)) {
    return (*library)->make(callable.result, span, FillIn(callable, std::move(arguments), span));
  }
  Block before;
  Block after;
  bool isSurrounded = false;
  arguments = FillIn(callable, std::move(arguments), span);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (!callable.parameters[i].byReference) continue;
    isSurrounded = isSurrounded || dynamic_cast<const VariableLvalue *>(arguments[i].get()) == nullptr;
    arguments[i] = PassReference(callable, callable.parameters[i], std::move(arguments[i]), before, after);
  }

  ExpressionPointer call;
  if (const auto *method = std::get_if<const host::MethodInfo *>(&callable.target)) {
    call = std::make_unique<MethodCall>(span, **method, (*method)->isShared ? nullptr : std::move(receiver),
                                        std::move(arguments));
  } else {
    const ScriptProcedure &script = *std::get<const ScriptProcedure *>(callable.target);
    std::vector<ProcedureCall::Argument> passed;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      ProcedureCall::Argument &argument = passed.emplace_back();
      argument.value = std::move(arguments[i]);
      if (callable.parameters[i].byReference) {
        argument.variable = static_cast<const VariableLvalue *>(argument.value.get());
      }
    }
    call = std::make_unique<ProcedureCall>(callable.result, span, *script.procedure, std::move(passed));
  }
  if (!isSurrounded) return call;
  return std::make_unique<CopyInCopyOut>(std::move(before), std::move(call), std::move(after));
}

ExpressionPointer CallChecker::Construct(Type type, Arguments arguments, Span span) {
  if (!type.IsObject()) Fail(span, fmt::format("{} is not a class; \"New\" makes objects", Named(type)));
  const host::ClassInfo &info = *type.objectClass();
  if (!info.isRegistered) {
    Fail(span, fmt::format("the class {} comes from a plugin that isn't loaded", info.name));
  }
  Resolution constructors;
  constructors.name = info.name;
  for (const host::MethodInfo *constructor : info.FindMethods("Constructor")) {
    if (constructor->IsPrivate()) continue;
    Callable &callable = constructors.callables.emplace_back(MakeCallable(*constructor));
    callable.name = fmt::format("New {}", info.name);
  }
  if (constructors.callables.empty()) {
    if (!info.FindMethods("Constructor").empty()) {
      Fail(span, fmt::format("objects of the class {} can't be made with \"New\"; methods of other classes give them",
                             info.name));
    }
    if (!arguments.empty()) Fail(span, fmt::format("\"New {}\" takes no arguments", info.name));
    return std::make_unique<NewObject>(span, info, nullptr, Arguments());
  }
  const Choice choice = Choose(constructors.callables, arguments);
  if (choice.callable == nullptr) FailNoOverload(constructors, arguments, span);
  if (choice.isAmbiguous)
    Fail(span, fmt::format("several constructors of {} take these arguments equally well", info.name));
  return std::make_unique<NewObject>(span, info, std::get<const host::MethodInfo *>(choice.callable->target),
                                     FillIn(*choice.callable, std::move(arguments), span));
}

// -- Lvalues used more than once ------------------------------------------------------------------

CallChecker::StableLvalue CallChecker::Stabilise(ExpressionPointer lvalue, Block &before) {
  StableLvalue stable;
  stable.type = lvalue->type;
  stable.span = lvalue->span;
  const auto keep = [&](ExpressionPointer part) {
    const Symbol temporary = NewTemporary(part->type);
    const Span span = part->span;
    before.Add(std::make_unique<Assignment>(MakeVariable(temporary, span), std::move(part)));
    stable.parts.push_back(temporary);
    stable.parts.back().span = span;
  };
  if (auto *element = dynamic_cast<ElementLvalue *>(lvalue.get())) {
    stable.isElement = true;
    keep(element->TakeList());
    keep(element->TakeIndex());
  } else if (auto *property = dynamic_cast<PropertyLvalue *>(lvalue.get())) {
    stable.property = &property->Property();
    if (ExpressionPointer object = property->TakeObject()) keep(std::move(object));
  }
  return stable;
}

LvaluePointer CallChecker::MakeLvalue(const StableLvalue &lvalue) const {
  const auto part = [&](std::size_t index) { return MakeVariable(lvalue.parts[index], lvalue.parts[index].span); };
  if (lvalue.isElement) return std::make_unique<ElementLvalue>(lvalue.span, part(0), part(1));
  return std::make_unique<PropertyLvalue>(lvalue.span, *lvalue.property,
                                          lvalue.parts.empty() ? nullptr : ExpressionPointer(part(0)));
}

}  // namespace quillbar::language
