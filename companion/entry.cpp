#include "binding/export.h"
#include "binding/service.h"
#include "companion/compressor_handle.h"

// The companion plugin: classes that a PDF writer expects from elsewhere.
namespace quillbar::companion {
namespace {

void Enter(Resolver resolver) {
  hostResolver = resolver;
  CallHost<service::RegisterPluginVersion>(static_cast<int>(kInterfaceVersion));
  ClassRecord &compressor = CompressorHandleData::definition;
  compressor.flags |= kClassFlags;
  CallHost<service::RegisterClass>(&compressor);
}

}  // namespace
}  // namespace quillbar::companion

/// Called once by the host after loading.
QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) { quillbar::companion::Enter(resolver); }
