// SPDX-License-Identifier: MIT
// `ExtendedGraphicsState` as it is registered, "EXCLUSHON" included: applications refer to it.
#include "plugin/page/extended_graphics_state.h"

#include "binding/members.h"
#include "plugin/page/extended_graphics_state_data.h"

namespace quillbar {

namespace {

using namespace extended_graphics_state;

using StateMethods = Methods<Method<"Constructor()", Constructor, kPrivateConstructorFlags>,
                             Method<"SetAlphaFill(value as Single)", SetAlphaFill>,
                             Method<"SetAlphaStroke(value as Single)", SetAlphaStroke>,
                             Method<"SetBlendMode(value as ExtendedGraphicsState.BlendModeEnum)", SetBlendMode>>;

using StateEnumerations =
    Enumerations<Enumeration<BlendMode, "BlendModeEnum", "Integer", "NORMAL = 0", "MULTIPLY = 1", "SCREEN = 2",
                             "OVERLAY = 3", "DARKEN = 4", "LIGHTEN = 5", "COLOR_DODGE = 6", "COLOR_BURN = 7",
                             "HARD_LIGHT = 8", "SOFT_LIGHT = 9", "DIFFERENCE = 10", "EXCLUSHON = 11">>;

}  // namespace

constinit ClassRecord ExtendedGraphicsStateData::definition =
    DescribeClass<Members<StateMethods, Properties<>, Events<>, StateEnumerations>>(
        "ExtendedGraphicsState", nullptr, sizeof(ExtendedGraphicsStateData), Initialize, Finalize);

}  // namespace quillbar
