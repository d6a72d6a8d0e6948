// SPDX-License-Identifier: MIT
#include "host/program/plugins.h"

#include <fmt/format.h>

#include "host/runtime/platform/file_system.h"
#include "host/runtime/platform/shared_library.h"

namespace quillbar::program {
namespace {

// The companion first: the writer looks for its classes when it is loaded.
constexpr const char *kCompanion = "QuillbarCompanion";
constexpr const char *kWriter = "QuillbarPDFWriter";

}  // namespace

void LoadPlugins(host::Host &host, std::span<const std::filesystem::path> named) {
  for (const std::filesystem::path &plugin : named) host.LoadPlugin(plugin);
  if (!named.empty()) return;

  const std::filesystem::path folder = host::platform::ProgramFile().parent_path();
  const auto beside = [&](const char *name) { return folder / (std::string(name) + host::platform::kLibrarySuffix); };
  const auto lacks = [&](const char *name) {
    return host::platform::KindOf(beside(name)) == host::platform::FileKind::kNone;
  };
  if (lacks(kWriter)) {
    throw host::HostError(host::ErrorKind::kPlugin,
                          fmt::format("the plugin \"{}\" is missing; build it, or name plugins with --plugin",
                                      host::platform::Utf8Path(beside(kWriter))));
  }
  // Without it documents can still be written, only uncompressed.
  if (!lacks(kCompanion)) host.LoadPlugin(beside(kCompanion));
  host.LoadPlugin(beside(kWriter));
}

}  // namespace quillbar::program
