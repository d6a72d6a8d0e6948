// SPDX-License-Identifier: MIT
#pragma once

#include "binding/members.h"
#include "plugin/guard/library_call.h"
#include "plugin/guard/library_value.h"
#include "plugin/script/colour_conversion.h"

/// Members that only hand their arguments on to one function of the library are lines of their class's table:
///
///     ForwardedProperty<Page, "TextRise", "Single", HPDF_Page_GetTextRise, HPDF_Page_SetTextRise>
///     ForwardedMethod<Page, "Fill()", HPDF_Page_Fill, In<GraphicsMode::PATH_OBJECT>>
///
/// The compiler makes the member's function from the library's, with the types that scripts have for the library's, and
/// holds the declaration against it as it does for functions that are written out.
///
/// The library's object is `HandleOf(instance)`. The call goes through the guard, so failures and numbers that aren't
/// finite are reported as for any other member.
namespace quillbar {

/// The type that scripts have for one of the library's. A member with any other one is written out.
template <class Library>
struct ScriptTypeOf;
template <class Script>
struct ScriptTypeIs {
  using Type = Script;
};
template <>
struct ScriptTypeOf<void> : ScriptTypeIs<void> {};
template <>
struct ScriptTypeOf<HPDF_STATUS> : ScriptTypeIs<void> {};
template <>
struct ScriptTypeOf<HPDF_REAL> : ScriptTypeIs<Single> {};
template <>
struct ScriptTypeOf<HPDF_UINT> : ScriptTypeIs<Integer> {};
template <>
struct ScriptTypeOf<HPDF_BOOL> : ScriptTypeIs<Boolean> {};
template <>
struct ScriptTypeOf<HPDF_RGBColor> : ScriptTypeIs<Color> {};
template <>
struct ScriptTypeOf<HPDF_LineCap> : ScriptTypeIs<LineCapType> {};
template <>
struct ScriptTypeOf<HPDF_LineJoin> : ScriptTypeIs<LineJoinType> {};
template <>
struct ScriptTypeOf<HPDF_TextRenderingMode> : ScriptTypeIs<TextRenderingMode> {};
template <>
struct ScriptTypeOf<HPDF_PageMode> : ScriptTypeIs<DocumentMode> {};
template <>
struct ScriptTypeOf<HPDF_BlendMode> : ScriptTypeIs<BlendMode> {};
template <>
struct ScriptTypeOf<HPDF_AnnotIcon> : ScriptTypeIs<AnnotationIcon> {};

template <class Library>
using ScriptType = typename ScriptTypeOf<Library>::Type;

namespace forward {

template <class Library>
ScriptType<Library> ToScript(Library value) {
  if constexpr (std::is_same_v<Library, HPDF_RGBColor>) {
    return ToScriptColor(value);
  } else if constexpr (std::is_same_v<Library, HPDF_BOOL>) {
    return value != HPDF_FALSE ? 1 : 0;
  } else {
    return static_cast<ScriptType<Library>>(value);
  }
}

template <class Library>
Library FromScript(ScriptType<Library> value) {
  if constexpr (std::is_same_v<Library, HPDF_REAL>) {
    return value;
  } else if constexpr (std::is_same_v<Library, HPDF_RGBColor>) {
    return ToLibraryColor(value);
  } else if constexpr (std::is_same_v<Library, HPDF_BOOL>) {
    return value != 0 ? HPDF_TRUE : HPDF_FALSE;
  } else {
    return ToLibrary<Library>(value);
  }
}

}  // namespace forward

/// A condition that always holds; others say as `Holds(instance)` whether a member acts.
struct Always {
  static bool Holds(Object) { return true; }
};

/// The functions that scripts call for one of the library's. Where the condition doesn't hold they do nothing.
template <class Owner, auto Function, class Condition = Always>
struct Forwarded;
template <class Owner, class Result, class Handle, class... Parameters, Result (*Function)(Handle, Parameters...),
          class Condition>
struct Forwarded<Owner, Function, Condition> {
  static ScriptType<Result> Get(Owner *owner) { return forward::ToScript(Call<Function>(HandleOf(owner))); }

  static void Set(Owner *owner, std::intptr_t, ScriptType<Parameters>... value) { Run(owner, value...); }

  static void Run(Owner *owner, ScriptType<Parameters>... arguments) {
    if (Condition::Holds(owner)) Call<Function>(HandleOf(owner), forward::FromScript<Parameters>(arguments)...);
  }
};

/// A line for a method that calls one function of the library.
template <class Owner, FixedString Declaration, auto Function, class Condition = Always>
using ForwardedMethod = Method<Declaration, Forwarded<Owner, Function, Condition>::Run>;

/// A line for a property that is read and written with one function of the library each.
template <class Owner, FixedString Name, FixedString Type, auto Get, auto Set>
using ForwardedProperty = Property<Name, Type, Forwarded<Owner, Get>::Get, Forwarded<Owner, Set>::Set>;

/// A line for a property that scripts can only read.
template <class Owner, FixedString Name, FixedString Type, auto Get>
using ForwardedReadOnlyProperty = ReadOnlyProperty<Name, Type, Forwarded<Owner, Get>::Get>;

}  // namespace quillbar
