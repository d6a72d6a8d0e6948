// SPDX-License-Identifier: MIT
// `Outline` as it is registered.
#include "plugin/navigation/outline.h"

#include "binding/members.h"
#include "plugin/navigation/outline_data.h"

namespace quillbar {

namespace {

using namespace outline;

using OutlineProperties = Properties<Property<"Opened", "Boolean", GetOpened, SetOpened>>;

using OutlineMethods = Methods<Method<"Constructor()", Constructor, kPrivateConstructorFlags>,
                               Method<"SetDestination(target as Destination)", SetDestination>>;

}  // namespace

constinit ClassRecord OutlineData::definition = DescribeClass<Members<OutlineMethods, OutlineProperties>>(
    "Outline", nullptr, sizeof(OutlineData), Initialize, Finalize);

}  // namespace quillbar
