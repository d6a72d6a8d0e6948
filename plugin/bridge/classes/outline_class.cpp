// SPDX-License-Identifier: MIT
// `Outline` as it is registered.
#include "plugin/navigation/outline.h"

#include "plugin/navigation/outline_data.h"
#include "plugin/script/forward.h"
#include "plugin/script/wrapper.h"

namespace quillbar {

namespace {

using Life = Wrapper<&OutlineData::document>;

/// Whether viewers show the entries below from the start; so it is for a new entry.
using OutlineProperties =
    Properties<ForwardedProperty<Outline, "Opened", "Boolean", HPDF_Outline_GetOpened, HPDF_Outline_SetOpened>>;

using OutlineMethods = Methods<Method<"Constructor()", Life::Constructor<Outline>, kPrivateConstructorFlags>,
                               Method<"SetDestination(target as Destination)", outline::SetDestination>>;

}  // namespace

constinit ClassRecord OutlineData::definition =
    DescribeClass<Members<OutlineMethods, OutlineProperties>, Life::Initialize, Life::Finalize>("Outline", nullptr,
                                                                                                sizeof(OutlineData));

}  // namespace quillbar
