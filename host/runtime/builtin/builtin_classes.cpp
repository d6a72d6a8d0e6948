// SPDX-License-Identifier: MIT
#include "host/runtime/builtin/builtin_classes.h"

#include "host/runtime/builtin/folder_item.h"
#include "host/runtime/builtin/memory_block.h"
#include "host/runtime/host.h"

namespace quillbar::host {

void RegisterBuiltInClasses(Host &host) {
  static ClassRecord root{};
  root.version = kInterfaceVersion;
  root.name = "Object";
  root.interfaces = "";
  root.flags = kClassFlags;
  host.Register(root, true);
  host.Register(MemoryBlockRecord(), true);
  host.Register(FolderItemRecord(), true);
}

}  // namespace quillbar::host
