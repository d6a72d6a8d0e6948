// SPDX-License-Identifier: MIT
// `Destination` as it is registered.
#include "plugin/navigation/destination.h"

#include "binding/members.h"
#include "plugin/navigation/destination_data.h"

namespace quillbar {

namespace {

using namespace destination;

using DestinationMethods = Methods<Method<"Constructor()", Constructor, kPrivateConstructorFlags>,
                                   Method<"SetLocation(x as Single,y as Single, zoom as Single)", SetLocation>>;

}  // namespace

constinit ClassRecord DestinationData::definition =
    DescribeClass<Members<DestinationMethods>>("Destination", nullptr, sizeof(DestinationData), Initialize, Finalize);

}  // namespace quillbar
