// SPDX-License-Identifier: MIT
#pragma once

#include "binding/host_classes.h"

namespace quillbar {

/// A new MemoryBlock of `size` bytes, which the caller owns. Null when the host has no such class, or lacks the method
/// that constructs a block or the one that gives the address of its bytes: a block that can't be filled would hold
/// whatever was there.
MemoryBlock *NewMemoryBlock(Integer size);

/// The address of a MemoryBlock's bytes; null when the host doesn't say.
void *BytesOf(MemoryBlock *block);

/// Forgets the methods of the host's class, so that they are looked up again.
void ClearMemoryBlockCaches();

}  // namespace quillbar
