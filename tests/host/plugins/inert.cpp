// SPDX-License-Identifier: MIT
// A plugin that finds the host too old and registers nothing.
#include "tests/host/plugins/plugin_services.h"

QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  test_plugin::resolver = resolver;
  test_plugin::Get<quillbar::service::RegisterPluginVersion>()(12);
}
