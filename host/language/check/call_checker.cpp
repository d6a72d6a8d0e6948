// SPDX-License-Identifier: MIT
#include "host/language/check/call_checker.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/language/check/expression_checker.h"
#include "host/language/tree/conversions.h"
#include "host/language/tree/delegates.h"
#include "host/language/tree/literals.h"
#include "host/language/tree/members.h"
#include "host/language/tree/objects.h"
#include "host/language/tree/procedure_call.h"
#include "host/runtime/overload.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

constexpr int kAnyCost = 60;
constexpr int kColourNumberCost = 50;
constexpr int kOperatorConvertCost = 70;

bool IsPrintable(Type type) {
  if (type.IsArray()) return false;
  return host::IsNumeric(type.kind()) || type.IsString() || type.IsVariant() || type.IsEnumeration() ||
         type.kind() == TypeKind::kBoolean || type.kind() == TypeKind::kColor;
}

const ArrayLiteral *AsArrayLiteral(const Expression &value) {
  return value.kind == NodeKind::kArrayLiteral ? &static_cast<const ArrayLiteral &>(value) : nullptr;
}

/// `&hFF8000` for a Color: a whole number that is a constant and in range.
bool IsColourNumber(const Expression &value, Type type) {
  const std::int64_t *number = ConstantInteger(value);
  return type.kind() == TypeKind::kColor && number != nullptr && host::IsInteger(value.type.kind()) && *number >= 0 &&
         *number <= 0xFFFFFFFF;
}

/// The method that converts objects of this class to `type`; null when the class has none.
const host::MethodInfo *FindOperatorConvert(Type from, Type type) {
  if (!from.IsObject()) return nullptr;
  for (const host::MethodInfo *method : from.objectClass()->FindMethods("Operator_Convert")) {
    if (method->parameters.empty() && method->result == type) return method;
  }
  return nullptr;
}

const AddressNode *AsAddress(const Expression &value) {
  return value.kind == NodeKind::kAddress ? &static_cast<const AddressNode &>(value) : nullptr;
}

/// The method of an address that a delegate takes: one with the delegate's parameters and result; null when there is
/// none.
const host::MethodInfo *FindMethodFor(const AddressNode &address, const host::ClassInfo *delegate) {
  if (!IsDelegate(delegate)) return nullptr;
  const host::MethodInfo &wanted = delegate->methods.front();
  for (const host::MethodInfo *method : address.candidates) {
    if (HasSignature(*method, wanted.parameters, wanted.result)) return method;
  }
  return nullptr;
}

ExpressionPointer MakeDelegate(Checker &checker, AddressNode &address, Type type) {
  const host::MethodInfo *method = FindMethodFor(address, type.objectClass());
  const host::MethodInfo &found = *address.candidates.front();
  if (method == nullptr) {
    const host::MethodInfo &wanted = type.objectClass()->methods.front();
    checker.Fail(address.span, fmt::format("for the delegate {} the method must be declared as: {}", type.Name(),
                                           DescribeSignature(found.name, wanted.parameters, wanted.result)));
  }
  return std::make_unique<DelegateNode>(*type.objectClass(), address.span, *method,
                                        method->isShared ? nullptr : std::move(address.object));
}

/// The method with which an object of the class `type` takes over a value: `Sub Operator_Convert(value As T)`. Null when
/// there is none that takes this one.
const host::MethodInfo *FindConvertFrom(Type from, Type type) {
  if (!type.IsObject() || type.objectClass()->code == nullptr) return nullptr;
  const host::MethodInfo *best = nullptr;
  int least = 0;
  for (const host::MethodInfo *method : type.objectClass()->FindMethods("Operator_Convert")) {
    if (method->parameters.size() != 1 || !method->result.IsNone() || method->code == nullptr) continue;
    const std::optional<int> cost = host::ConversionCost(from, method->parameters.front().type);
    if (!cost || (best != nullptr && *cost >= least)) continue;
    best = method;
    least = *cost;
  }
  return best;
}

std::string ConversionHint(Type from, Type to) {
  if (from.IsObject() && !to.IsObject() && from.objectClass()->isBuiltIn && from.objectClass()->name == "Pair") {
    return "; \":\" makes a Pair, and doesn't separate statements";
  }
  if (to.IsString() && IsPrintable(from)) return "; convert it with Str(…)";
  if (from.IsString() && host::IsNumeric(to.kind())) return "; convert it with Val(…)";
  if (from.IsString() && to.IsEnumeration()) {
    const host::EnumerationInfo &info = *to.enumeration();
    return info.members.empty()
               ? std::string()
               : fmt::format("; write one of its members, such as {}.{}", to.Name(), info.members.front().name);
  }
  if (from.IsEnumeration() || to.IsEnumeration()) return fmt::format("; convert it with CType(…, {})", to.Name());
  if (from.IsObject() && to.IsObject() && CanConvert(from, to)) {
    return fmt::format("; convert it with {}(…)", to.Name());
  }
  return {};
}

/// The type that a parameter takes from each of its arguments.
Type ArgumentType(const ParameterInfo &parameter) {
  return parameter.isList ? parameter.type.Element() : parameter.type;
}

std::optional<int> ArgumentCost(const Expression &argument, const ParameterInfo &parameter) {
  if (parameter.isAny) return IsPrintable(argument.type) ? std::optional(kAnyCost) : std::nullopt;
  const Type type = ArgumentType(parameter);
  if (parameter.byRef && argument.type != type) return std::nullopt;
  return Cost(argument, type);
}

// -- Overloads ------------------------------------------------------------------------------------

/// The overload that the arguments fit best; one without a candidate when none takes them.
host::Choice<Callable> Choose(const std::vector<Callable> &callables, const Arguments &arguments) {
  return host::ChooseCheapest(std::span(callables), [&](const Callable &callable) {
    return host::CallCost(
        *callable.parameters, arguments.size(),
        [&](std::size_t index, const ParameterInfo &parameter) { return ArgumentCost(*arguments[index], parameter); });
  });
}

std::string PurposeOf(const ParameterInfo &parameter, const Callable &callable) {
  return fmt::format("the argument \"{}\" of {}", parameter.name, callable.name);
}

/// Fails with the reason why the only candidate doesn't take the arguments.
void ExplainMismatch(Checker &checker, const Callable &callable, const Arguments &arguments, Span span) {
  const std::vector<ParameterInfo> &parameters = *callable.parameters;
  const std::size_t skipped = callable.TakesReceiver() ? 1 : 0;
  const std::size_t required = host::RequiredCount(parameters) - skipped;
  const std::size_t most = parameters.size() - skipped;
  const std::size_t given = arguments.size() - skipped;
  if (given < required || (given > most && !callable.TakesList())) {
    const std::string wanted = callable.TakesList() ? fmt::format("{} or more", required)
                               : required == most   ? fmt::format("{}", required)
                                                    : fmt::format("{} to {}", required, most);
    checker.Fail(
        span, fmt::format("\"{}\" takes {} argument{}, {} given: {}", callable.name, wanted, wanted == "1" ? "" : "s",
                          given == 0   ? "none is"
                          : given == 1 ? "1 is"
                                       : fmt::format("{} are", given),
                          callable.Describe()));
  }
  for (std::size_t i = skipped; i < arguments.size(); ++i) {
    const ParameterInfo &parameter = parameters[std::min(i, parameters.size() - 1)];
    const Expression &argument = *arguments[i];
    if (ArgumentCost(argument, parameter)) continue;
    const Type type = ArgumentType(parameter);
    const std::string purpose = PurposeOf(parameter, callable);
    if (parameter.isAny) {
      checker.Fail(argument.span, fmt::format("a number, a text or a Boolean is needed for {}, but this is {}", purpose,
                                              Named(argument.type)));
    }
    if (parameter.byRef) {
      checker.Fail(argument.span,
                   fmt::format("a variable of exactly the type {} is needed for {} (ByRef), but this is {}",
                               Named(type), purpose, Named(argument.type)));
    }
    checker.Fail(argument.span, fmt::format("{} is needed for {}, but this is {}{}", Named(type), purpose,
                                            Named(argument.type), ConversionHint(argument.type, type)));
  }
}

[[noreturn]] void FailNoOverload(Checker &checker, const Resolution &callee, const Arguments &arguments, Span span) {
  // When the number of arguments leaves one candidate, that is the one that was meant.
  const Callable *meant = callee.callables.size() == 1 ? &callee.callables.front() : nullptr;
  std::size_t fittingCount = 0;
  for (const Callable &callable : callee.callables) {
    const bool fits = arguments.size() >= host::RequiredCount(*callable.parameters) &&
                      (arguments.size() <= callable.parameters->size() || callable.TakesList());
    if (fits && ++fittingCount == 1) meant = &callable;
  }
  if (meant != nullptr && fittingCount <= 1) ExplainMismatch(checker, *meant, arguments, span);
  std::string candidates;
  for (const Callable &callable : callee.callables) candidates += "\n  " + callable.Describe();
  checker.Fail(span, fmt::format("no \"{}\" takes these arguments; there is{}", callee.name, candidates));
}

/// Binds `Element` to the element type, in functions that take an array first.
void BindElements(Checker &checker, Resolution &callee, const Arguments &arguments) {
  if (arguments.empty() || !arguments.front()->type.IsArray()) return;
  for (Callable &callable : callee.callables) {
    const LibraryFunction *library = callable.Library();
    if (library == nullptr || library->form != LibraryFunction::Form::kFunction) continue;
    callable = MakeCallable(*library, {}, arguments.front()->type.Element(), checker.Registry());
    const int rank = arguments.front()->type.Rank();
    const bool takesAnyRank = SameName(callable.name, "Ubound") && rank > 1;
    if (takesAnyRank) {
      auto parameters = std::make_shared<std::vector<ParameterInfo>>(*callable.parameters);
      parameters->front().type = arguments.front()->type;
      callable.parameters = std::move(parameters);
    }
  }
}

// -- Making calls ---------------------------------------------------------------------------------

/// One argument for each parameter, converted to its type.
Arguments FillIn(Checker &checker, const Callable &callable, Arguments arguments, Span span) {
  const std::vector<ParameterInfo> &parameters = *callable.parameters;
  const std::size_t fixedCount = host::FixedCount(parameters);
  Arguments filled;
  Arguments listed;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const bool isListed = i >= fixedCount;
    const ParameterInfo &parameter = parameters[isListed ? fixedCount : i];
    const bool isKept = parameter.byRef || parameter.isAny;
    (isListed ? listed : filled)
        .push_back(isKept ? std::move(arguments[i])
                          : Convert(checker, std::move(arguments[i]), ArgumentType(parameter),
                                    PurposeOf(parameter, callable)));
  }
  for (std::size_t i = filled.size(); i < parameters.size(); ++i) {
    const ParameterInfo &parameter = parameters[i];
    if (parameter.type.IsArray()) {
      filled.push_back(std::make_unique<ArrayLiteral>(parameter.type.Element(), span, std::exchange(listed, {})));
    } else {
      filled.push_back(MakeConversion(MakeConstant(parameter.defaultValue, span), parameter.type, span));
    }
  }
  return filled;
}

/// The argument for a ByRef parameter: a variable, or what must be copied in and out.
ExpressionPointer PassReference(Checker &checker, const Callable &callable, const ParameterInfo &parameter,
                                ExpressionPointer argument, Block &before, Block &after) {
  if (argument->kind == NodeKind::kVariable) return argument;
  const host::PropertyInfo *property = PropertyOf(*argument);
  if (argument->kind != NodeKind::kElement && (property == nullptr || !property->isField)) {
    checker.Fail(argument->span,
                 fmt::format("the argument \"{}\" of {} is ByRef: it needs a variable or an element of an array",
                             parameter.name, callable.name));
  }
  // An element may move while the call runs, so a temporary variable is passed instead.
  const StableLvalue lvalue = Stabilise(checker, std::move(argument), before);
  const Symbol temporary = checker.NewTemporary(lvalue.type);
  before.Add(MakeAssignment(checker.MakeVariable(temporary, lvalue.span), MakeLvalue(checker, lvalue)));
  after.Add(MakeAssignment(MakeLvalue(checker, lvalue), checker.MakeVariable(temporary, lvalue.span)));
  return checker.MakeVariable(temporary, lvalue.span);
}

bool IsAccessible(const Checker &checker, host::Access access, const host::ClassInfo *owner) {
  switch (access) {
    case host::Access::kPrivate:
      return checker.IsInside(owner);
    case host::Access::kProtected:
      // What a module protects needs the module's name before it, which the look-up of names sees to.
      return IsModule(owner) || (checker.selfClass != nullptr && checker.selfClass->IsSubclassOf(*owner));
    default:
      return true;
  }
}

ExpressionPointer MakeCall(Checker &checker, const Callable &callable, ExpressionPointer receiver, Arguments arguments,
                           Span span, bool isDirect = false) {
  arguments = FillIn(checker, callable, std::move(arguments), span);
  if (const LibraryFunction *library = callable.Library()) {
    return library->make(callable.result, span, std::move(arguments));
  }
  Block before;
  Block after;
  bool isSurrounded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const ParameterInfo &parameter = (*callable.parameters)[i];
    if (!parameter.byRef) continue;
    isSurrounded = isSurrounded || arguments[i]->kind != NodeKind::kVariable;
    arguments[i] = PassReference(checker, callable, parameter, std::move(arguments[i]), before, after);
  }

  const host::MethodInfo &method = *callable.Method();
  RequireAccess(checker, method.access, method.owner, method.name, span);
  if (method.isShared) receiver = nullptr;
  ExpressionPointer call;
  if (method.raises != nullptr) {
    call = std::make_unique<RaiseEventCall>(span, method, std::move(receiver), std::move(arguments));
  } else if (method.isInvocation) {
    call = std::make_unique<DelegateCall>(span, method, std::move(receiver), std::move(arguments));
  } else if (method.code == nullptr) {
    call = std::make_unique<MethodCall>(span, method, std::move(receiver), std::move(arguments));
  } else {
    call = std::make_unique<ProcedureCall>(span, method, std::move(receiver), isDirect, std::move(arguments));
  }
  if (!isSurrounded) return call;
  return std::make_unique<CopyInCopyOut>(std::move(before), std::move(call), std::move(after));
}

}  // namespace

std::string Named(Type type) {
  if (type.IsNil()) return "Nil";
  if (type.IsNone()) return "no value";
  if (type.IsArray()) {
    if (type.Element().IsNil()) return "an array";
    const std::string dimensions = type.Rank() == 1 ? "" : fmt::format(" with {} dimensions", type.Rank());
    return fmt::format("an array of {}{}", type.Element().Name(), dimensions);
  }
  return type.Name();
}

bool CanConvert(Type from, Type to) { return host::ConversionCost(from, to, host::Conversions::kExplicit).has_value(); }

bool HasSignature(const host::MethodInfo &method, std::span<const ParameterInfo> parameters, Type result) {
  const auto sameParameter = [](const ParameterInfo &one, const ParameterInfo &other) {
    return one.type == other.type && one.byRef == other.byRef;
  };
  return method.result == result && std::ranges::equal(method.parameters, parameters, sameParameter);
}

std::optional<int> Cost(const Expression &value, Type type) {
  if (const AddressNode *address = AsAddress(value)) {
    return FindMethodFor(*address, type.objectClass()) == nullptr ? std::nullopt : std::optional(1);
  }
  if (const std::optional<int> cost = host::ConversionCost(value.type, type)) return cost;
  if (IsColourNumber(value, type)) return kColourNumberCost;
  if (FindOperatorConvert(value.type, type) != nullptr) return kOperatorConvertCost;
  if (FindConvertFrom(value.type, type) != nullptr) return kOperatorConvertCost;
  const ArrayLiteral *literal = AsArrayLiteral(value);
  if (literal == nullptr || type.Rank() != 1) return std::nullopt;
  int worst = 1;
  for (const ExpressionPointer &element : literal->elements) {
    const std::optional<int> cost = Cost(*element, type.Element());
    if (!cost) return std::nullopt;
    worst = std::max(worst, *cost);
  }
  return worst;
}

ExpressionPointer Convert(Checker &checker, ExpressionPointer value, Type type, std::string_view purpose) {
  const Span span = value->span;
  if (AsAddress(*value) != nullptr && type.IsObject() && IsDelegate(type.objectClass())) {
    return MakeDelegate(checker, static_cast<AddressNode &>(*value), type);
  }
  if (!Cost(*value, type)) {
    const std::string what = purpose.empty() ? std::string() : fmt::format(" for {}", purpose);
    checker.Fail(span, fmt::format("{} is needed{}, but this is {}{}", Named(type), what, Named(value->type),
                                   ConversionHint(value->type, type)));
  }
  if (value->type == type) return value;
  if (const ArrayLiteral *literal = AsArrayLiteral(*value); literal != nullptr && type.IsArray()) {
    std::vector<ExpressionPointer> elements;
    for (ExpressionPointer &element : static_cast<ArrayLiteral &>(*value).elements) {
      elements.push_back(Convert(checker, std::move(element), type.Element()));
    }
    return std::make_unique<ArrayLiteral>(type.Element(), span, std::move(elements));
  }
  if (!host::ConversionCost(value->type, type)) {
    if (const host::MethodInfo *method = FindOperatorConvert(value->type, type)) {
      return MakeCall(checker, MakeCallable(*method), std::move(value), {}, span);
    }
    if (const host::MethodInfo *method = FindConvertFrom(value->type, type)) {
      RequireAccess(checker, method->access, method->owner, method->name, span);
      std::vector<ExpressionPointer> arguments;
      arguments.push_back(Convert(checker, std::move(value), method->parameters.front().type));
      return std::make_unique<NewScriptObject>(span, *type.objectClass(), method, std::move(arguments));
    }
  }
  return checker.Fold(MakeConversion(std::move(value), type, span));
}

ExpressionPointer Call(Checker &checker, Resolution callee, Arguments arguments, Span span) {
  const bool hasReceiver = callee.value != nullptr && callee.callables.front().TakesReceiver();
  if (hasReceiver) arguments.insert(arguments.begin(), std::move(callee.value));
  for (std::size_t i = hasReceiver ? 1 : 0; i < arguments.size(); ++i) {
    if (arguments[i]->type.IsNone()) checker.Fail(arguments[i]->span, "this is the call of a Sub, which has no value");
  }
  BindElements(checker, callee, arguments);
  const host::Choice<Callable> choice = Choose(callee.callables, arguments);
  if (choice.best == nullptr) FailNoOverload(checker, callee, arguments, span);
  if (choice.isAmbiguous) {
    checker.Fail(span,
                 fmt::format("several \"{}\" take these arguments equally well; convert them with CType", callee.name));
  }
  return MakeCall(checker, *choice.best, std::move(callee.value), std::move(arguments), span, callee.isSuper);
}

void RequireAccess(Checker &checker, host::Access access, const host::ClassInfo *owner, std::string_view name,
                   Span span) {
  if (IsAccessible(checker, access, owner)) return;
  checker.Fail(
      span, fmt::format("\"{}\" is {} in the {} {}", name, access == host::Access::kPrivate ? "private" : "protected",
                        IsModule(owner) ? "module" : "class", owner->name));
}

ExpressionPointer CallOperator(Checker &checker, std::string_view name, ExpressionPointer &object,
                               ExpressionPointer &argument, Span span) {
  if (!object->type.IsObject()) return nullptr;
  Resolution callee;
  callee.name = name;
  for (const host::MethodInfo *method : object->type.objectClass()->FindMethods(name)) {
    callee.callables.push_back(MakeCallable(*method));
  }
  Arguments arguments;
  arguments.push_back(std::move(argument));
  if (Choose(callee.callables, arguments).best == nullptr) {
    argument = std::move(arguments.front());
    return nullptr;
  }
  callee.value = std::move(object);
  return Call(checker, std::move(callee), std::move(arguments), span);
}

ExpressionPointer CallDelegate(Checker &checker, ExpressionPointer delegate, Arguments arguments, Span span) {
  Resolution callee;
  callee.kind = Resolution::Kind::kCallables;
  callee.span = delegate->span;
  callee.name = delegate->type.Name();
  callee.callables.push_back(MakeCallable(delegate->type.objectClass()->methods.front()));
  callee.value = std::move(delegate);
  return Call(checker, std::move(callee), std::move(arguments), span);
}

LvaluePointer FindAssignment(Checker &checker, Resolution &callee,
                             const std::vector<syntax::ExpressionPointer> &written, Span span) {
  for (const Callable &callable : callee.callables) {
    const host::MethodInfo *method = callable.Method();
    const std::vector<ParameterInfo> &parameters = *callable.parameters;
    if (method == nullptr || !method->isAssignment || method->isExtension) continue;
    if (written.size() + 1 != parameters.size()) continue;
    RequireAccess(checker, method->access, method->owner, method->name, span);
    Arguments arguments;
    for (std::size_t i = 0; i < written.size(); ++i) {
      arguments.push_back(CheckValue(checker, *written[i], parameters[i].type, PurposeOf(parameters[i], callable)));
    }
    return std::make_unique<AssignsLvalue>(span, *method, method->isShared ? nullptr : std::move(callee.value),
                                           std::move(arguments));
  }
  return nullptr;
}

ExpressionPointer Construct(Checker &checker, Type type, Arguments arguments, Span span) {
  if (!type.IsObject()) checker.Fail(span, fmt::format("{} is not a class; \"New\" makes objects", Named(type)));
  const host::ClassInfo &info = *type.objectClass();
  if (IsDelegate(&info)) {
    checker.Fail(span, fmt::format("{} is a delegate; \"AddressOf\" a method makes one", info.name));
  }
  if (info.isInterface) {
    checker.Fail(span,
                 fmt::format("{} is an interface; \"New\" makes objects of classes that implement it", info.name));
  }
  if (!info.isRegistered) {
    checker.Fail(span, fmt::format("the class {} comes from a plugin that isn't loaded", info.name));
  }
  const auto make = [&](const host::MethodInfo *constructor, Arguments filled) -> ExpressionPointer {
    if (info.code == nullptr) return std::make_unique<NewObject>(span, info, constructor, std::move(filled));
    return std::make_unique<NewScriptObject>(span, info, constructor, std::move(filled));
  };
  Resolution constructors;
  constructors.name = info.name;
  for (const host::MethodInfo *constructor : info.FindMethods("Constructor")) {
    if (constructor->IsPrivate() || !IsAccessible(checker, constructor->access, constructor->owner)) continue;
    Callable &callable = constructors.callables.emplace_back(MakeCallable(*constructor));
    callable.name = fmt::format("New {}", info.name);
  }
  if (constructors.callables.empty()) {
    if (!info.FindMethods("Constructor").empty()) {
      checker.Fail(span,
                   fmt::format("objects of the class {} can't be made with \"New\"; methods of other classes give them",
                               info.name));
    }
    if (!arguments.empty()) checker.Fail(span, fmt::format("\"New {}\" takes no arguments", info.name));
    return make(nullptr, {});
  }
  const host::Choice<Callable> choice = Choose(constructors.callables, arguments);
  if (choice.best == nullptr) FailNoOverload(checker, constructors, arguments, span);
  if (choice.isAmbiguous)
    checker.Fail(span, fmt::format("several constructors of {} take these arguments equally well", info.name));
  return make(choice.best->Method(), FillIn(checker, *choice.best, std::move(arguments), span));
}

StableLvalue Stabilise(Checker &checker, ExpressionPointer lvalue, Block &before) {
  StableLvalue stable;
  stable.type = lvalue->type;
  stable.span = lvalue->span;
  const auto keep = [&](ExpressionPointer part) {
    const Symbol temporary = checker.NewTemporary(part->type);
    const Span span = part->span;
    before.Add(MakeAssignment(checker.MakeVariable(temporary, span), std::move(part)));
    stable.parts.push_back(temporary);
    stable.parts.back().span = span;
  };
  if (lvalue->kind == NodeKind::kElement) {
    auto *element = static_cast<ElementLvalue *>(lvalue.get());
    stable.isElement = true;
    keep(element->TakeList());
    keep(element->TakeIndex());
    for (ExpressionPointer &index : element->TakeOtherIndices()) keep(std::move(index));
  } else if (lvalue->kind == NodeKind::kProperty) {
    auto *property = static_cast<PropertyLvalue *>(lvalue.get());
    stable.property = &property->Property();
    if (ExpressionPointer object = property->TakeObject()) keep(std::move(object));
  }
  return stable;
}

LvaluePointer MakeLvalue(const Checker &checker, const StableLvalue &lvalue) {
  const auto part = [&](std::size_t index) {
    return checker.MakeVariable(lvalue.parts[index], lvalue.parts[index].span);
  };
  if (lvalue.isElement) {
    std::vector<ExpressionPointer> others;
    for (std::size_t i = 2; i < lvalue.parts.size(); ++i) others.push_back(part(i));
    return std::make_unique<ElementLvalue>(lvalue.span, part(0), part(1), std::move(others));
  }
  return MakeProperty(lvalue.span, *lvalue.property, lvalue.parts.empty() ? nullptr : ExpressionPointer(part(0)));
}

}  // namespace quillbar::language
