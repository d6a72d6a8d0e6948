// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/language/run/error_translation.h"
#include "host/language/run/runtime.h"
#include "host/language/tree/code.h"
#include "interface/declaration.h"
#include "interface/fixed_string.h"

/// The built-in functions. Each is one line of a table: its declaration in the language's own syntax and the C++
/// function that implements it. The compiler checks one against the other.
///
/// The C++ types: std::int64_t for every integer type, Color, enumerations and Currency (ten-thousandths); double for
/// Single and Double; bool; StringHandle, ObjectHandle, ArrayHandle; host::Value for `Variant`, `Any` and `Element`. A
/// function that needs the running script takes a `Runtime &` first.
///
/// Two types exist in these declarations alone: `Any` is every number, String, Boolean, Color and
/// enumeration; `Element` is the type of an array's elements. The owner `Array` is every array with one dimension, `Grid`
/// every array with more, `Array2` and `Array3` those with as many.
namespace quillbar::language {

struct LibraryFunction {
  enum class Form : std::uint8_t {
    kFunction,  // Left(text, 3)
    kMethod,    // text.Left(3): the receiver is the C++ function's first argument
    kShared,    // String.FromArray(list)
  };
  Form form;
  std::string_view owner;  // the receiver's type, or what a shared function belongs to
  std::string_view declaration;
  /// Makes a node that calls the function. The arguments, the receiver first, have the declared types.
  ExpressionPointer (*make)(host::Type result, Span span, std::vector<ExpressionPointer> arguments);
  /// Whether the last parameter, an array, gathers the last arguments of a call.
  bool takesList = false;
};

/// The tables, one for each subject.
std::span<const LibraryFunction> StringFunctions();
std::span<const LibraryFunction> ConversionFunctions();
std::span<const LibraryFunction> MathematicsFunctions();
std::span<const LibraryFunction> ArrayFunctions();
std::span<const LibraryFunction> SystemFunctions();
std::span<const LibraryFunction> VariantFunctions();
std::span<const LibraryFunction> StreamFunctions();
std::span<const LibraryFunction> FolderFunctions();
std::span<const LibraryFunction> DatabaseFunctions();
std::span<const LibraryFunction> DictionaryFunctions();
std::span<const LibraryFunction> JsonFunctions();

namespace library {

/// The C++ type of a parameter or result, without reference and const.
template <class Written>
using NativeType = std::remove_cvref_t<Written>;

enum class NativeKind : std::uint8_t { kNothing, kInteger, kReal, kBoolean, kText, kObject, kArray, kValue, kUnknown };

template <class Written>
/// The kind of the C++ type `Written`.
constexpr NativeKind NativeKindOf() {
  using Type = NativeType<Written>;
  if constexpr (std::is_void_v<Type>) return NativeKind::kNothing;
  if constexpr (std::is_same_v<Type, bool>) return NativeKind::kBoolean;
  if constexpr (std::is_same_v<Type, std::int64_t>) return NativeKind::kInteger;
  if constexpr (std::is_same_v<Type, double>) return NativeKind::kReal;
  if constexpr (std::is_same_v<Type, host::StringHandle>) return NativeKind::kText;
  if constexpr (std::is_same_v<Type, host::ObjectHandle>) return NativeKind::kObject;
  if constexpr (std::is_same_v<Type, host::ArrayHandle>) return NativeKind::kArray;
  if constexpr (std::is_same_v<Type, host::Value>) return NativeKind::kValue;
  return NativeKind::kUnknown;
}

/// The kind of the C++ type that a declared type needs.
constexpr NativeKind NativeKindFor(std::string_view type, bool isArray) {
  for (const std::string_view name : {"Array", "Array2", "Array3", "Grid"}) {
    if (isArray || SameName(type, name)) return NativeKind::kArray;
  }
  if (type.empty()) return NativeKind::kNothing;
  for (const std::string_view name : {"Single", "Double"}) {
    if (SameName(type, name)) return NativeKind::kReal;
  }
  for (const std::string_view name : {"Integer", "Int8", "Int16", "Int32", "Int64", "UInt8", "UInt16", "UInt32",
                                      "UInt64", "Color", "TextEncoding", "Currency", "ComparisonOptions"}) {
    if (SameName(type, name)) return NativeKind::kInteger;
  }
  if (SameName(type, "Boolean")) return NativeKind::kBoolean;
  if (SameName(type, "String")) return NativeKind::kText;
  if (SameName(type, "Any") || SameName(type, "Element") || SameName(type, "Variant")) return NativeKind::kValue;
  return NativeKind::kObject;
}

/// Whether the declaration agrees with what the C++ function takes and returns.
template <FixedString Text, LibraryFunction::Form Form, FixedString Owner, class Result, class... Arguments>
consteval bool Agrees() {
  const DeclarationResult read = ReadDeclaration(Text.View());
  if (!read.ok()) return false;
  const Declaration &declaration = read.declaration;
  if (NativeKindFor(declaration.resultType, declaration.resultIsArray) != NativeKindOf<Result>()) return false;
  const NativeKind taken[] = {NativeKindOf<Arguments>()..., NativeKind::kNothing};
  std::size_t at = 0;
  if (Form == LibraryFunction::Form::kMethod && taken[at++] != NativeKindFor(Owner.View(), false)) return false;
  if (declaration.parameterCount + at != sizeof...(Arguments)) return false;
  for (const ParameterDeclaration &parameter : declaration) {
    if (parameter.byRef || taken[at++] != NativeKindFor(parameter.type, parameter.isArray)) return false;
  }
  return true;
}

/// The node that calls `Function`.
template <auto Function, bool kNeedsRuntime, class Result, class... Arguments>
class CallNode final : public Computed<NativeType<Result>, CallNode<Function, kNeedsRuntime, Result, Arguments...>> {
 public:
  template <FixedString Text, LibraryFunction::Form Form, FixedString Owner>
  static constexpr bool kAgrees = Agrees<Text, Form, Owner, Result, Arguments...>();

  /// `method` is the name of a method of objects, which Nil doesn't have; empty for anything else.
  CallNode(host::Type result, Span where, std::vector<ExpressionPointer> arguments, std::string_view method)
      : Computed<NativeType<Result>, CallNode>(result, where), arguments_(std::move(arguments)), method_(method) {}

  NativeType<Result> Compute(Frame &frame) const { return Apply(frame, std::index_sequence_for<Arguments...>()); }

 private:
  template <std::size_t... Index>
  NativeType<Result> Apply(Frame &frame, std::index_sequence<Index...>) const {
    // Braces, because they fix the order of evaluation.
    const std::tuple<NativeType<Arguments>...> values{EvaluateAs<NativeType<Arguments>>(*arguments_[Index], frame)...};
    if constexpr ((std::is_same_v<NativeType<Arguments>, host::ObjectHandle> || ...)) {
      if (!method_.empty() && !std::get<0>(values)) RaiseUsedOnNil(frame, this->span, method_);
    }
    return TranslateErrors(frame, this->span, [&]() -> NativeType<Result> {
      if constexpr (kNeedsRuntime) {
        return Function(frame.runtime, std::get<Index>(values)...);
      } else {
        return Function(std::get<Index>(values)...);
      }
    });
  }

  std::vector<ExpressionPointer> arguments_;
  std::string_view method_;
};

template <class... Arguments>
inline constexpr bool kStartsWithRuntime = false;
template <class... Others>
inline constexpr bool kStartsWithRuntime<Runtime &, Others...> = true;

template <auto Function>
struct NodeFor;
template <class Result, class... Arguments, Result (*Function)(Arguments...)>
requires(!kStartsWithRuntime<Arguments...>) struct NodeFor<Function> {
  using Type = CallNode<Function, false, Result, Arguments...>;
};
template <class Result, class... Arguments, Result (*Function)(Runtime &, Arguments...)>
struct NodeFor<Function> {
  using Type = CallNode<Function, true, Result, Arguments...>;
};

template <auto Function, FixedString Text, LibraryFunction::Form Form, FixedString Owner>
constexpr LibraryFunction Line() {
  using Node = typename NodeFor<Function>::Type;
  static_assert(Node::template kAgrees<Text, Form, Owner>, "the declaration and the C++ function beside it disagree");
  return {Form, Owner.View(), Text.View(),
          [](host::Type result, Span span, std::vector<ExpressionPointer> arguments) -> ExpressionPointer {
            constexpr bool isOfObject =
                Form == LibraryFunction::Form::kMethod && NativeKindFor(Owner.View(), false) == NativeKind::kObject;
            std::string_view method;
            if (isOfObject) method = Text.View().substr(0, Text.View().find('('));
            return MakeExpression<Node>(result, span, std::move(arguments), method);
          }};
}

/// A line of a table: a function, a method of a type, a shared function of a type or module.
template <FixedString Text, auto Function>
inline constexpr LibraryFunction kFunction = Line<Function, Text, LibraryFunction::Form::kFunction, "">();
template <FixedString Owner, FixedString Text, auto Function>
inline constexpr LibraryFunction kMethod = Line<Function, Text, LibraryFunction::Form::kMethod, Owner>();
template <FixedString Owner, FixedString Text, auto Function>
inline constexpr LibraryFunction kListMethod = [] {
  LibraryFunction line = kMethod<Owner, Text, Function>;
  line.takesList = true;
  return line;
}();
template <FixedString Owner, FixedString Text, auto Function>
inline constexpr LibraryFunction kShared = Line<Function, Text, LibraryFunction::Form::kShared, Owner>();

}  // namespace library
}  // namespace quillbar::language
