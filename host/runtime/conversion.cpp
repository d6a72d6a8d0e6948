// SPDX-License-Identifier: MIT
#include "host/runtime/conversion.h"

#include <algorithm>

#include "host/runtime/class_model.h"

namespace quillbar::host {
namespace {

constexpr int kCodeCost = 50;
constexpr int kDowncastCost = 90;
constexpr int kToVariantCost = 80;
constexpr int kFromVariantCost = 100;

/// A Variant fits every type; among numbers the one that loses least comes first.
int FromVariantCost(Type to) {
  if (to.kind() == TypeKind::kDouble) return kFromVariantCost;
  return to == Type::Integer() || !IsNumeric(to.kind()) ? kFromVariantCost + 1 : kFromVariantCost + 2;
}

int NumberCost(TypeKind from, TypeKind to) {
  constexpr int kWiden = 1;
  constexpr int kToDouble = 10;
  constexpr int kToSingle = 11;
  constexpr int kToCurrency = 12;
  constexpr int kNarrow = 20;
  constexpr int kDropFraction = 40;
  if (IsFloating(from) && IsFloating(to)) return to == TypeKind::kDouble ? kWiden : kNarrow;
  if (to == TypeKind::kCurrency) return IsFloating(from) ? kNarrow : kToCurrency;
  if (from == TypeKind::kCurrency && !IsFloating(to)) return kDropFraction;
  if (IsFloating(from)) return kDropFraction;
  if (IsFloating(to)) return to == TypeKind::kDouble ? kToDouble : kToSingle;
  const bool keepsAll =
      IsSigned(from) == IsSigned(to) ? BitWidth(to) >= BitWidth(from) : IsSigned(to) && BitWidth(to) > BitWidth(from);
  return keepsAll ? kWiden : kNarrow;
}

/// Whether values of the type are whole numbers with a meaning of their own.
bool IsCode(Type type) { return type.IsEnumeration() || type.kind() == TypeKind::kColor; }

}  // namespace

std::optional<int> ConversionCost(Type from, Type to, Conversions allowed) {
  if (from == to) return 0;
  if (to.IsVariant() && !from.IsNone()) return kToVariantCost;
  if (from.IsVariant() && !to.IsNone()) return FromVariantCost(to);
  if (from.IsArray() || to.IsArray() || from.IsNone() || to.IsNone()) return std::nullopt;
  const bool fromNumber = IsNumeric(from.kind());
  const bool toNumber = IsNumeric(to.kind());
  if (fromNumber && toNumber) return NumberCost(from.kind(), to.kind());
  if (to.IsObject()) {
    if (from.IsNil()) return 1;
    if (!from.IsObject()) return std::nullopt;
    const int distance = from.objectClass()->DistanceTo(*to.objectClass());
    if (distance >= 0) return distance;
    // An object of any class may be of a subclass that implements the interface.
    const bool hasInterface = to.objectClass()->isInterface || from.objectClass()->isInterface;
    const bool isDowncast =
        allowed == Conversions::kExplicit && (hasInterface || to.objectClass()->DistanceTo(*from.objectClass()) >= 0);
    return isDowncast ? std::optional(kDowncastCost) : std::nullopt;
  }
  if (allowed == Conversions::kImplicit) return std::nullopt;
  if (from.IsNil()) return to.kind() == TypeKind::kPtr ? std::optional(1) : std::nullopt;
  if ((IsCode(from) && toNumber) || (fromNumber && IsCode(to))) {
    const bool isWhole = IsInteger(from.kind()) || IsInteger(to.kind());
    const bool isColour = from.kind() == TypeKind::kColor || to.kind() == TypeKind::kColor;
    if (isWhole || (allowed == Conversions::kExplicit && !isColour)) return kCodeCost;
  }
  const bool hasBoolean = from.kind() == TypeKind::kBoolean || to.kind() == TypeKind::kBoolean;
  const bool isWhole = IsInteger(from.kind()) || IsInteger(to.kind());
  return allowed == Conversions::kExplicit && hasBoolean && isWhole ? std::optional(kCodeCost) : std::nullopt;
}

std::optional<Type> CommonNumber(Type one, Type other) {
  const TypeKind a = one.kind();
  const TypeKind b = other.kind();
  if (!IsNumeric(a) || !IsNumeric(b)) return std::nullopt;
  if (IsFloating(a) || IsFloating(b)) {
    return Type(a == TypeKind::kSingle && b == TypeKind::kSingle ? TypeKind::kSingle : TypeKind::kDouble);
  }
  if (a == TypeKind::kCurrency || b == TypeKind::kCurrency) return Type(TypeKind::kCurrency);
  if (a == TypeKind::kUInt64 || b == TypeKind::kUInt64) return Type(TypeKind::kUInt64);
  const bool needsWide = std::max(BitWidth(a), BitWidth(b)) == 64 ||
                         ((a == TypeKind::kUInt32 || b == TypeKind::kUInt32) && BitWidth(kIntegerKind) == 32);
  return Type(needsWide ? TypeKind::kInt64 : kIntegerKind);
}

}  // namespace quillbar::host
