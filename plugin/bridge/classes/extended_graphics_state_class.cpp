// SPDX-License-Identifier: MIT
// `ExtendedGraphicsState` as it is registered, "EXCLUSHON" included: applications refer to it.
// Once a page uses a state its setters leave error 4226 and change nothing.
#include "plugin/page/extended_graphics_state_data.h"
#include "plugin/script/forward.h"
#include "plugin/script/wrapper.h"

namespace quillbar {

namespace {

using Life = Wrapper<&ExtendedGraphicsStateData::document>;
using State = ExtendedGraphicsState;

// clang-format off
using StateMethods = Methods<
    Method<"Constructor()", Life::Constructor<State>, kPrivateConstructorFlags>,
    /// The opacity of what is filled, from 0 (invisible) to 1; error 4224 outside.
    ForwardedMethod<State, "SetAlphaFill(value as Single)", HPDF_ExtGState_SetAlphaFill>,
    /// The opacity of what is stroked, from 0 to 1; error 4224 outside.
    ForwardedMethod<State, "SetAlphaStroke(value as Single)", HPDF_ExtGState_SetAlphaStroke>,
    /// How new colours mix with those beneath; numbers beyond the enumeration are refused with error 4224.
    ForwardedMethod<State, "SetBlendMode(value as ExtendedGraphicsState.BlendModeEnum)", HPDF_ExtGState_SetBlendMode>>;
// clang-format on

using StateEnumerations =
    Enumerations<Enumeration<BlendMode, "BlendModeEnum", "Integer", "NORMAL = 0", "MULTIPLY = 1", "SCREEN = 2",
                             "OVERLAY = 3", "DARKEN = 4", "LIGHTEN = 5", "COLOR_DODGE = 6", "COLOR_BURN = 7",
                             "HARD_LIGHT = 8", "SOFT_LIGHT = 9", "DIFFERENCE = 10", "EXCLUSHON = 11">>;

}  // namespace

constinit ClassRecord ExtendedGraphicsStateData::definition =
    DescribeClass<Members<StateMethods, Properties<>, Events<>, StateEnumerations>, Life::Initialize, Life::Finalize>(
        "ExtendedGraphicsState", nullptr, sizeof(ExtendedGraphicsStateData));

}  // namespace quillbar
