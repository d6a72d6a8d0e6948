// SPDX-License-Identifier: MIT
// A plugin whose class names a superclass that is never registered.
#include "tests/host/plugins/plugin_services.h"

namespace {

using namespace quillbar;

ClassRecord orphanClass{.version = kInterfaceVersion, .name = "Orphan", .superclass = "Nobody"};

}  // namespace

QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  test_plugin::resolver = resolver;
  test_plugin::Get<service::RegisterClass>()(&orphanClass);
}
