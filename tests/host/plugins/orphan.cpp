// SPDX-License-Identifier: MIT
// A plugin whose class has a superclass that nobody registers.
#include "tests/host/plugins/plugin_services.h"

namespace {

using namespace quillbar;

ClassRecord orphanClass{.version = kInterfaceVersion, .name = "Orphan", .superclass = "Nobody"};

}  // namespace

QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  test_plugin::resolver = resolver;
  test_plugin::Get<service::RegisterClass>()(&orphanClass);
}
