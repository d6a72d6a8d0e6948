// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "binding/host_classes.h"
#include "binding/owned.h"

namespace quillbar {

/// The stored bytes of a string; null for the nil string, or when the host can't tell. `lengthOut`, if it isn't null,
/// receives their number, unless the string is nil or the host can't count.
const char *GetCString(String string, Integer *lengthOut = nullptr);

/// A new string from bytes in an encoding; the caller owns it. Null when the host can't build it or when there are
/// more bytes than a string can have (2^31 - 1).
String BuildString(std::string_view bytes, TextEncoding encoding);

/// A new string from UTF-8 text, which the caller owns; a null pointer reads as the empty text.
String BuildText(const char *utf8);

/// The native path of a file or folder; empty when the host doesn't say.
OwnedString GetNativePath(FolderItem *folderItem);

/// Reads a Boolean property of a file or folder. Returns whether the host answered; `flag` is left alone when it
/// didn't.
bool GetBoolProperty(FolderItem *folderItem, const char *name, bool &flag);

/// A Boolean property of a file or folder; false when the host doesn't answer.
bool GetBoolProperty(FolderItem *folderItem, const char *name);

}  // namespace quillbar
