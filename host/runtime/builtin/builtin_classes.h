// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>

#include "host/runtime/handles.h"

namespace quillbar::host {

class Host;

/// Registers the host's own classes, MemoryBlock and FolderItem, with a new host.
void RegisterBuiltInClasses(Host &host);

/// A new FolderItem for `path`; a relative path counts from the current folder.
ObjectHandle MakeFolderItem(Host &host, const std::filesystem::path &path);
/// The absolute path of a FolderItem. Throws HostError (kTypeMismatch) for an object of another class.
std::filesystem::path PathOf(Host &host, const ObjectHandle &folderItem);

/// A new MemoryBlock that holds a copy of `bytes`.
ObjectHandle MakeMemoryBlock(Host &host, std::string_view bytes);
/// The bytes of a MemoryBlock, valid until it changes size or is destroyed. Throws HostError (kTypeMismatch) for an
/// object of another class.
std::string_view BytesOf(Host &host, const ObjectHandle &memoryBlock);

}  // namespace quillbar::host
