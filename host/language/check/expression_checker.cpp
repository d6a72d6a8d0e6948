// SPDX-License-Identifier: MIT
#include "host/language/check/expression_checker.h"

#include <fmt/format.h>

#include <limits>
#include <utility>

#include "host/language/library/sorting.h"
#include "host/language/syntax/names.h"
#include "host/language/tree/conversions.h"
#include "host/language/tree/literals.h"
#include "host/language/tree/members.h"
#include "host/language/tree/operators.h"
#include "host/language/tree/procedure_call.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;
using syntax::BinaryOperator;
using syntax::ExpressionKind;

template <class Node>
const Node &To(const syntax::Expression &expression) {
  return static_cast<const Node &>(expression);
}

bool IsArithmetic(BinaryOperator operation) { return operation <= BinaryOperator::kSubtract; }
bool IsLogic(BinaryOperator operation) { return operation >= BinaryOperator::kAnd; }
bool IsEquality(BinaryOperator operation) {
  return operation == BinaryOperator::kEqual || operation == BinaryOperator::kNotEqual ||
         operation == BinaryOperator::kIs;
}

}  // namespace

// -- Entry points ---------------------------------------------------------------------------------

ExpressionPointer ExpressionChecker::CheckValue(const syntax::Expression &expression) {
  ExpressionPointer value = CheckAny(expression);
  if (value->type.IsNone()) Fail(expression.span, "this is the call of a Sub, which has no value");
  return value;
}

ExpressionPointer ExpressionChecker::CheckValue(const syntax::Expression &expression, Type type,
                                                std::string_view purpose) {
  return Convert(CheckValue(expression), type, purpose);
}

ExpressionPointer ExpressionChecker::CheckCondition(const syntax::Expression &expression, std::string_view purpose) {
  ExpressionPointer condition = CheckValue(expression);
  if (condition->type.kind() != TypeKind::kBoolean) {
    Fail(expression.span,
         fmt::format("the condition of {} is a Boolean, but this is {}", purpose, Named(condition->type)));
  }
  return condition;
}

ExpressionPointer ExpressionChecker::CheckCall(const syntax::Expression &expression) { return CheckAny(expression); }

ExpressionPointer ExpressionChecker::CheckAny(const syntax::Expression &expression) {
  switch (expression.kind) {
    case ExpressionKind::kInteger:
      return CheckNumberLiteral(To<syntax::IntegerLiteral>(expression));
    case ExpressionKind::kColor:
      return std::make_unique<IntegerConstant>(TypeKind::kColor, expression.span,
                                               static_cast<std::int64_t>(To<syntax::IntegerLiteral>(expression).value));
    case ExpressionKind::kReal:
      return std::make_unique<RealConstant>(TypeKind::kDouble, expression.span,
                                            To<syntax::RealLiteral>(expression).value);
    case ExpressionKind::kText:
      return std::make_unique<TextConstant>(expression.span,
                                            host::StringHandle::FromUtf8(To<syntax::TextLiteral>(expression).value));
    case ExpressionKind::kBoolean:
      return std::make_unique<IntegerConstant>(TypeKind::kBoolean, expression.span,
                                               To<syntax::BooleanLiteral>(expression).value ? 1 : 0);
    case ExpressionKind::kNil:
      return std::make_unique<NilConstant>(TypeKind::kNil, expression.span);
    case ExpressionKind::kName:
    case ExpressionKind::kMember:
      return ToValue(Resolve(expression));
    case ExpressionKind::kCall:
      return CheckInvocation(To<syntax::Call>(expression));
    case ExpressionKind::kNew: {
      const auto &made = To<syntax::New>(expression);
      const Type type = ResolveType(made.type);
      return Construct(type, CheckArguments(made.arguments), expression.span);
    }
    case ExpressionKind::kUnary:
      return CheckUnary(To<syntax::Unary>(expression));
    case ExpressionKind::kBinary: {
      const auto &binary = To<syntax::Binary>(expression);
      ExpressionPointer left = CheckValue(*binary.left);
      ExpressionPointer right = CheckValue(*binary.right);
      return MakeBinary(binary.operation, binary.operatorSpan, binary.span, std::move(left), std::move(right));
    }
    case ExpressionKind::kIsA:
      return CheckIsA(To<syntax::IsA>(expression));
    case ExpressionKind::kConditional:
      return CheckConditional(To<syntax::Conditional>(expression));
    case ExpressionKind::kAddressOf:
      Fail(expression.span, "\"AddressOf\" is only for AddHandler, RemoveHandler and an array's Sort");
  }
  Fail(expression.span, "this can't be read as a value");
}

ExpressionPointer ExpressionChecker::ToValue(Resolution resolution) {
  switch (resolution.kind) {
    case Resolution::Kind::kValue: {
      const auto *property = dynamic_cast<const PropertyLvalue *>(resolution.value.get());
      if (property != nullptr && property->Property().IsWriteOnly()) {
        Fail(resolution.span, fmt::format("the property {} can only be written", property->Property().FullName()));
      }
      return std::move(resolution.value);
    }
    case Resolution::Kind::kType:
      Fail(resolution.span, fmt::format("{} is a type, but a value is needed", resolution.type.Name()));
    case Resolution::Kind::kModule:
    case Resolution::Kind::kNamespace:
      Fail(resolution.span, fmt::format("\"{}\" is a module, but a value is needed", resolution.name));
    default:
      break;
  }
  const Span span = resolution.span;
  return Call(std::move(resolution), {}, span);
}

CallChecker::Arguments ExpressionChecker::CheckArguments(const std::vector<syntax::ExpressionPointer> &arguments) {
  Arguments checked;
  for (const syntax::ExpressionPointer &argument : arguments) checked.push_back(CheckValue(*argument));
  return checked;
}

// -- Calls, elements, conversions -----------------------------------------------------------------

ExpressionPointer ExpressionChecker::CheckInvocation(const syntax::Call &call) {
  if (call.callee->kind == ExpressionKind::kName) {
    const std::string &name = To<syntax::Name>(*call.callee).name;
    if (FindSymbol(name) == nullptr) {
      if (SameName(name, "CType")) return CheckCType(call);
      if (SameName(name, "Array")) return CheckArray(call);
    }
  }
  Resolution callee = Resolve(*call.callee);
  switch (callee.kind) {
    case Resolution::Kind::kValue:
      return CheckElement(std::move(callee.value), call);
    case Resolution::Kind::kType:
      return CheckConversion(callee.type, call);
    case Resolution::Kind::kModule:
    case Resolution::Kind::kNamespace:
      Fail(callee.span, fmt::format("\"{}\" is a module and can't be called", callee.name));
    default:
      break;
  }
  if (call.arguments.size() == 1 && call.arguments[0]->kind == ExpressionKind::kAddressOf) {
    return MakeSortWith(callee, call);
  }
  // `lines(3)`, where `lines` is a function without parameters that returns an array.
  const Callable &only = callee.callables.front();
  if (callee.callables.size() == 1 && only.parameters.empty() && only.result.IsArray() && call.arguments.size() == 1) {
    return CheckElement(Call(std::move(callee), {}, call.callee->span), call);
  }
  return Call(std::move(callee), CheckArguments(call.arguments), call.span);
}

ExpressionPointer ExpressionChecker::CheckElement(ExpressionPointer list, const syntax::Call &call) {
  if (!list->type.IsArray()) {
    Fail(call.callee->span,
         fmt::format("this is {}, neither an array nor a method, so it can't be followed by parentheses",
                     Named(list->type)));
  }
  if (call.arguments.size() != 1) Fail(call.span, "an element of an array has one index");
  ExpressionPointer index = CheckValue(*call.arguments[0], Type::Integer(), "the index of an array");
  return std::make_unique<ElementLvalue>(call.span, std::move(list), std::move(index));
}

ExpressionPointer ExpressionChecker::CheckConversion(Type type, const syntax::Call &call) {
  if (call.arguments.size() != 1) {
    Fail(call.span, fmt::format("the conversion {}(…) takes one value", type.Name()));
  }
  ExpressionPointer value = CheckValue(*call.arguments[0]);
  if (Cost(*value, type)) return Convert(std::move(value), type);
  if (!CanConvertExplicitly(value->type, type)) {
    const std::string hint = value->type.IsString() ? "; use Val(…) or .ToInteger"
                             : type.IsString()      ? "; use Str(…) or .ToString"
                                                    : "";
    Fail(value->span, fmt::format("{} can't be converted to {}{}", Named(value->type), Named(type), hint));
  }
  return Fold(MakeConversion(std::move(value), type, call.span));
}

ExpressionPointer ExpressionChecker::CheckCType(const syntax::Call &call) {
  if (call.arguments.size() != 2) Fail(call.span, "CType takes a value and a type: CType(value, Integer)");
  const Resolution type = Resolve(*call.arguments[1]);
  if (type.kind != Resolution::Kind::kType) Fail(type.span, "the second argument of CType is a type");
  ExpressionPointer value = CheckValue(*call.arguments[0]);
  if (Cost(*value, type.type)) return Convert(std::move(value), type.type);
  if (!CanConvertExplicitly(value->type, type.type)) {
    Fail(call.span, fmt::format("{} can't be converted to {}", Named(value->type), Named(type.type)));
  }
  return Fold(MakeConversion(std::move(value), type.type, call.span));
}

std::optional<Type> ExpressionChecker::CommonType(Type one, Type other) {
  if (one == other) return one;
  if (const std::optional<Type> number = CommonNumber(one, other)) return number;
  if (ImplicitCost(other, one)) return one;
  if (ImplicitCost(one, other)) return other;
  return std::nullopt;
}

ExpressionPointer ExpressionChecker::CheckArray(const syntax::Call &call) {
  Arguments elements = CheckArguments(call.arguments);
  Type element = elements.empty() ? Type(TypeKind::kNil) : elements.front()->type;
  for (std::size_t i = 1; i < elements.size(); ++i) {
    const std::optional<Type> common = CommonType(element, elements[i]->type);
    if (!common) {
      Fail(elements[i]->span, fmt::format("the elements of an array have one type, but this is {} after {}",
                                          Named(elements[i]->type), Named(element)));
    }
    element = *common;
  }
  if (element.IsArray()) Fail(call.span, "the elements of an array can't be arrays");
  for (ExpressionPointer &item : elements) item = Convert(std::move(item), element);
  return std::make_unique<ArrayLiteral>(element, call.span, std::move(elements));
}

ExpressionPointer ExpressionChecker::MakeSortWith(Resolution &callee, const syntax::Call &call) {
  const bool isArray = callee.value != nullptr && callee.value->type.IsArray();
  if (!isArray || !SameName(callee.name, "Sort")) {
    Fail(call.arguments[0]->span, "\"AddressOf\" is only for AddHandler, RemoveHandler and an array's Sort");
  }
  const ScriptProcedure &procedure = CheckAddressOf(*call.arguments[0]);
  const Type element = callee.value->type.Element();
  const bool fits = procedure.parameters.size() == 2 && procedure.parameters[0].type == element &&
                    procedure.parameters[1].type == element && !procedure.parameters[0].byReference &&
                    !procedure.parameters[1].byReference && procedure.result == Type::Integer();
  if (!fits) {
    Fail(call.arguments[0]->span,
         fmt::format("the comparison must be declared as: Function {}(a As {}, b As {}) As Integer", procedure.name,
                     element.Name(), element.Name()));
  }
  return std::make_unique<SortWith>(call.span, std::move(callee.value), *procedure.procedure);
}

const ScriptProcedure &ExpressionChecker::CheckAddressOf(const syntax::Expression &expression) {
  if (expression.kind != ExpressionKind::kAddressOf) Fail(expression.span, "\"AddressOf\" and a method are needed");
  const auto &address = To<syntax::AddressOf>(expression);
  const Resolution resolution = ResolveName(address.name, address.nameSpan);
  if (resolution.kind != Resolution::Kind::kProcedures) {
    Fail(address.nameSpan, fmt::format("\"{}\" is not a Sub or Function of this script", address.name));
  }
  if (resolution.callables.size() > 1) {
    Fail(address.nameSpan,
         fmt::format("there are several \"{}\"; give the one that is meant its own name", address.name));
  }
  return *std::get<const ScriptProcedure *>(resolution.callables.front().target);
}

// -- Operators ------------------------------------------------------------------------------------

ExpressionPointer ExpressionChecker::CheckNumberLiteral(const syntax::IntegerLiteral &literal) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::intptr_t>::max();
  constexpr std::uint64_t kLargest64 = std::numeric_limits<std::int64_t>::max();
  const Type type = literal.value <= kLargest     ? Type::Integer()
                    : literal.value <= kLargest64 ? Type(TypeKind::kInt64)
                                                  : Type(TypeKind::kUInt64);
  return std::make_unique<IntegerConstant>(type, literal.span, static_cast<std::int64_t>(literal.value));
}

ExpressionPointer ExpressionChecker::CheckUnary(const syntax::Unary &unary) {
  ExpressionPointer operand = CheckValue(*unary.operand);
  const Type type = operand->type;
  if (unary.operation == syntax::UnaryOperator::kNot) {
    if (type.kind() != TypeKind::kBoolean && !host::IsInteger(type.kind())) {
      const bool isComparable = type.IsObject() || type.IsString() || type.IsNil();
      Fail(unary.span, fmt::format("\"Not\" takes a Boolean or a whole number, but this is {}{}", Named(type),
                                   isComparable ? "; it binds tighter than a comparison, so write Not (a = b)" : ""));
    }
    return Fold(MakeNot(type, unary.span, std::move(operand)));
  }
  if (!host::IsNumeric(type.kind())) {
    Fail(unary.span, fmt::format("the sign takes a number, but this is {}", Named(type)));
  }
  if (unary.operation == syntax::UnaryOperator::kPlus) return operand;

  // Whole numbers are negated as the signed type that holds them; -2^63 is a number of its own.
  const auto *constant = dynamic_cast<const IntegerConstant *>(operand.get());
  if (constant != nullptr && type.kind() == TypeKind::kUInt64 &&
      constant->value == std::numeric_limits<std::int64_t>::min()) {
    return std::make_unique<IntegerConstant>(TypeKind::kInt64, unary.span, constant->value);
  }
  Type result = type;
  if (host::IsInteger(type.kind())) result = *CommonNumber(type, Type::Integer());
  return Fold(MakeNegation(result, unary.span, MakeConversion(std::move(operand), result, unary.span)));
}

ExpressionPointer ExpressionChecker::MakeBinary(BinaryOperator operation, Span operatorSpan, Span span,
                                                ExpressionPointer left, ExpressionPointer right) {
  if (!IsArithmetic(operation) && !IsLogic(operation)) {
    return Fold(MakeComparisonOf(operation, operatorSpan, span, std::move(left), std::move(right)));
  }
  const auto convert = [&](ExpressionPointer operand, Type type) {
    const Span where = operand->span;
    return MakeConversion(std::move(operand), type, where);
  };
  const auto complain = [&](std::string_view wanted) {
    const bool mixesText = left->type.IsString() != right->type.IsString();
    Fail(operatorSpan,
         fmt::format("\"{}\" takes {}, but these are {} and {}{}", syntax::Spelling(operation), wanted,
                     Named(left->type), Named(right->type),
                     mixesText && operation == BinaryOperator::kAdd ? "; convert the number with Str(…)" : ""));
  };

  if (operation == BinaryOperator::kAdd && left->type.IsString() && right->type.IsString()) {
    return Fold(MakeConcatenation(span, std::move(left), std::move(right)));
  }
  std::optional<Type> type = CommonNumber(left->type, right->type);
  if (IsLogic(operation)) {
    const bool areBoolean = left->type.kind() == TypeKind::kBoolean && right->type.kind() == TypeKind::kBoolean;
    if (areBoolean) type = Type(TypeKind::kBoolean);
    if (!type || host::IsFloating(type->kind())) complain("two Booleans or two whole numbers");
    left = convert(std::move(left), *type);
    right = convert(std::move(right), *type);
    return Fold(MakeLogic(operation, *type, span, std::move(left), std::move(right)));
  }
  if (!type) complain(operation == BinaryOperator::kAdd ? "two numbers or two texts" : "two numbers");
  if (operation == BinaryOperator::kDivide || operation == BinaryOperator::kPower) type = Type(TypeKind::kDouble);
  if (operation == BinaryOperator::kIntegerDivide && host::IsFloating(type->kind())) type = Type(TypeKind::kInt64);
  left = convert(std::move(left), *type);
  right = convert(std::move(right), *type);
  return Fold(MakeArithmetic(operation, *type, span, std::move(left), std::move(right)));
}

ExpressionPointer ExpressionChecker::MakeComparisonOf(BinaryOperator operation, Span operatorSpan, Span span,
                                                      ExpressionPointer left, ExpressionPointer right) {
  const Type a = left->type;
  const Type b = right->type;
  const auto holdsReference = [](Type type) { return type.IsObject() || type.IsNil() || type.IsArray(); };
  if (operation == BinaryOperator::kIs && (!holdsReference(a) || !holdsReference(b))) {
    Fail(operatorSpan, fmt::format("\"Is\" compares objects, but these are {} and {}; use \"=\"", Named(a), Named(b)));
  }
  const auto finish = [&] { return MakeComparison(operation, span, std::move(left), std::move(right)); };

  if (const std::optional<Type> number = CommonNumber(a, b)) {
    if (!host::IsFloating(number->kind())) return finish();
    left = MakeConversion(std::move(left), TypeKind::kDouble, span);
    right = MakeConversion(std::move(right), TypeKind::kDouble, span);
    return finish();
  }
  if (a.IsString() && b.IsString()) return finish();
  if (IsEquality(operation)) {
    const bool areObjects = (a.IsObject() || a.IsNil()) && (b.IsObject() || b.IsNil()) &&
                            (a.IsNil() || b.IsNil() || CanConvertExplicitly(a, b) || CanConvertExplicitly(b, a));
    const bool areSame = a == b && (a.IsArray() || a.kind() == TypeKind::kBoolean || a.kind() == TypeKind::kColor ||
                                    a.IsEnumeration() || a.kind() == TypeKind::kPtr);
    if (areObjects || areSame) return finish();
  } else if (a == b && a.IsEnumeration()) {
    return finish();
  }
  if (a != b && Cost(*right, a)) {
    right = Convert(std::move(right), a);
    return MakeComparisonOf(operation, operatorSpan, span, std::move(left), std::move(right));
  }
  if (a != b && Cost(*left, b)) {
    left = Convert(std::move(left), b);
    return MakeComparisonOf(operation, operatorSpan, span, std::move(left), std::move(right));
  }
  const std::string_view hint = a.IsString() != b.IsString() && (host::IsNumeric(a.kind()) || host::IsNumeric(b.kind()))
                                    ? "; convert one with Str(…) or Val(…)"
                                    : "";
  Fail(operatorSpan,
       fmt::format("\"{}\" can't compare {} and {}{}", syntax::Spelling(operation), Named(a), Named(b), hint));
}

ExpressionPointer ExpressionChecker::CheckIsA(const syntax::IsA &isA) {
  ExpressionPointer object = CheckValue(*isA.operand);
  if (!object->type.IsObject() && !object->type.IsNil()) {
    Fail(isA.operand->span, fmt::format("\"IsA\" asks an object for its class, but this is {}", Named(object->type)));
  }
  const Type type = ResolveType(isA.type);
  if (!type.IsObject()) Fail(isA.type.span, fmt::format("{} is not a class", type.Name()));
  return std::make_unique<IsANode>(isA.span, std::move(object), *type.objectClass());
}

ExpressionPointer ExpressionChecker::CheckConditional(const syntax::Conditional &conditional) {
  ExpressionPointer condition = CheckCondition(*conditional.condition, "\"If\"");
  ExpressionPointer first = CheckValue(*conditional.first);
  ExpressionPointer second = CheckValue(*conditional.second);
  const std::optional<Type> type = CommonType(first->type, second->type);
  if (!type) {
    Fail(conditional.span, fmt::format("the two values of \"If\" have one type, but these are {} and {}",
                                       Named(first->type), Named(second->type)));
  }
  return Fold(MakeConditional(conditional.span, std::move(condition), Convert(std::move(first), *type),
                              Convert(std::move(second), *type)));
}

// -- Lvalues --------------------------------------------------------------------------------------

LvaluePointer ExpressionChecker::ToLvalue(ExpressionPointer value, Span span) {
  if (const auto *property = dynamic_cast<const PropertyLvalue *>(value.get())) {
    if (property->Property().IsReadOnly()) {
      Fail(span, fmt::format("the property {} is read-only", property->Property().FullName()));
    }
  }
  if (dynamic_cast<const Lvalue *>(value.get()) == nullptr) {
    const bool isConstant = value->IsConstant();
    Fail(span, isConstant ? "a constant can't be assigned to" : "this can't be on the left of \"=\"");
  }
  return LvaluePointer(static_cast<Lvalue *>(value.release()));
}

LvaluePointer ExpressionChecker::CheckLvalue(const syntax::Expression &expression) {
  if (expression.kind == ExpressionKind::kName || expression.kind == ExpressionKind::kMember) {
    Resolution resolution = Resolve(expression);
    if (resolution.kind == Resolution::Kind::kValue) return ToLvalue(std::move(resolution.value), expression.span);
    Fail(expression.span, fmt::format("\"{}\" is {}, which can't be assigned to", resolution.name,
                                      resolution.IsCallable()                      ? "a method"
                                      : resolution.kind == Resolution::Kind::kType ? "a type"
                                                                                   : "a module"));
  }
  if (expression.kind != ExpressionKind::kCall) Fail(expression.span, "this can't be on the left of \"=\"");

  const auto &call = To<syntax::Call>(expression);
  Resolution callee = Resolve(*call.callee);
  if (callee.kind == Resolution::Kind::kValue)
    return ToLvalue(CheckElement(std::move(callee.value), call), expression.span);
  if (callee.IsCallable()) {
    for (const Callable &callable : callee.callables) {
      const auto *method = std::get_if<const host::MethodInfo *>(&callable.target);
      if (method == nullptr || (*method)->setter == nullptr || call.arguments.size() != callable.parameters.size())
        continue;
      Arguments arguments = CheckArguments(call.arguments);
      for (std::size_t i = 0; i < arguments.size(); ++i) {
        arguments[i] = Convert(std::move(arguments[i]), callable.parameters[i].type,
                               fmt::format("the argument \"{}\" of {}", callable.parameters[i].name, callable.name));
      }
      return std::make_unique<MethodLvalue>(expression.span, **method, std::move(callee.value), std::move(arguments));
    }
    const Callable &first = callee.callables.front();
    if (first.parameters.empty() && first.result.IsArray()) {
      return ToLvalue(CheckElement(Call(std::move(callee), {}, call.callee->span), call), expression.span);
    }
  }
  Fail(expression.span, fmt::format("the result of \"{}\" can't be assigned to", callee.name));
}

}  // namespace quillbar::language
