// SPDX-License-Identifier: MIT
#pragma once

#include "binding/host_classes.h"

namespace quillbar {

/// A MemoryBlock of `size` bytes, owned by the caller, whose result it becomes. Null when the host has no
/// such class, or lacks the method that constructs a block or the one that tells where its bytes lie: a block
/// that can't be filled would hold whatever was there.
MemoryBlock *NewMemoryBlock(Integer size);

/// Where the bytes of a MemoryBlock lie; null when the host doesn't say.
void *BytesOf(MemoryBlock *block);

/// Forgets what was looked up of the host's class, so that it is looked up again.
void ClearMemoryBlockCaches();

}  // namespace quillbar
