// SPDX-License-Identifier: MIT
#pragma once

#include "interface/values.h"

/// The host's own classes that plugins use.
namespace quillbar {

using FolderItem = Instance<"FolderItem">;
using MemoryBlock = Instance<"MemoryBlock">;

}  // namespace quillbar
