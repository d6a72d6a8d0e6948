// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <type_traits>

#include "interface/declaration.h"
#include "interface/values.h"

/// Which C++ type corresponds to which type of a declaration, decided by the compiler.
namespace quillbar::binding {

template <class T>
inline constexpr bool kIsInstance = false;
template <FixedString Name>
inline constexpr bool kIsInstance<Instance<Name>> = true;

template <class T>
inline constexpr bool kIsArrayOf = false;
template <class Element>
inline constexpr bool kIsArrayOf<ArrayOf<Element>> = true;

template <class T>
struct ElementOf;
template <class Element>
struct ElementOf<ArrayOf<Element>> {
  using Type = Element;
};

/// Whether a declaration names this class or enumeration: by its own name, or with the names of what it is nested in
/// before it. Letter case counts here, since these names are our own.
constexpr bool Names(std::string_view declared, std::string_view own) {
  if (declared == own) return true;
  return declared.size() > own.size() && declared.ends_with(own) && declared[declared.size() - own.size() - 1] == '.';
}

/// Whether values of type `T` are passed as the declared type.
template <class T>
constexpr bool IsDeclaredAs(std::string_view declared) {
  if constexpr (std::is_enum_v<T> && !std::is_same_v<T, Color> && !std::is_same_v<T, Currency>) {
    return kEnumerationName<T>.View() != "" && Names(declared, kEnumerationName<T>.View());
  } else if constexpr (std::is_pointer_v<T> && kIsInstance<std::remove_pointer_t<T>>) {
    return Names(declared, std::remove_pointer_t<T>::kScriptName.View());
  } else if constexpr (std::is_same_v<T, Color>) {
    return SameName(declared, "Color");
  } else if constexpr (std::is_same_v<T, Currency>) {
    return SameName(declared, "Currency");
  } else if constexpr (std::is_same_v<T, String>) {
    return SameName(declared, "String");
  } else if constexpr (std::is_same_v<T, Variant>) {
    return SameName(declared, "Variant");
  } else if constexpr (std::is_same_v<T, void *>) {
    return SameName(declared, "Ptr");
  } else if constexpr (std::is_same_v<T, Single>) {
    return SameName(declared, "Single");
  } else if constexpr (std::is_same_v<T, Double>) {
    return SameName(declared, "Double");
  } else if constexpr (std::is_same_v<T, Boolean>) {
    // C has one type for both.
    return SameName(declared, "Boolean") || SameName(declared, "Int8");
  } else if constexpr (std::is_integral_v<T>) {
    constexpr bool isSigned = std::is_signed_v<T>;
    return (std::is_same_v<T, Integer> && SameName(declared, "Integer")) ||
           (sizeof(T) == 1 && !isSigned && SameName(declared, "UInt8")) ||
           (sizeof(T) == 2 && SameName(declared, isSigned ? "Int16" : "UInt16")) ||
           (sizeof(T) == 4 && SameName(declared, isSigned ? "Int32" : "UInt32")) ||
           (sizeof(T) == 8 && SameName(declared, isSigned ? "Int64" : "UInt64"));
  } else {
    return false;
  }
}

/// Whether a C++ parameter of type `T` takes what is passed for the declared parameter.
template <class T>
constexpr bool Takes(const ParameterDeclaration &parameter) {
  if (parameter.byRef) {
    if constexpr (std::is_pointer_v<T> && !std::is_void_v<std::remove_pointer_t<T>>) {
      using Value = std::remove_pointer_t<T>;
      return !parameter.isArray && !std::is_const_v<Value> && IsDeclaredAs<Value>(parameter.type);
    }
    return false;
  }
  if (parameter.isArray) {
    if constexpr (std::is_pointer_v<T> && kIsArrayOf<std::remove_pointer_t<T>>) {
      return IsDeclaredAs<typename ElementOf<std::remove_pointer_t<T>>::Type>(parameter.type);
    }
    return false;
  }
  return IsDeclaredAs<T>(parameter.type);
}

/// Whether a C++ result of type `T` is what the declaration returns; `void` for none.
template <class T>
constexpr bool Gives(const Declaration &declaration) {
  if constexpr (std::is_void_v<T>) {
    return declaration.resultType.empty();
  } else {
    return !declaration.resultIsArray && !declaration.resultType.empty() && IsDeclaredAs<T>(declaration.resultType);
  }
}

}  // namespace quillbar::binding
