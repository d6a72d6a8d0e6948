// SPDX-License-Identifier: MIT
// `Destination` as it is registered.
#include "plugin/navigation/destination.h"

#include "binding/members.h"
#include "plugin/navigation/destination_data.h"
#include "plugin/script/wrapper.h"

namespace quillbar {

namespace {

using Life = Wrapper<&DestinationData::page>;

using DestinationMethods =
    Methods<Method<"Constructor()", Life::Constructor<Destination>, kPrivateConstructorFlags>,
            Method<"SetLocation(x as Single,y as Single, zoom as Single)", destination::SetLocation>>;

}  // namespace

constinit ClassRecord DestinationData::definition =
    DescribeClass<Members<DestinationMethods>, Life::Initialize, Life::Finalize>("Destination", nullptr,
                                                                                 sizeof(DestinationData));

}  // namespace quillbar
