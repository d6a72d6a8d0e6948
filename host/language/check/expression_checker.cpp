// SPDX-License-Identifier: MIT
#include "host/language/check/expression_checker.h"

#include <fmt/format.h>

#include <limits>
#include <utility>

#include "host/language/check/names_checker.h"
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

// -- Entry points ---------------------------------------------------------------------------------

Arguments CheckArguments(Checker &checker, const std::vector<syntax::ExpressionPointer> &arguments) {
  Arguments checked;
  for (const syntax::ExpressionPointer &argument : arguments) checked.push_back(CheckValue(checker, *argument));
  return checked;
}

/// The methods with which a class makes its objects look like arrays.
Resolution SubscriptsOf(ExpressionPointer object, Span span) {
  Resolution subscripts;
  subscripts.kind = Resolution::Kind::kCallables;
  subscripts.span = span;
  subscripts.name = "Operator_Subscript";
  if (!object->type.IsObject()) return subscripts;
  for (const host::MethodInfo *method : object->type.objectClass()->FindMethods(subscripts.name)) {
    subscripts.callables.push_back(MakeCallable(*method));
  }
  subscripts.value = std::move(object);
  return subscripts;
}

bool HasSubscripts(Type type) {
  return type.IsObject() && !type.objectClass()->FindMethods("Operator_Subscript").empty();
}

ExpressionPointer CheckElement(Checker &checker, ExpressionPointer list, const syntax::Call &call) {
  if (HasSubscripts(list->type)) {
    return Call(checker, SubscriptsOf(std::move(list), call.span), CheckArguments(checker, call.arguments), call.span);
  }
  if (!list->type.IsArray()) {
    checker.Fail(call.callee->span,
                 fmt::format("this is {}, neither an array nor a method, so it can't be followed by parentheses",
                             Named(list->type)));
  }
  const int rank = list->type.Rank();
  if (static_cast<int>(call.arguments.size()) != rank) {
    checker.Fail(call.span, rank == 1 ? std::string("an element of an array has one index")
                                      : fmt::format("an element of this array has {} indices", rank));
  }
  Arguments indices;
  for (const syntax::ExpressionPointer &written : call.arguments) {
    indices.push_back(CheckValue(checker, *written, Type::Integer(), "the index of an array"));
  }
  ExpressionPointer first = std::move(indices.front());
  indices.erase(indices.begin());
  return std::make_unique<ElementLvalue>(call.span, std::move(list), std::move(first), std::move(indices));
}

ExpressionPointer CheckConversion(Checker &checker, Type type, const syntax::Call &call) {
  if (call.arguments.size() != 1) {
    checker.Fail(call.span, fmt::format("the conversion {}(…) takes one value", type.Name()));
  }
  ExpressionPointer value = CheckValue(checker, *call.arguments[0]);
  if (Cost(*value, type)) return Convert(checker, std::move(value), type);
  if (!CanConvert(value->type, type)) {
    const std::string hint = value->type.IsString() ? "; use Val(…) or .ToInteger"
                             : type.IsString()      ? "; use Str(…) or .ToString"
                                                    : "";
    checker.Fail(value->span, fmt::format("{} can't be converted to {}{}", Named(value->type), Named(type), hint));
  }
  return checker.Fold(MakeConversion(std::move(value), type, call.span));
}

ExpressionPointer CheckCType(Checker &checker, const syntax::Call &call) {
  if (call.arguments.size() != 2) checker.Fail(call.span, "CType takes a value and a type: CType(value, Integer)");
  const Resolution type = Resolve(checker, *call.arguments[1]);
  if (type.kind != Resolution::Kind::kType) checker.Fail(type.span, "the second argument of CType is a type");
  ExpressionPointer value = CheckValue(checker, *call.arguments[0]);
  if (Cost(*value, type.type)) return Convert(checker, std::move(value), type.type);
  if (!CanConvert(value->type, type.type)) {
    checker.Fail(call.span, fmt::format("{} can't be converted to {}", Named(value->type), Named(type.type)));
  }
  return checker.Fold(MakeConversion(std::move(value), type.type, call.span));
}

std::optional<Type> CommonType(Type one, Type other) {
  if (one == other) return one;
  if (one.IsVariant() || other.IsVariant()) return Type(TypeKind::kVariant);
  if (const std::optional<Type> number = host::CommonNumber(one, other)) return number;
  if (host::ConversionCost(other, one)) return one;
  if (host::ConversionCost(one, other)) return other;
  return std::nullopt;
}

ExpressionPointer CheckArray(Checker &checker, const syntax::Call &call) {
  Arguments elements = CheckArguments(checker, call.arguments);
  Type element = elements.empty() ? Type(TypeKind::kNil) : elements.front()->type;
  for (std::size_t i = 1; i < elements.size(); ++i) {
    element = CommonType(element, elements[i]->type).value_or(TypeKind::kVariant);
  }
  if (element.IsArray()) checker.Fail(call.span, "the elements of an array can't be arrays");
  // Those of different types stay as they are, so that the literal still fits arrays that all of them fit.
  if (!element.IsVariant()) {
    for (ExpressionPointer &item : elements) item = Convert(checker, std::move(item), element);
  }
  return std::make_unique<ArrayLiteral>(element, call.span, std::move(elements));
}

ExpressionPointer MakeSortWith(Checker &checker, Resolution &callee, const syntax::Call &call) {
  const host::MethodInfo &procedure = OnlyMethod(checker, *CheckAddressOf(checker, *call.arguments[0]));
  if (!procedure.isShared) {
    checker.Fail(call.arguments[0]->span, "Sort takes a Sub, a Function or a shared method, not a method of an object");
  }
  const Type element = callee.value->type.Element();
  const bool fits = procedure.parameters.size() == 2 && procedure.parameters[0].type == element &&
                    procedure.parameters[1].type == element && !procedure.parameters[0].byRef &&
                    !procedure.parameters[1].byRef && procedure.result == Type::Integer();
  if (!fits) {
    checker.Fail(call.arguments[0]->span,
                 fmt::format("the comparison must be declared as: Function {}(a As {}, b As {}) As Integer",
                             procedure.name, element.Name(), element.Name()));
  }
  return std::make_unique<SortWith>(call.span, std::move(callee.value), CodeOf(procedure));
}

ExpressionPointer MakeSortTogether(Checker &checker, Resolution &callee, const syntax::Call &call) {
  Arguments others = CheckArguments(checker, call.arguments);
  if (callee.value->type.Rank() != 1) checker.Fail(call.span, "only arrays of one dimension can be sorted");
  for (const ExpressionPointer &other : others) {
    if (!other->type.IsArray() || other->type.Rank() != 1)
      checker.Fail(other->span, "SortWith takes arrays of one dimension, whose elements move along");
  }
  return std::make_unique<SortTogether>(call.span, std::move(callee.value), std::move(others));
}

ExpressionPointer CheckInvocation(Checker &checker, const syntax::Call &call) {
  if (call.callee->kind == ExpressionKind::kName) {
    const std::string &name = To<syntax::Name>(*call.callee).name;
    if (checker.FindSymbol(name) == nullptr) {
      if (SameName(name, "CType")) return CheckCType(checker, call);
      if (SameName(name, "Array")) return CheckArray(checker, call);
    }
  }
  Resolution callee = Resolve(checker, *call.callee);
  switch (callee.kind) {
    case Resolution::Kind::kValue:
      if (!callee.value->type.IsObject() || !IsDelegate(callee.value->type.objectClass())) {
        return CheckElement(checker, std::move(callee.value), call);
      }
      return CallDelegate(checker, std::move(callee.value), CheckArguments(checker, call.arguments), call.span);
    case Resolution::Kind::kType:
      return CheckConversion(checker, callee.type, call);
    case Resolution::Kind::kModule:
    case Resolution::Kind::kNamespace:
      checker.Fail(callee.span, fmt::format("\"{}\" is a module and can't be called", callee.name));
    default:
      break;
  }
  const bool isOfArray = callee.value != nullptr && callee.value->type.IsArray();
  if (isOfArray && SameName(callee.name, "Sort") && call.arguments.size() == 1 &&
      call.arguments[0]->kind == ExpressionKind::kAddressOf) {
    return MakeSortWith(checker, callee, call);
  }
  if (isOfArray && SameName(callee.name, "SortWith") && !call.arguments.empty()) {
    return MakeSortTogether(checker, callee, call);
  }
  // `lines(3)`, where `lines` is a function without parameters that returns an array.
  const Callable &only = callee.callables.front();
  if (callee.callables.size() == 1 && only.parameters->empty() && only.result.IsArray() && !call.arguments.empty()) {
    return CheckElement(checker, Call(checker, std::move(callee), {}, call.callee->span), call);
  }
  return Call(checker, std::move(callee), CheckArguments(checker, call.arguments), call.span);
}

ExpressionPointer CheckNumberLiteral(const syntax::IntegerLiteral &literal) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::intptr_t>::max();
  constexpr std::uint64_t kLargest64 = std::numeric_limits<std::int64_t>::max();
  const Type type = literal.value <= kLargest     ? Type::Integer()
                    : literal.value <= kLargest64 ? Type(TypeKind::kInt64)
                                                  : Type(TypeKind::kUInt64);
  return std::make_unique<IntegerConstant>(type, literal.span, static_cast<std::int64_t>(literal.value));
}

ExpressionPointer CheckUnary(Checker &checker, const syntax::Unary &unary) {
  ExpressionPointer operand = CheckValue(checker, *unary.operand);
  const Type type = operand->type;
  if (type.IsObject() && unary.operation != syntax::UnaryOperator::kPlus) {
    Resolution callee;
    callee.name = unary.operation == syntax::UnaryOperator::kNot ? "Operator_Not" : "Operator_Negate";
    for (const host::MethodInfo *method : type.objectClass()->FindMethods(callee.name)) {
      callee.callables.push_back(MakeCallable(*method));
    }
    if (!callee.callables.empty()) {
      callee.value = std::move(operand);
      return Call(checker, std::move(callee), {}, unary.span);
    }
  }
  if (type.IsVariant()) {
    if (unary.operation == syntax::UnaryOperator::kNot) {
      return MakeNot(TypeKind::kBoolean, unary.span,
                     MakeConversion(std::move(operand), TypeKind::kBoolean, unary.span));
    }
    auto zero = std::make_unique<IntegerConstant>(Type::Integer(), unary.span, 0);
    const bool isPlus = unary.operation == syntax::UnaryOperator::kPlus;
    return MakeBinary(checker, isPlus ? BinaryOperator::kAdd : BinaryOperator::kSubtract, unary.span, unary.span,
                      std::move(zero), std::move(operand));
  }
  if (unary.operation == syntax::UnaryOperator::kNot) {
    if (type.kind() != TypeKind::kBoolean && !host::IsInteger(type.kind())) {
      const bool isComparable = type.IsObject() || type.IsString() || type.IsNil();
      checker.Fail(unary.span,
                   fmt::format("\"Not\" takes a Boolean or a whole number, but this is {}{}", Named(type),
                               isComparable ? "; it binds tighter than a comparison, so write Not (a = b)" : ""));
    }
    return checker.Fold(MakeNot(type, unary.span, std::move(operand)));
  }
  if (!host::IsNumeric(type.kind())) {
    checker.Fail(unary.span, fmt::format("the sign takes a number, but this is {}", Named(type)));
  }
  if (unary.operation == syntax::UnaryOperator::kPlus) return operand;

  // Whole numbers are negated as the signed type that holds them; -2^63 is a number of its own.
  const std::int64_t *constant = ConstantInteger(*operand);
  if (constant != nullptr && type.kind() == TypeKind::kUInt64 &&
      *constant == std::numeric_limits<std::int64_t>::min()) {
    return std::make_unique<IntegerConstant>(TypeKind::kInt64, unary.span, *constant);
  }
  Type result = type;
  if (host::IsInteger(type.kind())) result = *host::CommonNumber(type, Type::Integer());
  return checker.Fold(MakeNegation(result, unary.span, MakeConversion(std::move(operand), result, unary.span)));
}

ExpressionPointer CheckIsA(Checker &checker, const syntax::IsA &isA) {
  ExpressionPointer object = CheckValue(checker, *isA.operand);
  if (!object->type.IsObject() && !object->type.IsNil() && !object->type.IsVariant()) {
    checker.Fail(isA.operand->span,
                 fmt::format("\"IsA\" asks an object for its class, but this is {}", Named(object->type)));
  }
  const Type type = checker.ResolveType(isA.type);
  if (!type.IsObject()) checker.Fail(isA.type.span, fmt::format("{} is not a class", type.Name()));
  return std::make_unique<IsANode>(isA.span, std::move(object), *type.objectClass());
}

ExpressionPointer CheckConditional(Checker &checker, const syntax::Conditional &conditional) {
  ExpressionPointer condition = CheckCondition(checker, *conditional.condition, "\"If\"");
  ExpressionPointer first = CheckValue(checker, *conditional.first);
  ExpressionPointer second = CheckValue(checker, *conditional.second);
  const std::optional<Type> type = CommonType(first->type, second->type);
  if (!type) {
    checker.Fail(conditional.span, fmt::format("the two values of \"If\" have one type, but these are {} and {}",
                                               Named(first->type), Named(second->type)));
  }
  return checker.Fold(MakeConditional(conditional.span, std::move(condition), Convert(checker, std::move(first), *type),
                                      Convert(checker, std::move(second), *type)));
}

ExpressionPointer CheckAny(Checker &checker, const syntax::Expression &expression) {
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
      return ToValue(checker, Resolve(checker, expression));
    case ExpressionKind::kCall:
      return CheckInvocation(checker, To<syntax::Call>(expression));
    case ExpressionKind::kNew: {
      const auto &made = To<syntax::New>(expression);
      const Type type = checker.ResolveType(made.type);
      return Construct(checker, type, CheckArguments(checker, made.arguments), expression.span);
    }
    case ExpressionKind::kUnary:
      return CheckUnary(checker, To<syntax::Unary>(expression));
    case ExpressionKind::kBinary: {
      const auto &binary = To<syntax::Binary>(expression);
      ExpressionPointer left = CheckValue(checker, *binary.left);
      ExpressionPointer right = CheckValue(checker, *binary.right);
      return MakeBinary(checker, binary.operation, binary.operatorSpan, binary.span, std::move(left), std::move(right));
    }
    case ExpressionKind::kIsA:
      return CheckIsA(checker, To<syntax::IsA>(expression));
    case ExpressionKind::kConditional:
      return CheckConditional(checker, To<syntax::Conditional>(expression));
    case ExpressionKind::kPair: {
      const auto &pair = To<syntax::PairOf>(expression);
      Arguments parts;
      parts.push_back(CheckValue(checker, *pair.left));
      parts.push_back(CheckValue(checker, *pair.right));
      return Construct(checker, Type::Class(checker.host.Class("Pair")), std::move(parts), expression.span);
    }
    case ExpressionKind::kAddressOf:
      return CheckAddressOf(checker, expression);
    case ExpressionKind::kRaiseEvent:
      return ToValue(checker, Resolve(checker, expression));
  }
  checker.Fail(expression.span, "this can't be read as a value");
}

// -- Calls, elements, conversions -----------------------------------------------------------------

// -- Operators ------------------------------------------------------------------------------------

ExpressionPointer MakeComparisonOf(Checker &checker, BinaryOperator operation, Span operatorSpan, Span span,
                                   ExpressionPointer left, ExpressionPointer right) {
  const Type a = left->type;
  const Type b = right->type;
  const auto holdsReference = [](Type type) {
    return type.IsObject() || type.IsNil() || type.IsArray() || type.IsVariant();
  };
  if (operation == BinaryOperator::kIs && (!holdsReference(a) || !holdsReference(b))) {
    checker.Fail(operatorSpan,
                 fmt::format("\"Is\" compares objects, but these are {} and {}; use \"=\"", Named(a), Named(b)));
  }
  if (operation != BinaryOperator::kIs && !a.IsNil() && !b.IsNil()) {
    const auto zero = [&] { return std::make_unique<IntegerConstant>(Type::Integer(), span, 0); };
    if (ExpressionPointer order = CallOperator(checker, "Operator_Compare", left, right, span)) {
      return MakeComparison(operation, span, Convert(checker, std::move(order), Type::Integer()), zero());
    }
    if (ExpressionPointer order = CallOperator(checker, "Operator_Compare", right, left, span)) {
      return MakeComparison(operation, span, zero(), Convert(checker, std::move(order), Type::Integer()));
    }
  }
  if (a.IsVariant() || b.IsVariant()) {
    return MakeVariantComparison(operation, span, MakeConversion(std::move(left), TypeKind::kVariant, span),
                                 MakeConversion(std::move(right), TypeKind::kVariant, span));
  }
  const auto finish = [&] { return MakeComparison(operation, span, std::move(left), std::move(right)); };

  if (const std::optional<Type> number = host::CommonNumber(a, b)) {
    if (number->kind() == TypeKind::kCurrency) {
      left = MakeConversion(std::move(left), *number, span);
      right = MakeConversion(std::move(right), *number, span);
    }
    if (!host::IsFloating(number->kind())) return finish();
    left = MakeConversion(std::move(left), TypeKind::kDouble, span);
    right = MakeConversion(std::move(right), TypeKind::kDouble, span);
    return finish();
  }
  if (a.IsString() && b.IsString()) return finish();
  if (IsEquality(operation)) {
    const bool areObjects = (a.IsObject() || a.IsNil()) && (b.IsObject() || b.IsNil()) &&
                            (a.IsNil() || b.IsNil() || CanConvert(a, b) || CanConvert(b, a));
    const bool areSame = a == b && (a.IsArray() || a.kind() == TypeKind::kBoolean || a.kind() == TypeKind::kColor ||
                                    a.IsEnumeration() || a.kind() == TypeKind::kPtr);
    if (areObjects || areSame) return finish();
  } else if (a == b && a.IsEnumeration()) {
    return finish();
  }
  if (a != b && Cost(*right, a)) {
    right = Convert(checker, std::move(right), a);
    return MakeComparisonOf(checker, operation, operatorSpan, span, std::move(left), std::move(right));
  }
  if (a != b && Cost(*left, b)) {
    left = Convert(checker, std::move(left), b);
    return MakeComparisonOf(checker, operation, operatorSpan, span, std::move(left), std::move(right));
  }
  const std::string_view hint = a.IsString() != b.IsString() && (host::IsNumeric(a.kind()) || host::IsNumeric(b.kind()))
                                    ? "; convert one with Str(…) or Val(…)"
                                    : "";
  checker.Fail(operatorSpan,
               fmt::format("\"{}\" can't compare {} and {}{}", syntax::Spelling(operation), Named(a), Named(b), hint));
}

// -- Lvalues --------------------------------------------------------------------------------------

LvaluePointer ToLvalue(Checker &checker, ExpressionPointer value, Span span) {
  if (const host::PropertyInfo *property = PropertyOf(*value); property != nullptr && property->IsReadOnly()) {
    checker.Fail(span, fmt::format("the property {} is read-only", property->FullName()));
  }
  if (!value->IsLvalue()) {
    const bool isConstant = value->IsConstant();
    checker.Fail(span, isConstant ? "a constant can't be assigned to" : "this can't be on the left of \"=\"");
  }
  return LvaluePointer(static_cast<Lvalue *>(value.release()));
}

}  // namespace

ExpressionPointer CheckValue(Checker &checker, const syntax::Expression &expression) {
  ExpressionPointer value = CheckAny(checker, expression);
  if (value->type.IsNone()) checker.Fail(expression.span, "this is the call of a Sub, which has no value");
  return value;
}

ExpressionPointer CheckValue(Checker &checker, const syntax::Expression &expression, Type type,
                             std::string_view purpose) {
  return Convert(checker, CheckValue(checker, expression), type, purpose);
}

ExpressionPointer CheckCondition(Checker &checker, const syntax::Expression &expression, std::string_view purpose) {
  ExpressionPointer condition = CheckValue(checker, expression);
  if (condition->type.IsVariant()) condition = Convert(checker, std::move(condition), TypeKind::kBoolean);
  if (condition->type.kind() != TypeKind::kBoolean) {
    checker.Fail(expression.span,
                 fmt::format("the condition of {} is a Boolean, but this is {}", purpose, Named(condition->type)));
  }
  return condition;
}

ExpressionPointer CheckCall(Checker &checker, const syntax::Expression &expression) {
  return CheckAny(checker, expression);
}

ExpressionPointer ToValue(Checker &checker, Resolution resolution) {
  switch (resolution.kind) {
    case Resolution::Kind::kValue: {
      const host::PropertyInfo *property = PropertyOf(*resolution.value);
      if (property != nullptr && property->IsWriteOnly()) {
        checker.Fail(resolution.span, fmt::format("the property {} can only be written", property->FullName()));
      }
      return std::move(resolution.value);
    }
    case Resolution::Kind::kType:
      checker.Fail(resolution.span, fmt::format("{} is a type, but a value is needed", resolution.type.Name()));
    case Resolution::Kind::kModule:
    case Resolution::Kind::kNamespace:
      checker.Fail(resolution.span, fmt::format("\"{}\" is a module, but a value is needed", resolution.name));
    default:
      break;
  }
  const Span span = resolution.span;
  return Call(checker, std::move(resolution), {}, span);
}

std::unique_ptr<AddressNode> CheckAddressOf(Checker &checker, const syntax::Expression &expression) {
  if (expression.kind != ExpressionKind::kAddressOf)
    checker.Fail(expression.span, "\"AddressOf\" and a method are needed");
  const syntax::Expression &written = *To<syntax::AddressOf>(expression).method;
  Resolution resolution;
  if (written.kind == ExpressionKind::kName || written.kind == ExpressionKind::kMember) {
    resolution = Resolve(checker, written);
  }
  std::vector<const host::MethodInfo *> methods;
  for (const Callable &callable : resolution.callables) {
    const host::MethodInfo *method = callable.Method();
    const bool isOfScript = method != nullptr && method->code != nullptr && method->raises == nullptr &&
                            !method->isInvocation && !method->IsConstructor();
    if (!isOfScript) continue;
    RequireAccess(checker, method->access, method->owner, method->name, written.span);
    methods.push_back(method);
  }
  if (resolution.kind != Resolution::Kind::kCallables || methods.empty()) {
    checker.Fail(written.span,
                 fmt::format("\"{}\" is not a Sub or Function of this script", checker.source.Slice(written.span)));
  }
  return std::make_unique<AddressNode>(checker.AddressType(), expression.span, std::move(methods),
                                       std::move(resolution.value));
}

const host::MethodInfo &OnlyMethod(Checker &checker, const AddressNode &address) {
  const host::MethodInfo &method = *address.candidates.front();
  if (address.candidates.size() > 1) {
    checker.Fail(address.span,
                 fmt::format("there are several \"{}\"; give the one that is meant its own name", method.name));
  }
  return method;
}

ExpressionPointer MakeBinary(Checker &checker, BinaryOperator operation, Span operatorSpan, Span span,
                             ExpressionPointer left, ExpressionPointer right) {
  if (!IsArithmetic(operation) && !IsLogic(operation)) {
    return checker.Fold(MakeComparisonOf(checker, operation, operatorSpan, span, std::move(left), std::move(right)));
  }
  const auto convert = [&](ExpressionPointer operand, Type type) {
    const Span where = operand->span;
    return MakeConversion(std::move(operand), type, where);
  };
  const auto complain = [&](std::string_view wanted) {
    const bool mixesText = left->type.IsString() != right->type.IsString();
    checker.Fail(operatorSpan,
                 fmt::format("\"{}\" takes {}, but these are {} and {}{}", syntax::Spelling(operation), wanted,
                             Named(left->type), Named(right->type),
                             mixesText && operation == BinaryOperator::kAdd ? "; convert the number with Str(…)" : ""));
  };

  if (left->type.IsObject() || right->type.IsObject()) {
    static constexpr std::string_view kNames[] = {"Power",  "Multiply", "Divide",  "IntegerDivide",
                                                  "Modulo", "Add",      "Subtract"};
    const std::string name = fmt::format(
        "Operator_{}", IsArithmetic(operation) ? kNames[static_cast<int>(operation)] : syntax::Spelling(operation));
    if (ExpressionPointer result = CallOperator(checker, name, left, right, span)) return result;
    if (ExpressionPointer result = CallOperator(checker, name + "Right", right, left, span)) return result;
  }
  if (left->type.IsVariant() || right->type.IsVariant()) {
    const bool joins = operation == BinaryOperator::kAdd && (left->type.IsString() || right->type.IsString());
    if (IsArithmetic(operation) && !joins) {
      return MakeVariantArithmetic(operation, span, convert(std::move(left), TypeKind::kVariant),
                                   convert(std::move(right), TypeKind::kVariant));
    }
    const Type other = left->type.IsVariant() ? right->type : left->type;
    const Type common = other.IsVariant() ? Type(TypeKind::kBoolean) : other;
    left = convert(std::move(left), common);
    right = convert(std::move(right), common);
  }
  if (operation == BinaryOperator::kAdd && left->type.IsString() && right->type.IsString()) {
    return checker.Fold(MakeConcatenation(span, std::move(left), std::move(right)));
  }
  std::optional<Type> type = host::CommonNumber(left->type, right->type);
  if (IsLogic(operation)) {
    const bool areBoolean = left->type.kind() == TypeKind::kBoolean && right->type.kind() == TypeKind::kBoolean;
    if (areBoolean) type = Type(TypeKind::kBoolean);
    if (!type || (!areBoolean && !host::IsInteger(type->kind()))) complain("two Booleans or two whole numbers");
    left = convert(std::move(left), *type);
    right = convert(std::move(right), *type);
    return checker.Fold(MakeLogic(operation, *type, span, std::move(left), std::move(right)));
  }
  if (!type) complain(operation == BinaryOperator::kAdd ? "two numbers or two texts" : "two numbers");
  const bool givesDouble = operation == BinaryOperator::kDivide || operation == BinaryOperator::kPower;
  if (type->kind() == TypeKind::kCurrency && !givesDouble) {
    return checker.Fold(
        MakeCurrencyArithmetic(operation, span, convert(std::move(left), *type), convert(std::move(right), *type)));
  }
  if (givesDouble) type = Type(TypeKind::kDouble);
  if (operation == BinaryOperator::kIntegerDivide && host::IsFloating(type->kind())) type = Type(TypeKind::kInt64);
  left = convert(std::move(left), *type);
  right = convert(std::move(right), *type);
  return checker.Fold(MakeArithmetic(operation, *type, span, std::move(left), std::move(right)));
}

LvaluePointer CheckLvalue(Checker &checker, const syntax::Expression &expression) {
  if (expression.kind == ExpressionKind::kName || expression.kind == ExpressionKind::kMember) {
    Resolution resolution = Resolve(checker, expression);
    if (resolution.kind == Resolution::Kind::kValue)
      return ToLvalue(checker, std::move(resolution.value), expression.span);
    if (resolution.kind == Resolution::Kind::kCallables) {
      if (LvaluePointer assigned = FindAssignment(checker, resolution, {}, expression.span)) return assigned;
    }
    checker.Fail(expression.span, fmt::format("\"{}\" is {}, which can't be assigned to", resolution.name,
                                              resolution.kind == Resolution::Kind::kCallables ? "a method"
                                              : resolution.kind == Resolution::Kind::kType    ? "a type"
                                                                                              : "a module"));
  }
  if (expression.kind != ExpressionKind::kCall) checker.Fail(expression.span, "this can't be on the left of \"=\"");

  const auto &call = To<syntax::Call>(expression);
  Resolution callee = Resolve(checker, *call.callee);
  if (callee.kind == Resolution::Kind::kValue && HasSubscripts(callee.value->type)) {
    callee = SubscriptsOf(std::move(callee.value), call.span);
  }
  if (callee.kind == Resolution::Kind::kValue)
    return ToLvalue(checker, CheckElement(checker, std::move(callee.value), call), expression.span);
  if (callee.kind == Resolution::Kind::kCallables) {
    if (LvaluePointer assigned = FindAssignment(checker, callee, call.arguments, expression.span)) return assigned;
    for (const Callable &callable : callee.callables) {
      const host::MethodInfo *method = callable.Method();
      const std::vector<ParameterInfo> &parameters = *callable.parameters;
      if (method == nullptr || method->setter == nullptr || call.arguments.size() != parameters.size()) continue;
      Arguments arguments = CheckArguments(checker, call.arguments);
      for (std::size_t i = 0; i < arguments.size(); ++i) {
        arguments[i] = Convert(checker, std::move(arguments[i]), parameters[i].type,
                               fmt::format("the argument \"{}\" of {}", parameters[i].name, callable.name));
      }
      return std::make_unique<MethodLvalue>(expression.span, *method, std::move(callee.value), std::move(arguments));
    }
    const Callable &first = callee.callables.front();
    if (first.parameters->empty() && first.result.IsArray()) {
      return ToLvalue(checker, CheckElement(checker, Call(checker, std::move(callee), {}, call.callee->span), call),
                      expression.span);
    }
  }
  checker.Fail(expression.span, fmt::format("the result of \"{}\" can't be assigned to", callee.name));
}

}  // namespace quillbar::language
