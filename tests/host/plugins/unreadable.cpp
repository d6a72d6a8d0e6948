// SPDX-License-Identifier: MIT
// A plugin whose class has a declaration that can't be read.
#include "tests/host/plugins/plugin_services.h"

namespace {

using namespace quillbar;

const MethodRecord methods[] = {test_plugin::Method(
    "Broken(value as) as String", +[](Object) {})};
ClassRecord brokenClass{.version = kInterfaceVersion, .name = "Broken", .methods = methods, .methodCount = 1};

}  // namespace

QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  test_plugin::resolver = resolver;
  test_plugin::Get<service::RegisterClass>()(&brokenClass);
}
