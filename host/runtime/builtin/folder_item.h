// SPDX-License-Identifier: MIT
#pragma once

#include "interface/records.h"

namespace quillbar::host {

/// The record of the class FolderItem: a file or folder by its path, existing or not.
ClassRecord &FolderItemRecord();

}  // namespace quillbar::host
