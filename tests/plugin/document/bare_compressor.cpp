// SPDX-License-Identifier: MIT
// A plugin whose CompressorHandle has no entry points: tests write theirs into its data block.
#include "binding/class_data.h"
#include "binding/export.h"
#include "binding/members.h"
#include "binding/service.h"

namespace quillbar {
namespace {

using CompressorHandle = Instance<"CompressorHandle">;

struct BareCompressorData {
  void *words[4];

  static ClassRecord definition;
};

void Constructor(CompressorHandle *) {}

using Lines = Members<Methods<Method<"Constructor()", Constructor>>>;

ClassRecord BareCompressorData::definition =
    DescribeClass<Lines>("CompressorHandle", nullptr, sizeof(BareCompressorData));

}  // namespace
}  // namespace quillbar

QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  using namespace quillbar;
  hostResolver = resolver;
  CallHost<service::RegisterPluginVersion>(static_cast<int>(kInterfaceVersion));
  BareCompressorData::definition.flags |= kClassFlags;
  CallHost<service::RegisterClass>(&BareCompressorData::definition);
}
