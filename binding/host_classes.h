// SPDX-License-Identifier: MIT
#pragma once

#include "interface/values.h"

/// The host's own classes that plugins take and give.
namespace quillbar {

using FolderItem = Instance<"FolderItem">;
using MemoryBlock = Instance<"MemoryBlock">;

}  // namespace quillbar
