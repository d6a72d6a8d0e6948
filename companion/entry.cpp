// SPDX-License-Identifier: MIT
#include "binding/contained.h"
#include "binding/export.h"
#include "binding/memory_block.h"
#include "binding/service.h"
#include "companion/compressor_handle.h"
#include "companion/pixel_raster_class.h"

// The companion plugin: classes that a PDF writer expects another plugin to bring.
namespace quillbar::companion {
namespace {

void Enter(Resolver resolver) {
  PrepareForExceptions();
  hostResolver = resolver;
  CallHost<service::RegisterPluginVersion>(static_cast<int>(kInterfaceVersion));
  ClearMemoryBlockCaches();
  for (ClassRecord *definition : {&CompressorHandleData::definition, &PixelRasterData::definition}) {
    definition->flags |= kClassFlags;
    CallHost<service::RegisterClass>(definition);
  }
}

}  // namespace
}  // namespace quillbar::companion

/// The plugin's entry point, called once by the host after loading.
QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  quillbar::Containing<&quillbar::companion::Enter>()(resolver);
}
